#include "Kel_ModelInspector.h"

#include "Kel_BoundPropertyBase.h"
#include "Kel_BridgeBase.h"
#include "Kel_ViewBase.h"
#include "Kel_ViewInterface.h"
#include "Mv_ConnectionDict.h"
#include "Mv_Diagnostics.h"
#include "Mv_ListenerBase.h"
#include "Mv_ModelBase.h"
#include "Mv_Variant.h"
#include "Mvt_SimpleValue_BaseAPI.h"

#include <QApplication>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace {

const int kRefreshMs = 500;

QTableWidget* makeTable(const QStringList& headers, QWidget* parent)
{
    auto* table = new QTableWidget(0, headers.size(), parent);
    table->setHorizontalHeaderLabels(headers);
    table->horizontalHeader()->setStretchLastSection(true);
    table->verticalHeader()->hide();
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                           | QAbstractItemView::AnyKeyPressed);
    return table;
}

QTableWidgetItem* readOnlyItem(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setFlags(item->flags() & ~Qt::ItemIsEditable);
    return item;
}

// Fills a row, keeping the items already there: the tables are read again
// twice a second, and new items would lose the user's current cell and
// selection each time.
void setCell(QTableWidget* table, int row, int column, const QString& text, bool editable = false)
{
    QTableWidgetItem* item = table->item(row, column);
    if (!item) {
        item = readOnlyItem(text);
        table->setItem(row, column, item);
    } else if (item->text() != text) {
        item->setText(text);
    }
    const Qt::ItemFlags flags = editable ? item->flags() | Qt::ItemIsEditable : item->flags() & ~Qt::ItemIsEditable;
    if (flags != item->flags())
        item->setFlags(flags);
}

void setRow(QTableWidget* table, int row, const QStringList& texts)
{
    for (int column = 0; column < texts.size(); ++column)
        setCell(table, row, column, texts[column]);
}

Kel_ModelInspector::Binding describe(const Kel_BoundPropertyBase& property, const QString& owner)
{
    const Mv_ListenerBase& listener = property.listenerBase();
    Kel_ModelInspector::Binding binding;
    binding.owner = owner;
    binding.specification = listener.GetConnectionName().isEmpty() ? property.spec() : listener.GetConnectionName();
    binding.resolvedName = listener.GetResolvedName();
    binding.connected = listener.isConnectedToModel();
    long index = -1;
    if (listener.currentIndex(&index))
        binding.index = index;
    Mv_Variant value;
    if (binding.connected && listener.SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&value), false)
        && !value.isEmpty() && !value.get(binding.value))
        binding.value = value.toDebugString();
    return binding;
}

QString widgetOwnerName(const QObject* widget)
{
    const QString name = widget->objectName();
    const QString type = QString::fromLatin1(widget->metaObject()->className());
    return name.isEmpty() ? type : QStringLiteral("%1 (%2)").arg(name, type);
}

QVector<Kel_ModelInspector::Binding> viewBindingsAt(Kel_BridgeBase* bridge, const QPoint& globalPos)
{
    QVector<Kel_ModelInspector::Binding> found;
    auto* bridgeWidget = dynamic_cast<QWidget*>(bridge);
    if (!bridgeWidget || !bridge->getChild())
        return found;
    // Asking for the name of what lies under the point walks the views
    // there as they show it: a list shows the row under the point during
    // the walk, so element addresses are read for that row.
    std::vector<std::pair<Kel_ViewInterface*, QVector<Kel_ModelInspector::Binding>>> walked;
    Kel_ViewBase::setUiNameProbe([&walked](Kel_ViewInterface* view) {
        QVector<Kel_ModelInspector::Binding> bindings;
        for (const Kel_BoundPropertyBase* property : Kel_BoundPropertyBase::propertiesOf(view)) {
            if (property->isNamed())
                bindings.append(describe(*property, view->getName()));
        }
        walked.emplace_back(view, bindings);
    });
    const QString uiName = bridge->findUiName(bridgeWidget->mapFromGlobal(globalPos));
    Kel_ViewBase::setUiNameProbe(nullptr);
    // Innermost first; views without a name of their own go by the path.
    for (auto it = walked.rbegin(); it != walked.rend(); ++it) {
        for (Kel_ModelInspector::Binding binding : it->second) {
            if (binding.owner.isEmpty())
                binding.owner = uiName;
            found.append(binding);
        }
    }
    return found;
}

} // namespace

Kel_ModelInspector::Kel_ModelInspector(QWidget* parent, Mv_ConnectionDict* dict)
    : QWidget(parent), mDictP(dict ? dict : Mv_ConnectionDict::Singleton())
{
    setObjectName(QStringLiteral("ModelInspector"));
    setWindowTitle(tr("Model inspector"));
    buildUi();
}

Kel_ModelInspector::~Kel_ModelInspector()
{
    setPicking(false);
}

void Kel_ModelInspector::buildUi()
{
    auto* layout = new QVBoxLayout(this);
    mFilterP = new QLineEdit(this);
    mFilterP->setObjectName(QStringLiteral("filter"));
    mFilterP->setPlaceholderText(tr("Filter names"));
    layout->addWidget(mFilterP);

    auto* tabs = new QTabWidget(this);
    mModelsP = makeTable({tr("Name"), tr("Kind"), tr("Value"), tr("Listeners")}, tabs);
    mModelsP->setObjectName(QStringLiteral("models"));
    tabs->addTab(mModelsP, tr("Models"));
    mUnconnectedP = makeTable({tr("Specification"), tr("Waits for"), tr("Did you mean")}, tabs);
    mUnconnectedP->setObjectName(QStringLiteral("unconnected"));
    tabs->addTab(mUnconnectedP, tr("Unconnected"));

    auto* pickPage = new QWidget(tabs);
    auto* pickLayout = new QVBoxLayout(pickPage);
    mPickP = new QPushButton(tr("Pick a widget"), pickPage);
    mPickP->setObjectName(QStringLiteral("pick"));
    mPickP->setCheckable(true);
    mPickP->setToolTip(tr("Move the mouse over a widget or view; click to keep what it shows"));
    pickLayout->addWidget(mPickP);
    mBindingsP = makeTable({tr("Owner"), tr("Specification"), tr("Model"), tr("Connected"), tr("Value")}, pickPage);
    mBindingsP->setObjectName(QStringLiteral("bindings"));
    mBindingsP->setEditTriggers(QAbstractItemView::NoEditTriggers);
    pickLayout->addWidget(mBindingsP);
    tabs->addTab(pickPage, tr("Under the cursor"));
    layout->addWidget(tabs);

    mStatusP = new QLabel(this);
    mStatusP->setObjectName(QStringLiteral("status"));
    layout->addWidget(mStatusP);

    mTimerP = new QTimer(this);
    mTimerP->setInterval(kRefreshMs);
    connect(mTimerP, &QTimer::timeout, this, &Kel_ModelInspector::refresh);
    connect(mFilterP, &QLineEdit::textChanged, this, &Kel_ModelInspector::refresh);
    connect(mModelsP, &QTableWidget::itemChanged, this, &Kel_ModelInspector::modelValueEdited);
    connect(mPickP, &QPushButton::toggled, this, &Kel_ModelInspector::setPicking);
    resize(640, 420);
}

void Kel_ModelInspector::refresh()
{
    // Rebuilding the table would end an edit the user has begun (the
    // editor is a child of the viewport and has the focus).
    const QWidget* focus = QApplication::focusWidget();
    if (!focus || !mModelsP->viewport()->isAncestorOf(focus))
        fillModels();
    fillUnconnected();
}

void Kel_ModelInspector::fillModels()
{
    const QString filter = mFilterP->text().trimmed();
    QVector<Mv_Diagnostics::ModelInfo> models = Mv_Diagnostics::models(mDictP);
    if (!filter.isEmpty()) {
        models.erase(std::remove_if(models.begin(), models.end(),
                                    [&](const auto& m) { return !m.name.contains(filter, Qt::CaseInsensitive); }),
                     models.end());
    }
    mFilling = true;
    mModelsP->setRowCount(models.size());
    for (int row = 0; row < models.size(); ++row) {
        const auto& m = models[row];
        setCell(mModelsP, row, 0, m.name);
        setCell(mModelsP, row, 1, m.kind);
        setCell(mModelsP, row, 2, m.value, m.hasValue);
        setCell(mModelsP, row, 3, QString::number(m.listenerCount));
    }
    mFilling = false;
}

void Kel_ModelInspector::fillUnconnected()
{
    const QString filter = mFilterP->text().trimmed();
    QVector<Mv_Diagnostics::ListenerInfo> waiting;
    for (const auto& info : Mv_Diagnostics::listeners(mDictP)) {
        if (!info.connected
            && (filter.isEmpty() || info.specification.contains(filter, Qt::CaseInsensitive)
                || info.missingName.contains(filter, Qt::CaseInsensitive)))
            waiting.append(info);
    }
    // Many listeners often wait for one name (the rows of a list for their
    // index model): look each name's neighbours up once.
    QHash<QString, QString> nearNames;
    mFilling = true;
    mUnconnectedP->setRowCount(waiting.size());
    for (int row = 0; row < waiting.size(); ++row) {
        const auto& info = waiting[row];
        auto near = nearNames.find(info.missingName);
        if (near == nearNames.end())
            near = nearNames.insert(info.missingName,
                                    Mv_Diagnostics::suggestions(info.missingName, mDictP).join(QStringLiteral(", ")));
        setRow(mUnconnectedP, row, {info.specification, info.missingName, *near});
    }
    mFilling = false;
}

void Kel_ModelInspector::modelValueEdited(QTableWidgetItem* item)
{
    if (mFilling || item->column() != 2)
        return;
    const QTableWidgetItem* nameItem = mModelsP->item(item->row(), 0);
    Mv_ModelBase* model = nameItem ? mDictP->lookup(nameItem->text()) : nullptr;
    if (!model) {
        mStatusP->setText(tr("\"%1\" is no longer published").arg(nameItem ? nameItem->text() : QString()));
        return;
    }
    const QString name = nameItem->text();
    const QString text = item->text();
    if (Mv_Diagnostics::setValueText(*model, text) == 3)
        mStatusP->setText(tr("\"%1\" refused \"%2\"").arg(name, text));
    else
        mStatusP->setText(tr("\"%1\" set to \"%2\"").arg(name, text));
    // Show what the model holds now, refused or converted.
    QTimer::singleShot(0, this, [this] { fillModels(); });
}

QVector<Kel_ModelInspector::Binding> Kel_ModelInspector::bindingsAt(const QPoint& globalPos)
{
    QVector<Binding> found;
    for (QWidget* w = QApplication::widgetAt(globalPos); w; w = w->parentWidget()) {
        if (auto* bridge = dynamic_cast<Kel_BridgeBase*>(w))
            found += viewBindingsAt(bridge, globalPos);
        for (const Kel_BoundPropertyBase* property : Kel_BoundPropertyBase::propertiesOf(w)) {
            if (property->isNamed()) // an unbound property has nothing to show
                found.append(describe(*property, widgetOwnerName(w)));
        }
        if (!found.isEmpty())
            break;
    }
    return found;
}

void Kel_ModelInspector::showBindingsAt(const QPoint& globalPos)
{
    const QVector<Binding> bindings = bindingsAt(globalPos);
    mBindingsP->setRowCount(bindings.size());
    for (int row = 0; row < bindings.size(); ++row) {
        const Binding& b = bindings[row];
        const QString model = b.index >= 0 ? tr("%1, element %2").arg(b.resolvedName).arg(b.index) : b.resolvedName;
        setRow(mBindingsP, row, {b.owner, b.specification, model, b.connected ? tr("yes") : tr("no"), b.value});
    }
}

void Kel_ModelInspector::setPicking(bool picking)
{
    if (picking == mPicking)
        return;
    mPicking = picking;
    if (picking)
        qApp->installEventFilter(this);
    else if (qApp)
        qApp->removeEventFilter(this);
    if (mPickP && mPickP->isChecked() != picking)
        mPickP->setChecked(picking);
}

bool Kel_ModelInspector::isMine(const QWidget* widget) const
{
    return widget && (widget == this || isAncestorOf(widget));
}

bool Kel_ModelInspector::eventFilter(QObject* watched, QEvent* event)
{
    if (!mPicking)
        return QWidget::eventFilter(watched, event);
    auto* widget = qobject_cast<QWidget*>(watched);
    switch (event->type()) {
    case QEvent::MouseMove: {
        auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint global = widget ? widget->mapToGlobal(mouse->pos()) : QCursor::pos();
        if (!isMine(QApplication::widgetAt(global)))
            showBindingsAt(global);
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        if (!isMine(widget)) {
            // The click that ends picking belongs to the inspector, not to
            // the widget it points at.
            if (event->type() == QEvent::MouseButtonPress)
                setPicking(false);
            return true;
        }
        break;
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
            setPicking(false);
            return true;
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void Kel_ModelInspector::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    refresh();
    mTimerP->start();
}

void Kel_ModelInspector::hideEvent(QHideEvent* event)
{
    mTimerP->stop();
    setPicking(false);
    QWidget::hideEvent(event);
}
