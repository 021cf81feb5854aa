// Arrays, element addressing by number and through index models, record
// arrays.
#include "ModelTestSupport.h"

#include "Mve_Array.h"
#include "Mve_Index.h"
#include "Mve_RecordArray.h"


namespace {

typedef Mvt_SimpleValue<QString>::Listener StringListener;

typedef DictTest Elements;

TEST_F(Elements, AFixedIndexAddressesOneElementAndHearsOnlyItsChanges)
{
    Mve_Array<QString> names({"a", "b", "c"}, "Names");
    names.Publish(&dict);
    StringListener second("Names[1]", env());
    Recorder rec(second);
    EXPECT_EQ(second.value(), "b");
    EXPECT_EQ(second.set("B"), Mvt_SimpleValue_BaseAPI::kSetChanged);
    EXPECT_EQ(names.at(1), "B");
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});

    names.setAt(0, "A"); // another element
    names.setAt(2, "C");
    EXPECT_TRUE(rec.takeHeard().isEmpty());
    names.insert(2, "x"); // after it: does not concern element 1
    EXPECT_TRUE(rec.takeHeard().isEmpty());
    names.insert(0, "y"); // shifts it
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    EXPECT_EQ(second.value(), "A");

    StringListener outside("Names[9]", env());
    EXPECT_TRUE(outside.isConnectedToModel());
    EXPECT_EQ(outside.value("none"), "none");
    EXPECT_EQ(outside.set("z"), Mvt_SimpleValue_BaseAPI::kSetNotAnswered);
}

TEST_F(Elements, AnIndexMovedQuietlyIsReadAtOnceButAnnouncedToNobody)
{
    Mve_Array<QString> names({"a", "b", "c"}, "Names");
    names.Publish(&dict);
    Mve_Index<long> row(0, "Row");
    row.Publish(&dict);
    auto cellEnv = env();
    cellEnv->set("Row", "Row");
    StringListener cell("Names[$Row]", cellEnv);
    Recorder rec(cell);
    rec.takeHeard();
    EXPECT_TRUE(row.setValueQuietly(2));
    EXPECT_EQ(cell.value(), "c");
    EXPECT_TRUE(rec.takeHeard().isEmpty());
    EXPECT_FALSE(row.setValueQuietly(2));
    row.setValueQuietly(0); // put back: the listener never knew
    names.setAt(0, "A");
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    row.setValue(1); // a move others must follow is announced as usual
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    EXPECT_EQ(cell.value(), "b");
}

TEST_F(Elements, AnIndexModelMovesTheListenerAlongTheArray)
{
    Mve_Array<QString> names({"a", "b", "c"}, "Clips.name");
    names.Publish(&dict);
    auto cellEnv = env();
    cellEnv->set("Row", "List7::currentRow");
    StringListener cell;
    cell.SetConnectionName("Clips.name[$Row]");
    Recorder rec(cell);
    EXPECT_FALSE(cell.connect(cellEnv)); // no index model yet
    EXPECT_EQ(cell.GetResolvedName(), "Clips.name[List7::currentRow]");

    Mve_Index<long> row(-1, "List7::currentRow");
    row.Publish(&dict);
    EXPECT_TRUE(cell.isConnectedToModel());
    rec.takeHeard();
    EXPECT_EQ(cell.value("none"), "none"); // -1 designates nothing

    row.setValue(2);
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    EXPECT_EQ(cell.value(), "c");
    names.setAt(2, "C");
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    names.setAt(0, "A");
    EXPECT_TRUE(rec.takeHeard().isEmpty());
    names.move(0, 2); // element 2 is now the former first
    EXPECT_EQ(rec.takeHeard(), QStringList{"MsgValueChanged"});
    EXPECT_EQ(cell.value(), "A");

    row.UnPublish();
    EXPECT_EQ(rec.takeHeard(), QStringList{"disconnected"});
    EXPECT_EQ(cell.value("none"), "none");
}

TEST_F(Elements, RecordArraysPublishTheirFieldsAndChangeThemTogether)
{
    Mve_RecordArray clips("Clips");
    clips.addField<QString>("name");
    clips.addField<long>("length", 25);
    clips.Publish(&dict);
    Mvt_ArrayContainer::Listener rows("Clips", env());
    Mvt_Array<Mvt_SimpleValue<QString>>::Listener nameArray("Clips.name", env());
    long sizeSeenByRows = -1;
    QString nameSeenByRows;
    rows.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        if (const auto* r = m.as<Mvt_ArrayContainer_Notifications::MsgElementsReplaced>()) {
            sizeSeenByRows = r->newSize();
            nameSeenByRows = nameArray.element<QString>(r->first(), "missing");
        }
    });
    clips.appendRow();
    EXPECT_EQ(sizeSeenByRows, 1);
    EXPECT_EQ(nameSeenByRows, ""); // the field already had the new row
    clips.setValue<QString>(0, "name", "Intro");
    EXPECT_EQ(nameArray.element<QString>(0), "Intro");
    EXPECT_EQ(clips.value<long>(0, "length"), 25);

    clips.insertRows(0, 2);
    EXPECT_EQ(nameArray.element<QString>(2), "Intro");
    clips.removeRows(0, 99);
    EXPECT_EQ(rows.size(), 0);

    // However a field changes, the record's listeners hear which row.
    clips.appendRow();
    long rowHeard = -1;
    rows.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        if (const auto* c = m.as<Mvt_ArrayContainer_Notifications::MsgElementValueChanged>())
            rowHeard = c->index();
    });
    clips.setValue<QString>(0, "name", "Outro");
    EXPECT_EQ(rowHeard, 0);
    rowHeard = -1;
    EXPECT_EQ(Mvt_SimpleValue<long>::Listener("Clips.length[0]", env()).set(12),
              int(Mvt_SimpleValue_BaseAPI::kSetChanged));
    EXPECT_EQ(rowHeard, 0);

    clips.SetConnectionName("Shots"); // fields follow the rename
    EXPECT_TRUE(dict.isPublished("Shots.length"));
    EXPECT_FALSE(dict.isPublished("Clips.length"));
}

TEST_F(Elements, ARecordArrayUpdateIsToldOnceAndLeavesEachFieldAsItsOwnerSetIt)
{
    Mve_RecordArray clips("Clips");
    clips.addField<QString>("name");
    Mve_Array<long>* length = clips.addField<long>("length");
    clips.Publish(&dict);
    auto cellEnv = env();
    cellEnv->set("Row", "Row");
    Mve_Index<long> row(1, "Row");
    row.Publish(&dict);
    Mvt_ArrayContainer::Listener rows("Clips", env());
    StringListener cell("Clips.name[$Row]", cellEnv);
    Mvt_SimpleValue<long>::Listener lengthCell("Clips.length[0]", env());
    Recorder rowsHeard(rows), cellHeard(cell), lengthHeard(lengthCell);

    clips.beginUpdate();
    clips.insertRows(0, 3);
    clips.beginUpdate(); // nested: told with the outer one
    clips.setValue<QString>(1, "name", "Intro");
    clips.setValue<QString>(2, "name", "Outro");
    clips.endUpdate();
    clips.moveRow(2, 0);
    clips.removeRows(1, 1); // "Outro", "Intro"
    clips.addField<bool>("muted"); // added in the middle, silent too
    clips.setValue<bool>(0, "muted", true);
    EXPECT_TRUE(rowsHeard.takeHeard().isEmpty());
    EXPECT_TRUE(cellHeard.takeHeard().isEmpty());
    clips.endUpdate();
    EXPECT_EQ(rowsHeard.takeHeard(), QStringList{"MsgElementsReplaced"});
    EXPECT_EQ(cellHeard.takeHeard(), QStringList{"MsgValueChanged"});
    EXPECT_EQ(cell.value(), "Intro");
    EXPECT_EQ(rows.size(), 2);
    clips.endUpdate(); // unmatched: ignored
    EXPECT_TRUE(rowsHeard.takeHeard().isEmpty());

    // A field its owner silenced stays silent after row changes.
    length->setNotifying(false);
    clips.insertRows(0, 1);
    lengthHeard.takeHeard();
    length->setAt(0, 25);
    EXPECT_TRUE(lengthHeard.takeHeard().isEmpty());
    clips.setValue<QString>(0, "name", "New");
    EXPECT_EQ(cell.value(), "Outro"); // row 1 is still the one addressed
}

} // namespace

// A header reorders columns by asking the container, not its owner: the
// request moves whole rows of a record array even when it reaches one of
// its fields, and read-only containers refuse it.
TEST_F(Elements, MoveRequestsFromListenersMoveWholeRowsUnlessReadOnly)
{
    Mve_RecordArray clips("Clips");
    Mve_Array<QString>* name = clips.addField<QString>("name");
    Mve_Array<long>* length = clips.addField<long>("length");
    for (const auto& clip : {std::make_pair("A", 1L), std::make_pair("B", 2L), std::make_pair("C", 3L)}) {
        const long row = clips.appendRow();
        clips.setValue<QString>(row, "name", clip.first);
        clips.setValue<long>(row, "length", clip.second);
    }
    Mve_Array<long> widths(std::vector<long>{10, 20, 30}, "Widths");
    clips.Publish(&dict);
    widths.Publish(&dict);
    Mvt_ArrayContainer::Listener rows("Clips", env()), nameField("Clips.name", env()), widthList("Widths", env());
    Mvt_ArrayContainer::Listener nobody("Nobody", env());
    Recorder rowsHeard(rows);
    long movedFrom = -1, movedTo = -1;
    rows.setReceiveMessageCB([&](const Mv_MessageInterface& m) {
        rowsHeard.record(m);
        if (const auto* moved = m.as<Mvt_ArrayContainer_Notifications::MsgElementsMoved>()) {
            movedFrom = moved->from();
            movedTo = moved->to();
        }
    });

    EXPECT_TRUE(rows.requestMove(0, 2));
    EXPECT_EQ(name->values(), (std::vector<QString>{"B", "C", "A"}));
    EXPECT_EQ(length->values(), (std::vector<long>{2, 3, 1}));
    EXPECT_EQ(movedFrom, 0);
    EXPECT_EQ(movedTo, 2);
    EXPECT_TRUE(nameField.requestMove(2, 0)); // through a field: the row moves
    EXPECT_EQ(length->values(), (std::vector<long>{1, 2, 3}));
    EXPECT_EQ(rowsHeard.takeHeard(), (QStringList{"MsgElementsMoved", "MsgElementsMoved"}));

    EXPECT_FALSE(rows.requestMove(0, 3));
    EXPECT_FALSE(rows.requestMove(-1, 0));
    EXPECT_FALSE(rows.requestMove(1, 1));
    EXPECT_FALSE(nobody.requestMove(0, 1));
    clips.setReadOnly(true);
    EXPECT_FALSE(rows.requestMove(0, 1));
    EXPECT_FALSE(nameField.requestMove(0, 1));
    EXPECT_EQ(Mvt_SimpleValue<QString>::Listener("Clips.name[0]", env()).set("Z"),
              int(Mvt_SimpleValue_BaseAPI::kSetRefused));
    EXPECT_TRUE(rowsHeard.takeHeard().isEmpty());
    EXPECT_TRUE(clips.moveRow(0, 1)); // the owner still may

    EXPECT_TRUE(widthList.requestMove(2, 0));
    EXPECT_EQ(widths.values(), (std::vector<long>{30, 10, 20}));
    widths.setReadOnly(true);
    EXPECT_FALSE(widthList.requestMove(2, 0));
    EXPECT_EQ(widths.values(), (std::vector<long>{30, 10, 20}));
}
