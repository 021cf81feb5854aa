// "Clip bin": a list view over a few hundred demo clips. One row view, a
// stack of value views bound through "$Row", draws every row; the published
// selection drives a label, and dragged rows land in a drop area that lists
// what it received.
#include "DemoPanel.h"

#include "Kel_BoolTextView.h"
#include "Kel_BoundProperty.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_HStackView.h"
#include "Kel_Label.h"
#include "Kel_ListView.h"
#include "Kel_ListViewWidget.h"
#include "Kel_TextView.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QApplication>
#include <QDomDocument>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace {

const int kRowHeight = 22;
const int kClipCount = 300;

// The panel's own models: the clips (name, duration, kind, thumbnail colour)
// and the text that counts the selected ones.
struct ClipBinModels
{
    ClipBinModels()
    {
        clips.addField<QString>(QStringLiteral("name"));
        clips.addField<QString>(QStringLiteral("duration"));
        clips.addField<QString>(QStringLiteral("kind"));
        clips.addField<QColor>(QStringLiteral("color"));
        const QStringList kinds{QStringLiteral("video"), QStringLiteral("audio"), QStringLiteral("title"),
                                QStringLiteral("still")};
        const QStringList subjects{QStringLiteral("Harbour"), QStringLiteral("Interview"), QStringLiteral("Skyline"),
                                   QStringLiteral("Crowd"), QStringLiteral("Forest"), QStringLiteral("Studio")};
        clips.beginUpdate();
        clips.insertRows(0, kClipCount);
        for (int i = 0; i < kClipCount; ++i) {
            const int frames = 50 + (i * 7919) % 9000; // 25 fps
            clips.setValue<QString>(i, QStringLiteral("name"),
                                    QStringLiteral("%1 %2").arg(subjects[i % subjects.size()]).arg(i + 1, 3, 10, QLatin1Char('0')));
            clips.setValue<QString>(i, QStringLiteral("duration"),
                                    QStringLiteral("%1:%2:%3")
                                        .arg(frames / 1500, 2, 10, QLatin1Char('0'))
                                        .arg(frames / 25 % 60, 2, 10, QLatin1Char('0'))
                                        .arg(frames % 25, 2, 10, QLatin1Char('0')));
            clips.setValue<QString>(i, QStringLiteral("kind"), kinds[(i * 3 + i / 5) % kinds.size()]);
            clips.setValue<QColor>(i, QStringLiteral("color"), QColor::fromHsv((i * 37) % 360, 140, 210));
        }
        clips.endUpdate();
        clips.Publish();
        selectionText.Publish();

        // The list publishes its selection under "ClipBin.Clips:SelectionList" once connected.
        selection.SetConnectionName(QStringLiteral("ClipBin.Clips:SelectionList"));
        selection.setReceiveMessageCB([this](const Mv_MessageInterface&) {
            const int count = selection.value().size();
            selectionText.setValue(count == 1 ? QStringLiteral("1 clip selected")
                                              : QStringLiteral("%1 clips selected").arg(count));
        });
        selection.connect(Mv_ConnectionEnvironment::blankEnvironment());
    }
    static ClipBinModels& instance()
    {
        static ClipBinModels models;
        return models;
    }

    Mve_RecordArray clips{QStringLiteral("ClipBin.Clips")};
    Mve_SimpleValue<QString> selectionText{QStringLiteral("No clip selected"), QStringLiteral("ClipBin.SelectionText")};
    Mvt_SimpleValue<SortedValueList<long>>::Listener selection;
};

// The clip's thumbnail: a swatch in the clip's colour.
class SwatchView : public Kel_ViewBase
{
public:
    SwatchView()
    {
        mColor.setSpec(QStringLiteral("ClipBin.Clips.color[$Row]"));
        setSize(QSize(36, kRowHeight));
    }
    SwatchView(const SwatchView& other) : Kel_ViewBase(other) { mColor.setSpec(other.mColor.spec()); }
    Kel_ViewInterface* clone() override { return new SwatchView(*this); }
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> env) override
    {
        mColor.connect(env);
        Kel_ViewBase::makeConnections(env);
    }
    void drawContents(QPainter* painter, const QRect&) override
    {
        QColor color;
        if (!painter || !mColor->get(color))
            return;
        painter->fillRect(getLocalDrawingRect().adjusted(4, 3, -4, -3), color);
    }

private:
    Kel_BoundProperty<Mvt_SimpleValue<QColor>::Listener> mColor;
};

// One row: mark, swatch, name, duration, kind. Rows can be dragged: each
// gives a <Clip> element and a picture of itself.
class ClipRowView : public Kel_HStackView
{
public:
    ClipRowView()
    {
        auto* mark = new Kel_BoolTextView;
        mark->setConnectionName(QStringLiteral("ClipBin.Clips.isSelected[$Row]"));
        mark->setTrueText(QStringLiteral("\u2713"));
        mark->setFalseText(QString());
        mark->setSize(QSize(18, kRowHeight));
        AddSubView(mark);
        AddSubView(new SwatchView);
        add(QStringLiteral("name"), 200, Qt::AlignLeft);
        add(QStringLiteral("duration"), 90, Qt::AlignRight);
        add(QStringLiteral("kind"), 80, Qt::AlignLeft);
        mName.setSpec(QStringLiteral("ClipBin.Clips.name[$Row]"));
        mDuration.setSpec(QStringLiteral("ClipBin.Clips.duration[$Row]"));
        mKind.setSpec(QStringLiteral("ClipBin.Clips.kind[$Row]"));
    }
    ClipRowView(const ClipRowView& other) : Kel_HStackView(other)
    {
        mName.setSpec(other.mName.spec());
        mDuration.setSpec(other.mDuration.spec());
        mKind.setSpec(other.mKind.spec());
    }
    Kel_ViewInterface* clone() override { return new ClipRowView(*this); }
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> env) override
    {
        Kel_HStackView::makeConnections(env);
        Kel_BoundPropertyBase::connectAll(env, {&mName, &mDuration, &mKind});
    }
    bool canDrag(const QPoint&) override { return true; }
    QDomElement getDragData(QPoint, QDomDocument& document, QPixmap& pixmap) override
    {
        QDomElement clip = document.createElement(QStringLiteral("Clip"));
        clip.setAttribute(QStringLiteral("name"), mName->value());
        clip.setAttribute(QStringLiteral("duration"), mDuration->value());
        clip.setAttribute(QStringLiteral("kind"), mKind->value());
        pixmap = QPixmap(getSize());
        pixmap.fill(QColor(240, 244, 250));
        QPainter painter(&pixmap);
        drawContents(&painter, getLocalDrawingRect());
        return clip;
    }

private:
    void add(const QString& field, int width, Qt::Alignment alignment)
    {
        auto* text = new Kel_TextView;
        text->setName(field);
        text->SetNameConnection(QStringLiteral("ClipBin.Clips.%1[$Row]").arg(field));
        text->setAlignment(alignment | Qt::AlignVCenter);
        text->setSize(QSize(width, kRowHeight));
        AddSubView(text);
    }

    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mName;
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mDuration;
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mKind;
};

// Lists the clips of every list drag dropped on it.
class DropArea : public QListWidget
{
public:
    explicit DropArea(QWidget* parent) : QListWidget(parent)
    {
        setObjectName(QStringLiteral("ClipDropArea"));
        setAcceptDrops(true);
        setDragDropMode(QAbstractItemView::DropOnly);
        addItem(QStringLiteral("Drop clips here"));
    }

protected:
    static bool isClipList(const QMimeData* data)
    {
        return data && data->hasText() && data->text().contains(QStringLiteral("<mobIDDragObjectList"));
    }
    void dragEnterEvent(QDragEnterEvent* event) override
    {
        if (isClipList(event->mimeData()))
            event->acceptProposedAction();
    }
    void dragMoveEvent(QDragMoveEvent* event) override
    {
        if (isClipList(event->mimeData()))
            event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override
    {
        QDomDocument document;
        if (!isClipList(event->mimeData()) || !document.setContent(event->mimeData()->text()))
            return;
        clear();
        const QDomElement root = document.documentElement();
        for (QDomElement clip = root.firstChildElement(QStringLiteral("Clip")); !clip.isNull();
             clip = clip.nextSiblingElement(QStringLiteral("Clip"))) {
            addItem(QStringLiteral("%1  (%2, %3)")
                        .arg(clip.attribute(QStringLiteral("name")), clip.attribute(QStringLiteral("duration")),
                             clip.attribute(QStringLiteral("kind"))));
        }
        event->acceptProposedAction();
    }
};

QWidget* createClipBinPanel(QWidget* parent)
{
    ClipBinModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(new QLabel(QStringLiteral(
        "A list view over %1 clips: click, Control-click and Shift-click to select, arrow and page keys to move, "
        "Control+A to select all. Drag the selection onto the drop area.").arg(kClipCount), page));

    auto* count = new Kel_Label(page, "ClipBinSelectionLabel");
    count->setTextConnectionSpec("ClipBin.SelectionText");
    layout->addWidget(count);

    auto* row = new QHBoxLayout;
    auto* bin = new Kel_ListViewWidget(page, "ClipBin");
    Kel_ListView* list = bin->listView();
    list->SetRowView(new ClipRowView);
    list->SetListConnectionName(QStringLiteral("ClipBin.Clips"));
    list->setSelectionMode(Kel_ListView::Extended);
    bin->setMinimumWidth(460);
    row->addWidget(bin, 3);
    row->addWidget(new DropArea(page), 2);
    layout->addLayout(row, 1);

    Kel_ConnectionUtils::recursiveConnect(page, Mv_ConnectionEnvironment::blankEnvironment());
    return page;
}

// Selects three clips with a click and a Shift-click, as a user would.
void selectThreeClips(QWidget* page)
{
    auto* bin = page->findChild<Kel_ListViewWidget*>(QStringLiteral("ClipBin"));
    if (!bin)
        return;
    QWidget* content = bin->viewportWidget();
    const auto click = [content](int row, Qt::KeyboardModifiers modifiers) {
        const QPoint at(60, row * kRowHeight + 5);
        for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, at, content->mapToGlobal(at), Qt::LeftButton,
                              type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, modifiers);
            QApplication::sendEvent(content, &event);
        }
    };
    click(2, Qt::NoModifier);
    click(4, Qt::ShiftModifier);
}

const DemoPanelRegistrar registrar({QStringLiteral("Clip bin"), 450, &createClipBinPanel, &selectThreeClips});

} // namespace
