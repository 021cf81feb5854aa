// "Views": light-weight views bound to the demo models, laid out in rows of
// horizontal stacks inside one container view, hosted by a scroll-area
// bridge. The last section draws every clip with a single row view whose
// listeners follow "$Row" through an index model, as lists do.
#include "DemoModels.h"
#include "DemoPanel.h"

#include "Kel_BoolTextView.h"
#include "Kel_BridgeQScrollArea.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_ContainerViewBase.h"
#include "Kel_HStackView.h"
#include "Kel_LongIntView.h"
#include "Kel_StringView.h"
#include "Kel_TextView.h"
#include "Kel_ValueViewBase.h"
#include "Mve_Index.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace {

const int kRowHeight = 30;

// Models of this panel itself: tool tips, a colour, the row index.
struct ViewsPanelModels
{
    ViewsPanelModels()
    {
        for (Mv_ModelBase* m : std::initializer_list<Mv_ModelBase*>{&stateTip, &volumeTip, &clipTip, &stateColor, &clipRow})
            m->Publish();
    }
    static ViewsPanelModels& instance()
    {
        static ViewsPanelModels models;
        return models;
    }

    Mve_SimpleValue<QString> stateTip{"Transport.State, in the colour of ViewsDemo.StateColor", "ViewsDemo.StateTip"};
    Mve_SimpleValue<QString> volumeTip{"Mixer.Volume, a long model shown as decimal text", "ViewsDemo.VolumeTip"};
    Mve_SimpleValue<QString> clipTip{"Clips.name[i]: one element of the record array", "ViewsDemo.ClipTip"};
    Mve_SimpleValue<QColor> stateColor{QColor(0, 110, 60), "ViewsDemo.StateColor"};
    Mve_Index<long> clipRow{-1, "ViewsDemo.ClipRow"};
};

// A fixed text: captions and headings of the demo (not bound to a model).
// A value view, so that screen readers read it as text.
class CaptionView : public Kel_ValueViewBase
{
public:
    CaptionView(const QString& text, int width, bool heading) : mText(text), mHeading(heading)
    {
        setSize(QSize(width, kRowHeight));
    }
    void readValues() override { setText(mText); }
    void drawContents(QPainter* painter, const QRect&) override
    {
        painter->save();
        QFont font = QApplication::font();
        font.setBold(mHeading);
        painter->setFont(font);
        painter->setPen(mHeading ? QColor(30, 50, 90) : QColor(90, 90, 90));
        painter->drawText(getLocalDrawingRect().adjusted(8, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, mText);
        painter->restore();
    }
    Kel_ViewInterface* clone() override { return new CaptionView(*this); }

private:
    QString mText;
    bool mHeading;
};

// Draws its one row view once per clip, moving the index model that the
// row's "$Row" listeners follow before each row.
class RepeatedRowsView : public Kel_ContainerViewBase
{
public:
    RepeatedRowsView(Kel_HStackView* row, Mve_Index<long>* index, int rows) : mRowP(row), mIndexP(index), mRows(rows)
    {
        AddSubView(row);
        setSize(QSize(row->getWidth(), rows * kRowHeight));
    }
    void drawContents(QPainter* painter, const QRect& rect) override
    {
        mPainting = true;
        const long saved = mIndexP->getValue();
        for (int r = 0; r < mRows; ++r) {
            mIndexP->setValue(r);
            mRowP->setOrigin(QPoint(0, r * kRowHeight));
            paintSubView(mRowP, painter, rect);
        }
        mIndexP->setValue(saved);
        mPainting = false;
    }
    // The row asks to be repainted when a value changes: any row may have
    // changed, and the index moves while painting must not ask again.
    void childBitsChanged(Kel_ViewInterface*, const QRect&, bool) override
    {
        if (!mPainting)
            sendAllBitsChanged();
    }

private:
    Kel_HStackView* mRowP; // owned as a sub-view
    Mve_Index<long>* mIndexP;
    int mRows;
    bool mPainting = false;
};

Kel_HStackView* captionRow(const QString& caption, Kel_ViewInterface* value, int valueWidth)
{
    auto* row = new Kel_HStackView;
    row->setName(caption);
    row->AddSubView(new CaptionView(caption, 150, false));
    value->setName(caption);
    value->setSize(QSize(valueWidth, kRowHeight));
    row->AddSubView(value);
    return row;
}

// The cells of one clip; element is "[i]" or "[$Row]". A row that follows
// $Row shows the index it is drawn for instead of a caption.
Kel_HStackView* clipRow(const QString& element, const QString& caption)
{
    auto* row = new Kel_HStackView;
    row->setName(caption);
    if (element.contains(QLatin1Char('$'))) {
        row->AddSubView(new CaptionView(caption, 60, false));
        auto* index = new Kel_LongIntView;
        index->setConnectionName(QStringLiteral("$Row"));
        index->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        index->setSize(QSize(90, kRowHeight));
        row->AddSubView(index);
    } else {
        row->AddSubView(new CaptionView(caption, 150, false));
    }
    auto* name = new Kel_TextView;
    name->SetNameConnection(QStringLiteral("Clips.name") + element);
    name->setToolTipConnectionID(QStringLiteral("ViewsDemo.ClipTip"));
    name->setSize(QSize(110, kRowHeight));
    row->AddSubView(name);
    auto* seconds = new Kel_LongIntView;
    seconds->setConnectionName(QStringLiteral("Clips.duration") + element);
    seconds->setSize(QSize(50, kRowHeight));
    row->AddSubView(seconds);
    row->AddSubView(new CaptionView(QStringLiteral("s"), 30, false));
    auto* selected = new Kel_BoolTextView;
    selected->setConnectionName(QStringLiteral("Clips.selected") + element);
    selected->setTrueText(QStringLiteral("selected"));
    selected->setFalseText(QString(QChar(0x2013)));
    selected->setSize(QSize(80, kRowHeight));
    row->AddSubView(selected);
    return row;
}

// Piles rows up from the top of the panel view.
struct Column
{
    Kel_ContainerViewBase* panel;
    int y = 8;
    void add(Kel_ViewInterface* view)
    {
        view->setOrigin(QPoint(16, y));
        panel->AddSubView(view);
        y += view->getHeight();
    }
    void heading(const QString& text) { add(new CaptionView(text, 600, true)); }
};

QWidget* createViewsPanel(QWidget* parent)
{
    DemoModels& demo = DemoModels::instance();
    ViewsPanelModels& models = ViewsPanelModels::instance();

    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel(QStringLiteral("Views are painted areas, not widgets: one Kel_BridgeQScrollArea hosts "
                                                "them all. Rest the mouse on a value for its tool tip."),
                                 page));

    auto* panel = new Kel_ContainerViewBase;
    panel->setName(QStringLiteral("ViewsPanel"));
    Column column{panel};

    column.heading(QStringLiteral("Transport and mixer"));
    auto* state = new Kel_StringView;
    state->SetConnectionID(QStringLiteral("Transport.State"));
    state->SetColorConn(QStringLiteral("ViewsDemo.StateColor"));
    state->setToolTipConnectionID(QStringLiteral("ViewsDemo.StateTip"));
    column.add(captionRow(QStringLiteral("State"), state, 200));
    auto* playing = new Kel_BoolTextView;
    playing->setConnectionName(QStringLiteral("Transport.Playing"));
    playing->setTrueText(QStringLiteral("Playing"));
    playing->setFalseText(QStringLiteral("Stopped"));
    column.add(captionRow(QStringLiteral("Playing"), playing, 200));
    auto* volume = new Kel_LongIntView;
    volume->setConnectionName(QStringLiteral("Mixer.Volume"));
    volume->setToolTipConnectionID(QStringLiteral("ViewsDemo.VolumeTip"));
    column.add(captionRow(QStringLiteral("Volume"), volume, 40));
    auto* muted = new Kel_BoolTextView;
    muted->setConnectionName(QStringLiteral("Mixer.Muted"));
    column.add(captionRow(QStringLiteral("Muted"), muted, 200));
    auto* missing = new Kel_StringView;
    missing->SetConnectionID(QStringLiteral("Demo.NotPublished"));
    column.add(captionRow(QStringLiteral("Not published"), missing, 200));

    column.y += kRowHeight;
    column.heading(QStringLiteral("Clips, one row per element (Clips.name[i])"));
    for (long i = 0; i < demo.clips.rowCount(); ++i)
        column.add(clipRow(QStringLiteral("[%1]").arg(i), QStringLiteral("Clip %1").arg(i)));

    column.y += kRowHeight;
    column.heading(QStringLiteral("Clips, one row view drawn for every row (Clips.name[$Row])"));
    column.add(new RepeatedRowsView(clipRow(QStringLiteral("[$Row]"), QStringLiteral("Row")), &models.clipRow,
                                    int(demo.clips.rowCount())));

    // Taller than the page, so that the bridge scrolls.
    column.y += 12 * kRowHeight;
    column.add(new CaptionView(QStringLiteral("End of the view tree: the content is taller than the panel."), 500,
                               false));
    panel->setSize(QSize(640, column.y + 8));
    panel->setMinSize(panel->getSize());

    auto* bridge = new Kel_BridgeQScrollArea(page);
    bridge->setObjectName(QStringLiteral("ViewsBridge"));
    bridge->setBridgeBackgroundColor(Qt::white);
    // Ledger stripes, one tile per two rows, aligned with the rows.
    QPixmap stripes(8, 2 * kRowHeight);
    stripes.fill(Qt::white);
    {
        // Rows start 8 pixels down: every other one, [38, 68) modulo the tile.
        QPainter painter(&stripes);
        painter.fillRect(0, 8 + kRowHeight, 8, kRowHeight - 8, QColor(236, 242, 248));
        painter.fillRect(0, 0, 8, 8, QColor(236, 242, 248));
    }
    bridge->setBridgeBackgroundPixmap(stripes, true);
    bridge->setChild(panel);
    layout->addWidget(bridge, 1);

    auto env = Mv_ConnectionEnvironment::create(Mv_ConnectionEnvironment::blankEnvironment());
    env->set(QStringLiteral("Row"), QStringLiteral("ViewsDemo.ClipRow"));
    Kel_ConnectionUtils::recursiveConnect(page, env);
    return page;
}

const DemoPanelRegistrar registrar({QStringLiteral("Views"), 400, &createViewsPanel, nullptr});

} // namespace
