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

Kel_ListViewWidget::Kel_ListViewWidget(QWidget* parent, const char* name) : Kel_BridgeQScrollArea(parent)
{
    setObjectName(QString::fromLatin1(name));
    setChild(new Kel_ListView);
}

Kel_ListViewWidget::~Kel_ListViewWidget() = default;

Kel_ListView* Kel_ListViewWidget::listView() const
{
    return dynamic_cast<Kel_ListView*>(getChild());
}

void Kel_ListViewWidget::setListConnectionSpec(const QByteArray& spec)
{
    if (Kel_ListView* list = listView())
        list->SetListConnectionName(QString::fromUtf8(spec));
}

QByteArray Kel_ListViewWidget::getListConnectionSpec() const
{
    const Kel_ListView* list = listView();
    return list ? list->GetListConnectionName().toUtf8() : QByteArray();
}

void Kel_ListViewWidget::setSelectionConnectionSpec(const QByteArray& spec)
{
    if (Kel_ListView* list = listView())
        list->SetSelectionConnectionName(QString::fromUtf8(spec));
}

QByteArray Kel_ListViewWidget::getSelectionConnectionSpec() const
{
    const Kel_ListView* list = listView();
    return list ? list->GetSelectionConnectionName().toUtf8() : QByteArray();
}

void Kel_ListViewWidget::setSelectionMode(int mode)
{
    Kel_ListView* list = listView();
    if (list && mode >= Kel_ListView::Single && mode <= Kel_ListView::None)
        list->setSelectionMode(Kel_ListView::SelectionMode(mode));
}

int Kel_ListViewWidget::getSelectionMode() const
{
    const Kel_ListView* list = listView();
    return list ? int(list->getSelectionMode()) : int(Kel_ListView::None);
}

void Kel_ListViewWidget::setEnterAction(const QByteArray& script)
{
    if (Kel_ListView* list = listView())
        list->setEnterActionString(QString::fromUtf8(script));
}

QByteArray Kel_ListViewWidget::getEnterAction() const
{
    const Kel_ListView* list = listView();
    return list ? list->getEnterActionString().toUtf8() : QByteArray();
}

void Kel_ListViewWidget::setSelectionAction(const QByteArray& script)
{
    if (Kel_ListView* list = listView())
        list->setSelectionActionString(QString::fromUtf8(script));
}

QByteArray Kel_ListViewWidget::getSelectionAction() const
{
    const Kel_ListView* list = listView();
    return list ? list->getSelectionActionString().toUtf8() : QByteArray();
}

void Kel_ListViewWidget::setRowHeight(int height)
{
    if (Kel_ListView* list = listView())
        list->setCellHeight(qMax(1, height));
}

int Kel_ListViewWidget::getRowHeight() const
{
    const Kel_ListView* list = listView();
    return list ? list->getCellHeight() : 0;
}

void Kel_ListViewWidget::setLedgerShading(bool on)
{
    if (Kel_ListView* list = listView())
        list->enableLedgerShading(on);
}

bool Kel_ListViewWidget::getLedgerShading() const
{
    const Kel_ListView* list = listView();
    return list && list->isLedgerShadingEnabled();
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
