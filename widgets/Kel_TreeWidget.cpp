#include "Kel_TreeWidget.h"

#include "Kel_WhatsThis.h"

#include <QPointer>
#include <QTreeWidgetItemIterator>
#include <vector>

namespace {

// Which rows reach a top-level node by following their parents; the others
// hang from a loop. Walks each chain once.
std::vector<bool> anchoredRows(const std::vector<long>& parents)
{
    enum State : char { kUnknown, kAnchored, kLoose, kOnPath };
    const long n = long(parents.size());
    std::vector<char> state(size_t(n), kUnknown);
    std::vector<long> path;
    for (long i = 0; i < n; ++i) {
        path.clear();
        long j = i;
        while (j >= 0 && j < n && state[size_t(j)] == kUnknown) {
            state[size_t(j)] = kOnPath;
            path.push_back(j);
            j = parents[size_t(j)];
        }
        const bool anchored = j < 0 || j >= n || state[size_t(j)] == kAnchored;
        for (long k : path)
            state[size_t(k)] = anchored ? kAnchored : kLoose;
    }
    std::vector<bool> result(static_cast<size_t>(n));
    for (long i = 0; i < n; ++i)
        result[size_t(i)] = state[size_t(i)] == kAnchored;
    return result;
}

} // namespace

Kel_TreeWidget::Kel_TreeWidget(QWidget* parent, const char* name) : QTreeWidget(parent)
{
    setObjectName(QString::fromLatin1(name));
    setColumnCount(1);
    setHeaderHidden(true);

    // Any notification, whatever its kind, leads to a full re-read.
    for (Kel_BoundPropertyBase* property :
         std::initializer_list<Kel_BoundPropertyBase*>{&mNames, &mParents, &mCurrent, &mRootName})
        property->onNotify([this] { updateAppearance(); });

    connect(this, &QTreeWidget::currentItemChanged, this, &Kel_TreeWidget::userChangedCurrentItem);
    connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) {
        if (!mApplyingModelState)
            mCollapsedRows.insert(item->data(0, kRowRole).toLongLong());
    });
    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        if (!mApplyingModelState)
            mCollapsedRows.remove(item->data(0, kRowRole).toLongLong());
    });

    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_TreeWidget");
}

Kel_TreeWidget::~Kel_TreeWidget() = default;

void Kel_TreeWidget::setBaseNameConn(const QByteArray& spec)
{
    mCurrent.setSpec(QString::fromUtf8(spec));
}

void Kel_TreeWidget::setRootDisplayNameConn(const QByteArray& spec)
{
    mRootName.setSpec(QString::fromUtf8(spec));
}

void Kel_TreeWidget::setTreeDMConn(const QByteArray& spec)
{
    mTreeSpec = QString::fromUtf8(spec);
    mNames.setSpec(mTreeSpec.isEmpty() ? QString() : mTreeSpec + QStringLiteral(".name"));
    mParents.setSpec(mTreeSpec.isEmpty() ? QString() : mTreeSpec + QStringLiteral(".parent"));
}

void Kel_TreeWidget::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (!mEnvironmentText.isEmpty()) {
        Mv_ConnectionEnvironment::Ptr own = Mv_ConnectionEnvironment::create(
            environment ? environment : Mv_ConnectionEnvironment::blankEnvironment());
        own->set(mEnvironmentText);
        environment = own;
    }
    // The names last: connected always, they end the connection with a refresh.
    Kel_BoundPropertyBase::connectAll(environment, {&mParents, &mCurrent, &mRootName, &mNames});
}

void Kel_TreeWidget::updateAppearance()
{
    QPointer<Kel_TreeWidget> self(this);
    rebuild();
    if (self)
        selectModelsNode();
}

void Kel_TreeWidget::rebuild()
{
    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    clear();

    const long count = mNames.isConnected() ? std::max(0L, mNames->size()) : 0;
    std::vector<long> parents(size_t(count), -1);
    for (long row = 0; row < count; ++row)
        parents[size_t(row)] = mParents->element<long>(row, -1);
    const std::vector<bool> anchored = anchoredRows(parents);

    QTreeWidgetItem* root = nullptr;
    const QString rootName = mRootName->value(QString());
    if (!rootName.isEmpty()) {
        root = new QTreeWidgetItem(this, QStringList(rootName));
        root->setData(0, kRowRole, qlonglong(-1));
    }
    std::vector<QTreeWidgetItem*> items(static_cast<size_t>(count));
    for (long row = 0; row < count; ++row) {
        items[size_t(row)] = new QTreeWidgetItem(QStringList(mNames->element<QString>(row)));
        items[size_t(row)]->setData(0, kRowRole, qlonglong(row));
    }
    for (long row = 0; row < count; ++row) {
        const long parent = parents[size_t(row)];
        QTreeWidgetItem* item = items[size_t(row)];
        if (anchored[size_t(row)] && parent >= 0 && parent < count)
            items[size_t(parent)]->addChild(item);
        else if (root)
            root->addChild(item);
        else
            addTopLevelItem(item);
    }
    for (QTreeWidgetItemIterator it(this); *it; ++it)
        (*it)->setExpanded(!mCollapsedRows.contains((*it)->data(0, kRowRole).toLongLong()));
    mApplyingModelState = wasApplying;
}

QTreeWidgetItem* Kel_TreeWidget::itemForRow(long row) const
{
    for (QTreeWidgetItemIterator it(const_cast<Kel_TreeWidget*>(this)); *it; ++it)
        if ((*it)->data(0, kRowRole).toLongLong() == row)
            return *it;
    return nullptr;
}

void Kel_TreeWidget::selectModelsNode()
{
    long row = -1;
    mCurrent->get(row);
    const bool wasApplying = mApplyingModelState;
    mApplyingModelState = true;
    QPointer<Kel_TreeWidget> self(this);
    setCurrentItem(itemForRow(row));
    if (self)
        mApplyingModelState = wasApplying;
}

void Kel_TreeWidget::userChangedCurrentItem(QTreeWidgetItem* current)
{
    if (mApplyingModelState || !mCurrent.isConnected())
        return;
    const long row = current ? long(current->data(0, kRowRole).toLongLong()) : -1;
    if (mCurrent.set(row) != Mvt_SimpleValue_BaseAPI::kSetRefused)
        return; // accepted (its notification shows it), or the tree is gone
    selectModelsNode();
}

bool Kel_TreeWidget::findPoi(const QString& dottedName, QRect* globalRect)
{
    QRect local = rect();
    if (!dottedName.isEmpty() && dottedName != objectName()) {
        const QString prefix = objectName() + QLatin1Char('.');
        if (objectName().isEmpty() || !dottedName.startsWith(prefix))
            return false;
        QTreeWidgetItem* item = nullptr;
        for (const QString& caption : dottedName.mid(prefix.size()).split(QLatin1Char('.'))) {
            const int count = item ? item->childCount() : topLevelItemCount();
            QTreeWidgetItem* next = nullptr;
            for (int i = 0; i < count && !next; ++i) {
                QTreeWidgetItem* child = item ? item->child(i) : topLevelItem(i);
                if (child->text(0) == caption)
                    next = child;
            }
            if (!next)
                return false;
            item = next;
        }
        while (item && visualItemRect(item).isEmpty())
            item = item->parent();
        if (!item)
            return false;
        local = visualItemRect(item).translated(viewport()->pos());
    }
    if (globalRect)
        *globalRect = QRect(mapToGlobal(local.topLeft()), local.size());
    return true;
}
