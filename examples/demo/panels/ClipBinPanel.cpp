// "Clip bin": a columned list over a few hundred demo clips with a column
// header above it. The columns are described once, in a column data model;
// the header and the list both follow it, so resizing, reordering, sorting,
// hiding and showing columns in the header change the list at once. The
// published selection drives a label, and selected clips dragged by their
// name land in a drop area that lists them.
#include "DemoPanel.h"

#include "Kel_BridgeQScrollArea.h"
#include "Kel_BoundProperty.h"
#include "Kel_ColumnDataModel.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_Header.h"
#include "Kel_Label.h"
#include "Kel_ListWithColumns.h"
#include "Kel_LongIntView.h"
#include "Kel_TextView.h"
#include "Mve_Action.h"
#include "Mve_RecordArray.h"
#include "Mve_SimpleValue.h"

#include <QApplication>
#include <QDomDocument>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMimeData>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <vector>

namespace {

const int kRowHeight = 22;
const int kClipCount = 300;

// The kinds of cells the columns can ask for.
enum CellType : int { kTextCell = 0, kRightTextCell = 1, kNumberCell = 2, kSwatchCell = 3, kClipNameCell = 4 };

// One clip as the sort reads and writes it.
struct Clip
{
    QString name;
    QString duration;
    long frames = 0;
    QString kind;
    QColor color;
    long number = 0;
    QString notes;
};

// The panel's own models: the clips, the column data model over them, the
// text that counts the selected clips and the action that shows every column.
struct ClipBinModels
{
    ClipBinModels()
    {
        clips.addField<QString>(QStringLiteral("name"));
        clips.addField<QString>(QStringLiteral("duration"));
        clips.addField<long>(QStringLiteral("frames"));
        clips.addField<QString>(QStringLiteral("kind"));
        clips.addField<QColor>(QStringLiteral("color"));
        clips.addField<long>(QStringLiteral("number"));
        clips.addField<QString>(QStringLiteral("notes"));
        const QStringList kinds{QStringLiteral("video"), QStringLiteral("audio"), QStringLiteral("title"),
                                QStringLiteral("still")};
        const QStringList subjects{QStringLiteral("Harbour"), QStringLiteral("Interview"), QStringLiteral("Skyline"),
                                   QStringLiteral("Crowd"), QStringLiteral("Forest"), QStringLiteral("Studio")};
        std::vector<Clip> rows(kClipCount);
        for (int i = 0; i < kClipCount; ++i) {
            Clip& c = rows[size_t(i)];
            c.frames = 50 + (i * 7919) % 9000; // 25 fps
            c.name = QStringLiteral("%1 %2").arg(subjects[i % subjects.size()]).arg(i + 1, 3, 10, QLatin1Char('0'));
            c.duration = QStringLiteral("%1:%2:%3")
                             .arg(c.frames / 1500, 2, 10, QLatin1Char('0'))
                             .arg(c.frames / 25 % 60, 2, 10, QLatin1Char('0'))
                             .arg(c.frames % 25, 2, 10, QLatin1Char('0'));
            c.kind = kinds[(i * 3 + i / 5) % kinds.size()];
            c.color = QColor::fromHsv((i * 37) % 360, 140, 210);
            c.number = i + 1;
            c.notes = QStringLiteral("take %1").arg(1 + i % 7);
        }
        clips.beginUpdate();
        clips.insertRows(0, kClipCount);
        writeClips(rows);
        clips.endUpdate();
        clips.Publish();
        selectionText.Publish();

        addColumn(QStringLiteral("color"), QStringLiteral("Colour"), 56, 24, kSwatchCell);
        addColumn(QStringLiteral("name"), QStringLiteral("Name"), 190, 80, kClipNameCell);
        addColumn(QStringLiteral("duration"), QStringLiteral("Duration"), 100, 60, kRightTextCell);
        addColumn(QStringLiteral("kind"), QStringLiteral("Kind"), 80, 40, kTextCell);
        addColumn(QStringLiteral("number"), QStringLiteral("Clip #"), 60, 40, kNumberCell, false);
        columns.setCanHide(columns.columnIndex(QStringLiteral("name")), false);
        columns.setSortFunction([this](long column, bool ascending) { return sortClips(column, ascending); });
        columns.setAddColumnFunction([this](long position) {
            addColumn(QStringLiteral("notes"), QStringLiteral("Notes %1").arg(++addedColumns), 110, 40, kTextCell,
                      true, position);
        });
        columns.publish();
        showAll.Publish();

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

    // A column showing field of each clip; its cells find the field through $Field.
    void addColumn(const QString& field, const QString& label, long width, long minWidth, CellType type,
                   bool visible = true, long position = -1)
    {
        Kel_ColumnDataModel::Column column;
        column.identifier = field;
        column.label = label;
        column.width = width;
        column.minWidth = minWidth;
        column.viewType = type;
        column.readOnly = true;
        column.connectionEnvironmentVars = QStringLiteral("Field=ClipBin.Clips.") + field;
        column.visible = visible;
        columns.addColumn(column, position);
    }

    std::vector<Clip> readClips() const
    {
        std::vector<Clip> rows(size_t(clips.rowCount()));
        for (long i = 0; i < clips.rowCount(); ++i) {
            Clip& c = rows[size_t(i)];
            c.name = clips.value<QString>(i, QStringLiteral("name"));
            c.duration = clips.value<QString>(i, QStringLiteral("duration"));
            c.frames = clips.value<long>(i, QStringLiteral("frames"));
            c.kind = clips.value<QString>(i, QStringLiteral("kind"));
            c.color = clips.value<QColor>(i, QStringLiteral("color"));
            c.number = clips.value<long>(i, QStringLiteral("number"));
            c.notes = clips.value<QString>(i, QStringLiteral("notes"));
        }
        return rows;
    }
    void writeClips(const std::vector<Clip>& rows)
    {
        for (long i = 0; i < long(rows.size()); ++i) {
            const Clip& c = rows[size_t(i)];
            clips.setValue<QString>(i, QStringLiteral("name"), c.name);
            clips.setValue<QString>(i, QStringLiteral("duration"), c.duration);
            clips.setValue<long>(i, QStringLiteral("frames"), c.frames);
            clips.setValue<QString>(i, QStringLiteral("kind"), c.kind);
            clips.setValue<QColor>(i, QStringLiteral("color"), c.color);
            clips.setValue<long>(i, QStringLiteral("number"), c.number);
            clips.setValue<QString>(i, QStringLiteral("notes"), c.notes);
        }
    }

    // Really reorders the clip rows by the column's field; equal keys keep
    // their clip numbers' order, so sorting twice gives the same rows.
    bool sortClips(long column, bool ascending)
    {
        const QString field = columns.column(column).identifier;
        std::vector<Clip> rows = readClips();
        // The field is looked up once, not in every comparison.
        bool (*less)(const Clip&, const Clip&) = [](const Clip& a, const Clip& b) { return a.number < b.number; };
        if (field == QLatin1String("name"))
            less = [](const Clip& a, const Clip& b) { return a.name < b.name; };
        else if (field == QLatin1String("duration"))
            less = [](const Clip& a, const Clip& b) { return a.frames < b.frames; };
        else if (field == QLatin1String("kind"))
            less = [](const Clip& a, const Clip& b) { return a.kind < b.kind; };
        else if (field == QLatin1String("color"))
            less = [](const Clip& a, const Clip& b) { return a.color.hsvHue() < b.color.hsvHue(); };
        else if (field == QLatin1String("notes"))
            less = [](const Clip& a, const Clip& b) { return a.notes < b.notes; };
        std::sort(rows.begin(), rows.end(), [&](const Clip& a, const Clip& b) {
            if (less(a, b) || less(b, a))
                return ascending ? less(a, b) : less(b, a);
            return a.number < b.number;
        });
        clips.beginUpdate();
        writeClips(rows);
        clips.endUpdate();
        return true;
    }

    Mve_RecordArray clips{QStringLiteral("ClipBin.Clips")};
    Kel_ColumnDataModel columns{QStringLiteral("ClipBin.Columns")};
    int addedColumns = 0;
    Mve_Action<void()> showAll{[this] {
                                   for (long column : columns.hiddenColumns())
                                       columns.showColumn(column);
                               },
                               QStringLiteral("ClipBin.ShowAllColumns")};
    Mve_SimpleValue<QString> selectionText{QStringLiteral("No clip selected"), QStringLiteral("ClipBin.SelectionText")};
    Mvt_SimpleValue<SortedValueList<long>>::Listener selection;
};

// A swatch in the colour the column's field gives.
class SwatchView : public Kel_ViewBase
{
public:
    SwatchView() { mColor.setSpec(QStringLiteral("$Field[$Row]")); }
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

// The name cell: a drag that starts on it carries the selected clips, each
// as a <Clip> element with a picture of its name.
class ClipNameView : public Kel_TextView
{
public:
    ClipNameView() { bindRowFields(); }
    ClipNameView(const ClipNameView& other) : Kel_TextView(other) { bindRowFields(); }
    Kel_ViewInterface* clone() override { return new ClipNameView(*this); }
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> env) override
    {
        Kel_TextView::makeConnections(env);
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
    void bindRowFields()
    {
        mName.setSpec(QStringLiteral("ClipBin.Clips.name[$Row]"));
        mDuration.setSpec(QStringLiteral("ClipBin.Clips.duration[$Row]"));
        mKind.setSpec(QStringLiteral("ClipBin.Clips.kind[$Row]"));
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

// The cell prototypes, one per cell type; each shows "$Field[$Row]".
Kel_ListWithColumns::ViewTypeMap cellTypes()
{
    Kel_ListWithColumns::ViewTypeMap types;
    for (CellType type : {kTextCell, kRightTextCell}) {
        auto text = std::make_shared<Kel_TextView>();
        text->SetNameConnection(QStringLiteral("$Field[$Row]"));
        text->setAlignment((type == kTextCell ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        types[type] = text;
    }
    auto number = std::make_shared<Kel_LongIntView>();
    number->setConnectionName(QStringLiteral("$Field[$Row]"));
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    types[kNumberCell] = number;
    types[kSwatchCell] = std::make_shared<SwatchView>();
    auto name = std::make_shared<ClipNameView>();
    name->SetNameConnection(QStringLiteral("$Field[$Row]"));
    name->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    types[kClipNameCell] = name;
    return types;
}

QWidget* createClipBinPanel(QWidget* parent)
{
    ClipBinModels::instance();
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    auto* intro = new QLabel(QStringLiteral(
        "A columned list over %1 clips. Drag a divider in the header to resize a column, drag a label to move "
        "it, click a label to sort (again to reverse), right-click for hiding, showing and adding columns. "
        "Click, Control-click and Shift-click select rows; drag selected clips by their name to the drop area. "
        "Without a mouse: Tab to the header, Left and Right choose a column, Space sorts by it, Ctrl+Left and "
        "Ctrl+Right move it, Ctrl+Shift+Left and Ctrl+Shift+Right resize it, the Menu key or Shift+F10 opens "
        "its menu; Tab again to the clips, where the arrows, Shift+arrows and Page keys select.")
                                 .arg(kClipCount),
                             page);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    auto* count = new Kel_Label(page, "ClipBinSelectionLabel");
    count->setTextConnectionSpec("ClipBin.SelectionText");
    layout->addWidget(count);

    // Made before the list, so that Tab reaches the header first.
    auto* header = new Kel_Header(page, "ClipBinHeader");
    header->setAccessibleName(QStringLiteral("Clip columns"));
    header->setColumnBaseConnectionName(QStringLiteral("ClipBin.Columns"));
    header->setColumnSelectionConnectionSpec("ClipBin.ShowAllColumns");

    auto* bin = new Kel_BridgeQScrollArea(page);
    bin->setObjectName(QStringLiteral("ClipBin"));
    bin->setAccessibleName(QStringLiteral("Clips"));
    auto* list = new Kel_ListWithColumns;
    bin->setChild(list);
    list->SetViewTypeMap(cellTypes());
    list->SetRowHeight(kRowHeight);
    list->SetColumnDataModel(QStringLiteral("ClipBin.Columns"));
    list->SetListConnectionName(QStringLiteral("ClipBin.Clips"));
    list->setSelectionMode(Kel_ListView::Extended);
    bin->setMinimumWidth(460);

    // The labels start where the list's content does and scroll with it.
    header->setLeftMargin(bin->frameWidth());
    QObject::connect(bin->horizontalScrollBar(), &QScrollBar::valueChanged,
                     header, [header](int x) { header->setOffset(x, false); });

    auto* column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(header);
    column->addWidget(bin, 1);
    auto* row = new QHBoxLayout;
    row->addLayout(column, 3);
    row->addWidget(new DropArea(page), 1);
    layout->addLayout(row, 1);

    Kel_ConnectionUtils::recursiveConnect(page, Mv_ConnectionEnvironment::blankEnvironment());
    return page;
}

// A click at a widget's point, as a user would.
void click(QWidget* widget, const QPoint& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    for (QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton,
                          type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, modifiers);
        QApplication::sendEvent(widget, &event);
    }
}

// Sorts the clips by duration with a click on its label, then selects three
// clips with a click and a Shift-click.
void sortAndSelectThreeClips(QWidget* page)
{
    auto* header = page->findChild<Kel_Header*>(QStringLiteral("ClipBinHeader"));
    auto* bin = page->findChild<Kel_BridgeQScrollArea*>(QStringLiteral("ClipBin"));
    if (!header || !bin)
        return;
    click(header, QPoint(header->centerOfColumn(2), header->height() / 2));
    QWidget* content = bin->viewportWidget();
    click(content, QPoint(60, 2 * kRowHeight + 5));
    click(content, QPoint(60, 4 * kRowHeight + 5), Qt::ShiftModifier);
}

const DemoPanelRegistrar registrar({QStringLiteral("Clip bin"), 450, &createClipBinPanel, &sortAndSelectThreeClips});

} // namespace
