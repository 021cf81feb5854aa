// "View gallery": a tree of bins built from a parent/name record array, a
// column of reveal groups holding selectable rows with icons and dates, and
// a jog wheel that turns relative mouse motion into a frame number.
#include "DemoPanel.h"

#include "Kel_BridgeQWidget.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_DateTimeView.h"
#include "Kel_HStackView.h"
#include "Kel_IconView.h"
#include "Kel_LongLabel.h"
#include "Kel_RelativeMouseTracker.h"
#include "Kel_RevealView.h"
#include "Kel_SelectableView.h"
#include "Kel_StringView.h"
#include "Kel_TreeWidget.h"
#include "Kel_VStackView.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <QtMath>

namespace {

const int kRowHeight = 26;

QPixmap dot(const QColor& color)
{
    QPixmap pixmap(14, 14);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(color);
    painter.setPen(color.darker(140));
    painter.drawEllipse(QRectF(1.5, 1.5, 11, 11));
    return pixmap;
}

// Models of this panel itself.
struct GalleryModels
{
    GalleryModels()
    {
        bins.addField<QString>("name");
        bins.addField<long>("parent", -1);
        const struct
        {
            const char* name;
            long parent;
        } nodes[] = {{"Footage", -1}, {"Day 1", 0}, {"Day 2", 0}, {"Interviews", 1}, {"B-roll", 1},
                     {"Music", -1}, {"Score", 5}, {"Effects", -1}};
        for (const auto& node : nodes) {
            const long row = bins.appendRow();
            bins.setValue<QString>(row, "name", QString::fromLatin1(node.name));
            bins.setValue<long>(row, "parent", node.parent);
        }
        for (int i = 0; i < 3; ++i) {
            clipOpen[i].SetConnectionName(QStringLiteral("Gallery.Clip%1.Open").arg(i));
            clipSelected[i].SetConnectionName(QStringLiteral("Gallery.Clip%1.Selected").arg(i));
            clipName[i].SetConnectionName(QStringLiteral("Gallery.Clip%1.Name").arg(i));
            clipSaved[i].SetConnectionName(QStringLiteral("Gallery.Clip%1.Saved").arg(i));
            clipStatus[i].SetConnectionName(QStringLiteral("Gallery.Clip%1.Status").arg(i));
            clipOpen[i].setValue(i != 2);
            clipSelected[i].setValue(i == 1);
            clipName[i].setValue(QStringList{"Interview, take 2", "Harbour at dawn", "Crowd noise"}.at(i));
            clipSaved[i].setValue(QDateTime(QDate(2026, 11, 20 + i), QTime(9 + 2 * i, 15 * i)));
            clipStatus[i].setValue(dot(QList<QColor>{QColor(60, 170, 80), QColor(230, 170, 40), QColor(200, 60, 60)}.at(i)));
            for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&clipOpen[i], &clipSelected[i], &clipName[i],
                                                                         &clipSaved[i], &clipStatus[i]})
                m->Publish();
        }
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&bins, &currentBin, &rootName, &jogFrame})
            m->Publish();
    }
    static GalleryModels& instance()
    {
        static GalleryModels models;
        return models;
    }

    Mve_RecordArray bins{"Gallery.Bins"};
    Mve_SimpleValue<long> currentBin{3, "Gallery.CurrentBin"};
    Mve_SimpleValue<QString> rootName{"Project", "Gallery.RootName"};
    Mve_SimpleValue<long> jogFrame{0, "Gallery.JogFrame"};
    Mve_SimpleValue<bool> clipOpen[3];
    Mve_SimpleValue<bool> clipSelected[3];
    Mve_SimpleValue<QString> clipName[3];
    Mve_SimpleValue<QDateTime> clipSaved[3];
    Mve_SimpleValue<QPixmap> clipStatus[3];
};

// A wheel that the user turns by dragging sideways: the tracker's relative
// motion moves the frame model, whatever the pointer's room on the screen.
class JogWheel : public QWidget
{
public:
    JogWheel(Mve_SimpleValue<long>* frame, QWidget* parent) : QWidget(parent), mFrameP(frame)
    {
        setMinimumSize(160, 60);
        setToolTip(QStringLiteral("Drag sideways to jog, or use the arrow keys; the pointer stays put"));
        setFocusPolicy(Qt::StrongFocus);
        auto* tracker = new Kel_RelativeMouseTracker(this);
        QObject::connect(tracker, &Kel_RelativeMouseTracker::moved, this, [this](int dx, int) {
            // Four pixels of motion per frame.
            mRemainder += dx;
            const long frames = mRemainder / 4;
            mRemainder -= int(frames) * 4;
            mFrameP->setValue(mFrameP->getValue() + frames);
            update();
        });
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const QRectF body = QRectF(rect()).adjusted(4, 8, -4, -8);
        QLinearGradient shade(body.topLeft(), body.bottomLeft());
        shade.setColorAt(0, QColor(90, 96, 110));
        shade.setColorAt(0.5, QColor(170, 176, 190));
        shade.setColorAt(1, QColor(90, 96, 110));
        p.setBrush(shade);
        p.setPen(QColor(50, 55, 65));
        p.drawRoundedRect(body, 8, 8);
        // Ridges that roll with the frame number, as on a real wheel.
        p.setPen(QColor(60, 64, 75));
        const long frame = mFrameP->getValue();
        for (int i = 0; i < 24; ++i) {
            const qreal angle = (i * 15 + frame * 3 % 15) * M_PI / 180.0;
            const qreal x = body.center().x() - std::cos(angle) * body.width() / 2;
            if (std::sin(angle) > 0.05)
                p.drawLine(QPointF(x, body.top() + 4), QPointF(x, body.bottom() - 4));
        }
        if (hasFocus()) {
            p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
            p.setBrush(Qt::NoBrush);
            p.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
        }
    }

    // Left and Right jog a frame at a time.
    void keyPressEvent(QKeyEvent* event) override
    {
        const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
        if (step == 0) {
            QWidget::keyPressEvent(event);
            return;
        }
        mFrameP->setValue(mFrameP->getValue() + step);
        update();
    }

private:
    Mve_SimpleValue<long>* mFrameP;
    int mRemainder = 0;
};

Kel_ViewInterface* clipGroup(int i)
{
    auto* group = new Kel_RevealView;
    group->setName(QStringLiteral("Clip%1").arg(i));
    group->setTitleConnection(QStringLiteral("Gallery.Clip%1.Name").arg(i));
    group->setRevealStateConnection(QStringLiteral("Gallery.Clip%1.Open").arg(i));

    auto* row = new Kel_SelectableView;
    row->setName(QStringLiteral("Row"));
    row->setIsSelectedConnectionSpec(QStringLiteral("Gallery.Clip%1.Selected").arg(i));
    auto* cells = new Kel_HStackView;
    auto* status = new Kel_IconView;
    status->setConnectionType(Kel_IconView::kPixmapConnection);
    status->SetConnectionID(QStringLiteral("Gallery.Clip%1.Status").arg(i));
    status->setSize(QSize(30, kRowHeight));
    cells->AddSubView(status);
    auto* saved = new Kel_DateTimeView;
    saved->setConnectionSpec(QStringLiteral("Gallery.Clip%1.Saved").arg(i));
    saved->setFormat(QStringLiteral("ddd d MMM, hh:mm"));
    saved->setSize(QSize(175, kRowHeight));
    cells->AddSubView(saved);
    auto* name = new Kel_StringView;
    name->SetConnectionID(QStringLiteral("Gallery.Clip%1.Name").arg(i));
    name->setSize(QSize(170, kRowHeight));
    cells->AddSubView(name);
    row->setSize(cells->getSize());
    row->AddSubView(cells);
    group->setBody(row);
    return group;
}

QWidget* createViewGalleryPanel(QWidget* parent)
{
    GalleryModels& models = GalleryModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QHBoxLayout(page);

    auto* treeBox = new QGroupBox(QStringLiteral("Bins (Kel_TreeWidget)"), page);
    auto* treeLayout = new QVBoxLayout(treeBox);
    auto* tree = new Kel_TreeWidget(treeBox, "binTree");
    tree->SetConnectionEnv(QStringLiteral("Bins=Gallery.Bins"));
    tree->setTreeDMConn("$Bins");
    tree->setBaseNameConn("Gallery.CurrentBin");
    tree->setRootDisplayNameConn("Gallery.RootName");
    treeLayout->addWidget(tree);
    auto* currentRow = new QHBoxLayout;
    currentRow->addWidget(new QLabel(QStringLiteral("Gallery.CurrentBin:"), treeBox));
    auto* current = new Kel_LongLabel(treeBox, "currentBin");
    current->SetConnectionName("Gallery.CurrentBin");
    currentRow->addWidget(current, 1);
    treeLayout->addLayout(currentRow);
    layout->addWidget(treeBox, 1);

    auto* right = new QVBoxLayout;
    right->addWidget(new QLabel(QStringLiteral("Reveal groups in a Kel_VStackView: click a title to fold it, a row to "
                                               "select it (Ctrl+click toggles)."),
                                page));
    auto* column = new Kel_VStackView;
    column->setName(QStringLiteral("Clips"));
    for (int i = 0; i < 3; ++i)
        column->AddSubView(clipGroup(i));
    auto* bridge = new Kel_BridgeQWidget(page, "galleryBridge");
    bridge->setMinimumSize(360, 3 * 2 * kRowHeight + 20);
    bridge->setChild(column);
    right->addWidget(bridge, 1);

    auto* jogBox = new QGroupBox(QStringLiteral("Jog (Kel_RelativeMouseTracker)"), page);
    auto* jogLayout = new QHBoxLayout(jogBox);
    jogLayout->addWidget(new JogWheel(&models.jogFrame, jogBox), 1);
    auto* frame = new Kel_LongLabel(jogBox, "jogFrame");
    frame->SetConnectionName("Gallery.JogFrame");
    frame->setMinimumWidth(60);
    jogLayout->addWidget(new QLabel(QStringLiteral("frame"), jogBox));
    jogLayout->addWidget(frame);
    right->addWidget(jogBox);
    layout->addLayout(right, 2);

    Kel_ConnectionUtils::recursiveConnect(page, Mv_ConnectionEnvironment::blankEnvironment());
    return page;
}

const DemoPanelRegistrar registrar({QStringLiteral("View gallery"), 450, &createViewGalleryPanel, nullptr});

} // namespace
