// "Guided help": a find box that points at whatever a dotted path names,
// the way a help system walks a user through the application.
#include "DemoPanel.h"

#include "Kel_BridgeQWidget.h"
#include "Kel_CheckBox.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_HStackView.h"
#include "Kel_PoiLookup.h"
#include "Kel_StringView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

// A red frame over the screen rectangle found, for a second and a half.
class Highlight : public QWidget
{
public:
    Highlight()
        : QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint
                               | Qt::WindowTransparentForInput)
    {
        setAttribute(Qt::WA_TranslucentBackground);
        setAttribute(Qt::WA_ShowWithoutActivating);
        mHideTimer.setSingleShot(true);
        mHideTimer.setInterval(1500);
        QObject::connect(&mHideTimer, &QTimer::timeout, this, &QWidget::hide);
    }
    void point(const QRect& globalRect)
    {
        // A point (a view's centre) gets a small ring around it.
        const QRect area = globalRect.width() <= 1 ? QRect(globalRect.center() - QPoint(12, 12), QSize(25, 25))
                                                   : globalRect.adjusted(-3, -3, 3, 3);
        setGeometry(area);
        show();
        raise();
        mHideTimer.start();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(0xd0, 0x30, 0x28), 3));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 4, 4);
    }

private:
    QTimer mHideTimer;
};

QWidget* createGuidedHelpPanel(QWidget* parent)
{
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel(QStringLiteral(
        "Type or choose a dotted path: a window's name, then the names of widgets inside it, then what a "
        "bridge, list, widget list or open menu names inside itself."), page));

    auto* row = new QHBoxLayout;
    auto* path = new QComboBox(page);
    path->setObjectName(QStringLiteral("helpPath"));
    path->setEditable(true);
    path->addItems({QStringLiteral("DemoWindow.Guided help.helpBin.Clip.Length"),
                    QStringLiteral("DemoWindow.Guided help.helpBox"),
                    QStringLiteral("DemoWindow.DemoMenuBar.File"), QStringLiteral("DemoWindow.DemoMenuBar.Transport"),
                    QStringLiteral("DemoWindow")});
    path->setMinimumWidth(380);
    auto* show = new QPushButton(QStringLiteral("Show me"), page);
    show->setObjectName(QStringLiteral("showMe"));
    row->addWidget(path, 1);
    row->addWidget(show);
    layout->addLayout(row);
    auto* result = new QLabel(page);
    result->setObjectName(QStringLiteral("helpResult"));
    layout->addWidget(result);

    // Something to find on this page: a box and a bridge of two views.
    auto* box = new Kel_CheckBox(page, "helpBox");
    box->setText(QStringLiteral("A check box called helpBox"));
    layout->addWidget(box);
    auto* bin = new Kel_BridgeQWidget(page);
    bin->setObjectName(QStringLiteral("helpBin"));
    auto* stack = new Kel_HStackView();
    stack->setName(QStringLiteral("Clip"));
    for (const char* name : {"Name", "Length"}) {
        auto* view = new Kel_StringView();
        view->setName(QString::fromLatin1(name));
        view->SetConnectionID(QStringLiteral("Transport.State"));
        view->setSize(QSize(140, 22));
        stack->AddSubView(view);
    }
    bin->setChild(stack);
    bin->setBridgeBackgroundColor(QColor(0xe5, 0xf0, 0xf7));
    bin->setMinimumSize(280, 22);
    layout->addWidget(new QLabel(QStringLiteral("A bridge \"helpBin\" with the views Clip.Name and Clip.Length:"), page));
    layout->addWidget(bin);
    layout->addStretch();
    Kel_ConnectionUtils::recursiveConnect(bin, Mv_ConnectionEnvironment::blankEnvironment());

    auto* highlight = new Highlight;
    QObject::connect(page, &QObject::destroyed, highlight, [highlight] { delete highlight; });
    auto find = [path, result, highlight] {
        QRect rect;
        QWidget* widget = nullptr;
        if (Kel_PoiLookup::find(path->currentText(), &rect, &widget)) {
            result->setText(QStringLiteral("Found in %1 at %2,%3 (%4 x %5)")
                                .arg(widget->objectName())
                                .arg(rect.x())
                                .arg(rect.y())
                                .arg(rect.width())
                                .arg(rect.height()));
            highlight->point(rect);
        } else {
            result->setText(QStringLiteral("Nothing shown has that name"));
        }
    };
    QObject::connect(show, &QPushButton::clicked, page, find);
    QObject::connect(path->lineEdit(), &QLineEdit::returnPressed, page, find);
    return page;
}

// For the screenshot: point at the bridge's second view.
void pointAtLength(QWidget* page)
{
    if (auto* show = page->findChild<QPushButton*>(QStringLiteral("showMe")))
        show->click();
}

const DemoPanelRegistrar registrar({QStringLiteral("Guided help"), 520, &createGuidedHelpPanel, &pointAtLength});

} // namespace
