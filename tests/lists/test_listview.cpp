// The list view's model handling, painting, names and its form widget.
#include "ListTestSupport.h"

#include "AssertRecorder.h"

#include "Kel_ListViewWidget.h"
#include "Kel_ModelInspector.h"
#include "Kel_QtWidgetFactoryRegistry.h"
#include "Kel_FactoryEntryInterface.h"

#include <QImage>
#include <QPaintEvent>
#include <QPainter>

using namespace listtest;

namespace {

// A parent that also logs the rows its child inserts and deletes.
struct RowRecordingParent : RecordingParent
{
    void childInsertedRow(Kel_ViewInterface*, int y, int h) override { log << QStringLiteral("inserted %1 %2").arg(y).arg(h); }
    void childDeletedRow(Kel_ViewInterface*, int y, int h) override { log << QStringLiteral("deleted %1 %2").arg(y).arg(h); }
};

// A list on "ListTest.Five" (five rows) under a recording parent, no widget.
class ElementChanges : public ::testing::Test
{
protected:
    void SetUp() override
    {
        array.addField<QString>(QStringLiteral("name"));
        array.Publish();
        array.insertRows(0, 5);
        list.setParent(&parent);
        list.SetRowView(new ClipRow(QStringLiteral("ListTest.Five")));
        list.SetListConnectionName(QStringLiteral("ListTest.Five"));
        list.setSelectionMode(Kel_ListView::Multi);
        list.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        parent.log.clear();
    }
    QList<long> selection() const
    {
        QList<long> rows;
        for (long r : list.getSelectedList()->getValue())
            rows << r;
        return rows;
    }
    void select(std::initializer_list<long> rows)
    {
        list.SetSelected(-1, false, Qt::NoModifier);
        for (long r : rows)
            list.SetSelected(r, false, Qt::ControlModifier);
        parent.log.clear();
    }

    Mve_RecordArray array{QStringLiteral("ListTest.Five")};
    RowRecordingParent parent;
    Kel_ListView list;
};

TEST_F(ElementChanges, RemovingTheSelectedLastRowsEmptiesTheSelectionAndReportsOneDeletion)
{
    select({3, 4});
    array.removeRows(3, 2);
    EXPECT_TRUE(selection().isEmpty());
    EXPECT_EQ(list.GetNumItems(), 3);
    EXPECT_EQ(parent.log.filter(QStringLiteral("deleted")), (QStringList{"deleted 60 40"}));
    EXPECT_EQ(list.getHeight(), 3 * kRowHeight);
}

TEST_F(ElementChanges, SelectedRowsStayByPositionUnlessTheyFallOffTheEnd)
{
    select({1, 2});
    array.removeRows(4); // after the selection
    EXPECT_EQ(selection(), (QList<long>{1, 2}));
    array.removeRows(0); // before it: the same positions stay selected
    EXPECT_EQ(selection(), (QList<long>{1, 2}));
    EXPECT_EQ(parent.log.filter(QStringLiteral("deleted")), (QStringList{"deleted 80 20", "deleted 0 20"}));
    array.removeRows(0);
    EXPECT_EQ(selection(), (QList<long>{1}));
}

TEST_F(ElementChanges, InsertionsAndReplacementsReportRowsAndRepaint)
{
    array.insertRows(2, 3);
    EXPECT_EQ(list.GetNumItems(), 8);
    EXPECT_EQ(parent.log.filter(QStringLiteral("inserted")), (QStringList{"inserted 40 60"}));
    parent.log.clear();
    array.beginUpdate();
    array.setValue<QString>(1, QStringLiteral("name"), QStringLiteral("x"));
    array.endUpdate(); // everything replaced, same size
    EXPECT_TRUE(parent.log.filter(QStringLiteral("inserted")).isEmpty());
    EXPECT_TRUE(parent.log.filter(QStringLiteral("deleted")).isEmpty());
    EXPECT_TRUE(parent.log.contains(QStringLiteral("bits ListView 0,0 100x160"))) << parent.log.join(QStringLiteral("; ")).toStdString();
}

TEST_F(ElementChanges, AChangedRecordRepaintsItsRowWhereverTheRowViewIs)
{
    list.SetSelected(1, false, Qt::NoModifier);
    parent.log.clear();
    array.setValue<QString>(3, QStringLiteral("name"), QStringLiteral("renamed"));
    EXPECT_EQ(parent.log, (QStringList{"bits ListView 0,60 100x20"}));
    array.moveRow(0, 2);
    EXPECT_TRUE(parent.log.contains(QStringLiteral("bits ListView 0,0 100x60")))
        << parent.log.join(QStringLiteral("; ")).toStdString();
}

TEST_F(ElementChanges, ConnectingOrLosingTheArrayClearsTheSelection)
{
    select({0, 2});
    array.UnPublish();
    EXPECT_EQ(list.GetNumItems(), 0);
    EXPECT_TRUE(selection().isEmpty());
    array.Publish();
    EXPECT_EQ(list.GetNumItems(), 5);
    EXPECT_EQ(list.getLastSelection(), -1);
}

TEST_F(ElementChanges, AnotherListOnTheSameArrayNeedsASelectionNameOfItsOwn)
{
    DebugMessageCollector messages;
    Kel_ListView second;
    second.SetListConnectionName(QStringLiteral("ListTest.Five"));
    second.setSelectionMode(Kel_ListView::Single);
    second.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_FALSE(second.getSelectedList()->isPublished());
    EXPECT_TRUE(list.getSelectedList()->isPublished());
    EXPECT_TRUE(messages.messages().filter(QStringLiteral("ListTest.Five:SelectionList")).size() >= 1);
    // Its selection still works; it is only not reachable by name.
    second.SetSelected(2, false, Qt::NoModifier);
    EXPECT_TRUE(second.IsRowSelected(2));
    EXPECT_FALSE(list.IsRowSelected(2));

    second.SetSelectionConnectionName(QStringLiteral("ListTest.Five.Second"));
    second.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(second.getSelectionListConnectionName(), QStringLiteral("ListTest.Five.Second:SelectionList"));
    EXPECT_EQ(second.getIsSelectedConnectionName(), QStringLiteral("ListTest.Five.Second.isSelected"));
    Mvt_SimpleValue<long>::Listener anchor(QStringLiteral("ListTest.Five.Second:LastSelection"));
    anchor.connect(Mv_ConnectionEnvironment::blankEnvironment());
    Mvt_Container_API<long, Mvt_SimpleValue<bool>>::Listener firstSelected(QStringLiteral("ListTest.Five.isSelected"));
    firstSelected.connect(Mv_ConnectionEnvironment::blankEnvironment());
    second.SetSelected(4, false, Qt::NoModifier);
    EXPECT_EQ(anchor.value(-7), 4);
    EXPECT_FALSE(firstSelected.element<bool>(4, true));
    EXPECT_NE(second.getCurrentRowConnectionName(), list.getCurrentRowConnectionName());
}

TEST_F(ElementChanges, ACloneIsUnconnectedWithARowIndexAndRowViewOfItsOwn)
{
    list.SetSelected(2, false, Qt::NoModifier);
    std::unique_ptr<Kel_ListView> copy(dynamic_cast<Kel_ListView*>(list.clone()));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->getCurrentCell(), -1);
    EXPECT_NE(copy->getCurrentRowConnectionName(), list.getCurrentRowConnectionName());
    EXPECT_TRUE(dynamic_cast<ClipRow*>(copy->getRowView()));
    EXPECT_NE(copy->getRowView(), list.getRowView());
    EXPECT_EQ(copy->GetNumItems(), 0);
    EXPECT_EQ(copy->GetRowSelectionListSize(), 0);
    copy->SetSelectionConnectionName(QStringLiteral("ListTest.Five.Copy"));
    copy->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(copy->GetNumItems(), 5);
    EXPECT_EQ(copy->getSelectionMode(), Kel_ListView::Multi);
    copy->SetSelected(3, false, Qt::NoModifier);
    EXPECT_EQ(copy->getRowView()->getOrigin(), QPoint(0, 3 * kRowHeight));
    EXPECT_EQ(list.getCurrentCell(), 2);
}

TEST_F(ElementChanges, TheRowsFollowTheWidthOfTheVisibleArea)
{
    list.adjustToPortSize(QSize(300, 400));
    EXPECT_EQ(list.getRowView()->getWidth(), 300);
    EXPECT_EQ(list.getSize(), QSize(300, 400));
    EXPECT_EQ(parent.log, (QStringList{"size ListView 300x400 from 100x100"}));
    list.setCellHeight(100); // five rows now outgrow the area
    EXPECT_EQ(list.getHeight(), 500);
    EXPECT_EQ(list.getMinSize(), QSize(300, 500));
}

// ---------------------------------------------------------------------------
// Painting

// Counts paints of a widget.
struct PaintCounter : QObject
{
    int paints = 0;
    QRegion painted;
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            painted |= static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
};

// A text view that notes the font it is given and that it paints in.
class FontProbe : public Kel_TextView
{
public:
    explicit FontProbe(QList<QFont>* log) : mLog(log) {}
    FontProbe(const FontProbe& other) : Kel_TextView(other), mLog(other.mLog) {}
    Kel_ViewInterface* clone() override { return new FontProbe(*this); }
    void drawContents(QPainter* painter, const QRect& rect) override
    {
        *mLog << getFont();
        Kel_TextView::drawContents(painter, rect);
    }

private:
    QList<QFont>* mLog;
};

class Painting : public ListFixture
{
};

TEST_F(Painting, OnePaintOfFiftyRowsAsksForNoFurtherPaint)
{
    build(200, Kel_ListView::Single, 50);
    // Three cells per row, all following $Row.
    auto* cells = new Kel_HStackView;
    for (int i = 0; i < 3; ++i) {
        auto* text = new Kel_TextView;
        text->SetNameConnection(QStringLiteral("ListTest.Clips.name[$Row]"));
        text->setSize(QSize(60, kRowHeight));
        cells->AddSubView(text);
    }
    list->SetRowView(cells);
    list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    click(7);
    PaintCounter counter;
    content()->installEventFilter(&counter);
    QTest::qWait(50);
    counter.paints = 0;
    content()->repaint();
    EXPECT_EQ(counter.paints, 1);
    QTest::qWait(100);
    EXPECT_EQ(counter.paints, 1);
    EXPECT_EQ(list->getCurrentCell(), 7);
    EXPECT_EQ(list->getRowView()->getOrigin(), QPoint(0, 7 * kRowHeight));
}

TEST_F(Painting, ASelectionChangePaintsTheRowsItChangedAtOnce)
{
    build(20, Kel_ListView::Single, 10);
    click(3);
    QTest::qWait(50);
    PaintCounter counter;
    content()->installEventFilter(&counter);
    key(Qt::Key_Down); // no event loop turn: painted during the key press
    EXPECT_EQ(counter.paints, 1);
    EXPECT_EQ(counter.painted.boundingRect(), QRect(0, 3 * kRowHeight, content()->width(), 2 * kRowHeight));
    QTest::qWait(50);
    EXPECT_EQ(counter.paints, 1);
}

TEST_F(Painting, RowsAreShadedSelectedAndFilledToTheListsWidth)
{
    build(6, Kel_ListView::Multi, 6);
    click(2);
    QImage image(200, 6 * kRowHeight, QImage::Format_ARGB32);
    image.fill(Qt::black);
    {
        QPainter painter(&image);
        list->drawContents(&painter, image.rect());
    }
    const int x = 190; // beyond the 100-pixel row view
    EXPECT_EQ(image.pixelColor(x, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(x, kRowHeight + 5), QColor(229, 240, 247));
    EXPECT_EQ(image.pixelColor(x, 2 * kRowHeight + 5), QColor(100, 136, 170));
    list->enableLedgerShading(false);
    list->SetBackgroundColor(QColor(10, 20, 30));
    {
        QPainter painter(&image);
        list->drawContents(&painter, image.rect());
    }
    EXPECT_EQ(image.pixelColor(x, kRowHeight + 5), QColor(10, 20, 30));
}

TEST_F(Painting, TheListsFontReachesTheCellTextUnlessACellHasItsOwn)
{
    build(3, Kel_ListView::Single);
    QList<QFont> fonts;
    auto* cells = new Kel_HStackView;
    auto* plain = new FontProbe(&fonts);
    plain->setSize(QSize(50, kRowHeight));
    auto* own = new FontProbe(&fonts);
    own->setSize(QSize(50, kRowHeight));
    QFont ownFont = QApplication::font();
    ownFont.setPointSize(5);
    own->setFont(ownFont);
    cells->AddSubView(plain);
    cells->AddSubView(own);
    list->SetRowView(cells);
    QFont listFont = QApplication::font();
    listFont.setPointSize(17);
    list->SetFont(listFont);
    QImage image(200, kRowHeight, QImage::Format_ARGB32);
    {
        QPainter painter(&image);
        list->drawContents(&painter, QRect(0, 0, 200, kRowHeight - 1));
    }
    ASSERT_EQ(fonts.size(), 2);
    EXPECT_EQ(fonts[0].pointSize(), 17);
    EXPECT_EQ(fonts[1].pointSize(), 5);
    EXPECT_NE(plain->getFont().pointSize(), 17); // outside the list's painting
}

TEST_F(Painting, ANullPainterIsReportedNotFollowed)
{
    build(3, Kel_ListView::Single);
    AssertRecorder asserts;
    list->drawContents(nullptr, QRect(0, 0, 100, 20));
    ASSERT_EQ(asserts.places.size(), 1);
    EXPECT_TRUE(asserts.places[0].startsWith(QStringLiteral("iPainterP && "))) << asserts.places[0].toStdString();
    EXPECT_TRUE(asserts.places[0].endsWith(QStringLiteral(" @ Kel_ListView"))) << asserts.places[0].toStdString();
}

// ---------------------------------------------------------------------------
// Tool tips and names

TEST_F(Painting, ToolTipsAndNamesAreThoseOfTheRowUnderThePoint)
{
    Mve_SimpleValue<QString> tip(QStringLiteral("a clip"), QStringLiteral("ListTest.Tip"));
    tip.Publish();
    build(6, Kel_ListView::Single);
    list->getRowView()->setName(QStringLiteral("Row"));
    auto* text = static_cast<Kel_ViewBase*>(static_cast<Kel_HStackView*>(list->getRowView())->viewAt(0));
    text->setToolTipConnectionID(QStringLiteral("ListTest.Tip"));
    list->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    click(1);

    QRect rect;
    QString tipText;
    ASSERT_TRUE(list->getToolTip(rowPoint(3), &rect, &tipText));
    EXPECT_EQ(tipText, QStringLiteral("a clip"));
    EXPECT_EQ(rect, QRect(0, 3 * kRowHeight, 100, kRowHeight));
    EXPECT_FALSE(list->getToolTip(rowPoint(8), &rect, &tipText));
    EXPECT_EQ(list->getCurrentCell(), 1);

    const QString name = list->findUiName(rowPoint(4));
    EXPECT_EQ(name, QStringLiteral("ListView.RowView(4).Name"));
    QPoint where;
    ASSERT_TRUE(list->findItem(name, &where));
    EXPECT_EQ(where.y() / kRowHeight, 4);
    EXPECT_TRUE(list->findItem(QStringLiteral("RowView(2)"), &where));
    EXPECT_EQ(where.y() / kRowHeight, 2);
    EXPECT_FALSE(list->findItem(QStringLiteral("RowView(2).Nothing"), &where));
    EXPECT_FALSE(list->findItem(QString(), &where));
    EXPECT_FALSE(list->findItem(name, nullptr));
    EXPECT_TRUE(bridge->findPoi(QStringLiteral("Bridge.ListView.RowView(5).Name")).isValid());
}

// ---------------------------------------------------------------------------
// Forms

TEST(ListViewWidget, FormsCreateItAndDescribeItsRowsByField)
{
    Mve_RecordArray clips(QStringLiteral("ListTest.Form"));
    clips.addField<QString>(QStringLiteral("name"));
    clips.addField<QString>(QStringLiteral("kind"));
    clips.Publish();
    clips.insertRows(0, 4);
    clips.setValue<QString>(2, QStringLiteral("kind"), QStringLiteral("audio"));

    Kel_FactoryEntryInterface* entry = Kel_QtWidgetFactoryRegistry::getEntry(QStringLiteral("Kel_ListViewWidget"));
    ASSERT_TRUE(entry);
    std::unique_ptr<QWidget> widget(entry->create(nullptr, QStringLiteral("Clips"), false));
    auto* listWidget = qobject_cast<Kel_ListViewWidget*>(widget.get());
    ASSERT_TRUE(listWidget);
    EXPECT_EQ(listWidget->objectName(), QStringLiteral("Clips"));
    widget->setProperty("listConnection", QByteArray("ListTest.Form"));
    widget->setProperty("selectionMode", 2);
    widget->setProperty("rowFields", QStringLiteral("name:80, kind"));
    widget->setProperty("rowHeight", 24);
    listWidget->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());

    Kel_ListView* list = listWidget->listView();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->GetNumItems(), 4);
    EXPECT_EQ(list->getSelectionMode(), Kel_ListView::Extended);
    auto* cells = dynamic_cast<Kel_HStackView*>(list->getRowView());
    ASSERT_TRUE(cells);
    ASSERT_EQ(cells->count(), 2);
    EXPECT_EQ(cells->viewAt(0)->getWidth(), 80);
    EXPECT_EQ(cells->getHeight(), 24);
    widget->resize(300, 120);
    widget->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
    QTest::mouseClick(listWidget->viewportWidget(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 2 * 24 + 5));
    EXPECT_TRUE(list->IsRowSelected(2));
    auto* kind = dynamic_cast<Kel_TextView*>(cells->viewAt(1));
    ASSERT_TRUE(kind);
    kind->updateAppearance();
    EXPECT_EQ(kind->getText(), QStringLiteral("audio"));
    EXPECT_EQ(list->getPortSize(), listWidget->viewport()->size());
}

} // namespace

// The model inspector names what a row shows: the row under the cursor, not
// the list's current one, and the list is left as it was.
TEST_F(ListFixture, TheInspectorNamesTheModelsOfTheRowUnderTheCursor)
{
    build(10, Kel_ListView::Single);
    click(1);
    const auto found = Kel_ModelInspector::bindingsAt(content()->mapToGlobal(rowPoint(3)));
    ASSERT_GE(found.size(), 1);
    EXPECT_EQ(found[0].specification, "ListTest.Clips.name[$Row]");
    EXPECT_EQ(found[0].index, 3);
    EXPECT_EQ(found[0].value, "clip3");
    EXPECT_TRUE(found[0].owner.endsWith("Name")) << found[0].owner.toStdString();
    EXPECT_TRUE(list->IsRowSelected(1));
    EXPECT_FALSE(list->IsRowSelected(3));
}
