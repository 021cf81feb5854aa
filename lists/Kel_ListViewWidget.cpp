#include "Kel_ListViewWidget.h"

#include "Kel_HStackView.h"
#include "Kel_ListView.h"
#include "Kel_TextView.h"

#include <QEvent>
#include <QScrollBar>

namespace {

// Width of a row field given without one.
const int kDefaultFieldWidth = 120;

} // namespace

Kel_ListViewWidget::Kel_ListViewWidget(QWidget* parent, const char* name)
    : Kel_ListViewWidget(parent, name, new Kel_ListView)
{
}

Kel_ListViewWidget::Kel_ListViewWidget(QWidget* parent, const char* name, Kel_ListView* list)
    : Kel_BridgeQScrollArea(parent)
{
    setObjectName(QString::fromLatin1(name));
    setChild(list);
}

Kel_ListViewWidget::~Kel_ListViewWidget() = default;

Kel_ListView* Kel_ListViewWidget::listView() const
{
    return dynamic_cast<Kel_ListView*>(getChild());
}

// The hosted list is the bridge's child; code may have replaced or removed
// it, so every property goes through these two.
template <class Set>
void Kel_ListViewWidget::writeList(Set&& set)
{
    if (Kel_ListView* list = listView())
        set(*list);
}

template <class T, class Get>
T Kel_ListViewWidget::readList(Get&& get, const T& fallback) const
{
    const Kel_ListView* list = listView();
    return list ? T(get(*list)) : fallback;
}

void Kel_ListViewWidget::setListConnectionSpec(const QByteArray& spec)
{
    writeList([&](Kel_ListView& l) { l.SetListConnectionName(QString::fromUtf8(spec)); });
}

QByteArray Kel_ListViewWidget::getListConnectionSpec() const
{
    return readList([](const Kel_ListView& l) { return l.GetListConnectionName().toUtf8(); }, QByteArray());
}

void Kel_ListViewWidget::setSelectionConnectionSpec(const QByteArray& spec)
{
    writeList([&](Kel_ListView& l) { l.SetSelectionConnectionName(QString::fromUtf8(spec)); });
}

QByteArray Kel_ListViewWidget::getSelectionConnectionSpec() const
{
    return readList([](const Kel_ListView& l) { return l.GetSelectionConnectionName().toUtf8(); }, QByteArray());
}

void Kel_ListViewWidget::setSelectionMode(int mode)
{
    if (mode >= Kel_ListView::Single && mode <= Kel_ListView::None)
        writeList([&](Kel_ListView& l) { l.setSelectionMode(Kel_ListView::SelectionMode(mode)); });
}

int Kel_ListViewWidget::getSelectionMode() const
{
    return readList([](const Kel_ListView& l) { return int(l.getSelectionMode()); }, int(Kel_ListView::None));
}

void Kel_ListViewWidget::setEnterAction(const QByteArray& script)
{
    writeList([&](Kel_ListView& l) { l.setEnterActionString(QString::fromUtf8(script)); });
}

QByteArray Kel_ListViewWidget::getEnterAction() const
{
    return readList([](const Kel_ListView& l) { return l.getEnterActionString().toUtf8(); }, QByteArray());
}

void Kel_ListViewWidget::setSelectionAction(const QByteArray& script)
{
    writeList([&](Kel_ListView& l) { l.setSelectionActionString(QString::fromUtf8(script)); });
}

QByteArray Kel_ListViewWidget::getSelectionAction() const
{
    return readList([](const Kel_ListView& l) { return l.getSelectionActionString().toUtf8(); }, QByteArray());
}

void Kel_ListViewWidget::setRowHeight(int height)
{
    writeList([&](Kel_ListView& l) { l.setCellHeight(qMax(1, height)); });
}

int Kel_ListViewWidget::getRowHeight() const
{
    return readList([](const Kel_ListView& l) { return l.getCellHeight(); }, 0);
}

void Kel_ListViewWidget::setLedgerShading(bool on)
{
    writeList([&](Kel_ListView& l) { l.enableLedgerShading(on); });
}

bool Kel_ListViewWidget::getLedgerShading() const
{
    return readList([](const Kel_ListView& l) { return l.isLedgerShadingEnabled(); }, false);
}

void Kel_ListViewWidget::buildRowView()
{
    Kel_ListView* list = listView();
    if (!list || mRowFields.trimmed().isEmpty())
        return;
    auto* row = new Kel_HStackView;
    const int height = list->getCellHeight() > 0 ? list->getCellHeight() : 20;
    for (const QString& entry : mRowFields.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QString field = entry.section(QLatin1Char(':'), 0, 0).trimmed();
        if (field.isEmpty())
            continue;
        bool ok = false;
        const int width = entry.section(QLatin1Char(':'), 1, 1).trimmed().toInt(&ok);
        auto* text = new Kel_TextView;
        text->setName(field);
        text->SetNameConnection(list->GetListConnectionName() + QLatin1Char('.') + field + QStringLiteral("[$Row]"));
        text->setSize(QSize(ok && width > 0 ? width : kDefaultFieldWidth, height));
        row->AddSubView(text);
    }
    list->SetRowView(row);
}

void Kel_ListViewWidget::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    buildRowView();
    Kel_BridgeQScrollArea::makeConnections(environment);
    if (Kel_ListView* list = listView())
        list->adjustToPortSize(viewport()->size());
}

bool Kel_ListViewWidget::eventFilter(QObject* watched, QEvent* event)
{
    const bool result = Kel_BridgeQScrollArea::eventFilter(watched, event);
    if (watched == viewport() && event->type() == QEvent::Resize) {
        if (Kel_ListView* list = listView())
            list->adjustToPortSize(viewport()->size());
    }
    return result;
}
