// The text edits: right-to-left alignment, the Edit menu's commands, binding and keys.
#include "Dak_EditMenu.h"
#include "Dak_EditMenuCommander.h"
#include "Kel_AutoAlignLineEdit.h"
#include "Kel_AutoSizeTextEdit.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_KeyboardLanguage.h"
#include "Kel_KeymapMgr.h"
#include "Kel_LineEdit.h"
#include "Kel_LineEditPopup.h"
#include "Kel_TextAlignment.h"
#include "Kel_TextEdit.h"
#include "Mv_ConnectionDict.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"
#include "TestSupport.h"

#include <QAction>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

const QString kHebrew = QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d"); // "shalom"
const QString kArabic = QString::fromUtf8("\xd9\x85\xd8\xb1\xd8\xad\xd8\xa8\xd8\xa7");

// Sets the process-wide rule for one test and puts it back after.
class RuleScope
{
public:
    explicit RuleScope(Kel_TextAlignment::RTLAlgorithm rule) : mPrevious(Kel_TextAlignment::rtlAlgorithm())
    {
        Kel_TextAlignment::setRTLAlgorithm(rule);
    }
    ~RuleScope() { Kel_TextAlignment::setRTLAlgorithm(mPrevious); }

private:
    Kel_TextAlignment::RTLAlgorithm mPrevious;
};

// Types text that QTest cannot spell as keys (any script), one key per character.
void typeText(QWidget* widget, const QString& text)
{
    for (QChar c : text)
        QTest::sendKeyEvent(QTest::Click, widget, Qt::Key_A, QString(c), Qt::NoModifier);
}

// A window that records the keys its children leave to it.
class KeyWindow : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys << event->key(); }
};

class TextEditsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Kel_KeyboardLanguage::setCurrentLanguageOverride(0);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(line = new Kel_LineEdit(&window, QStringLiteral("line")));
        layout->addWidget(text = new Kel_TextEdit(&window, QStringLiteral("Notes")));
        layout->addWidget(autoSize = new Kel_AutoSizeTextEdit(&window, "autoSize"));
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void TearDown() override
    {
        Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
        for (const char* context : {"MainWindow", "LineEdit", "Hotkey"})
            keymap->removeKeysOfContext(QString::fromLatin1(context));
        Kel_KeyboardLanguage::setCurrentLanguageOverride(-1);
    }
    void focus(QWidget* widget)
    {
        widget->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(waitFor([widget] { return widget->hasFocus(); }));
    }
    // The Edit menu's view of a command for the focused widget.
    bool enabled(unsigned int command)
    {
        Dak_EditMenu::instance().updateActions();
        return Dak_EditMenu::instance().action(command)->isEnabled();
    }
    void choose(unsigned int command)
    {
        Dak_EditMenu::instance().updateActions();
        Dak_EditMenu::instance().action(command)->trigger();
    }

    KeyWindow window;
    Kel_LineEdit* line = nullptr;
    Kel_TextEdit* text = nullptr;
    Kel_AutoSizeTextEdit* autoSize = nullptr;
};

} // namespace

TEST(TextAlignment, EachRuleFindsTheDirection)
{
    const QString mixed = QStringLiteral("abc ") + kHebrew;
    {
        RuleScope rule(Kel_TextAlignment::kRTLFirstStrong);
        EXPECT_EQ(Kel_TextAlignment::basicDirection(mixed), Qt::LeftToRight);
        EXPECT_EQ(Kel_TextAlignment::basicDirection(QStringLiteral("12, ") + kArabic + QStringLiteral(" abc")),
                  Qt::RightToLeft)
            << "digits and punctuation are not strong";
        EXPECT_EQ(Kel_TextAlignment::basicDirection(QString(QChar(0x202B)) + QStringLiteral("abc")),
                  Qt::RightToLeft)
            << "an embedding mark counts";
        EXPECT_EQ(Kel_TextAlignment::basicDirection(QStringLiteral("123 !?")), Qt::LeftToRight);
        EXPECT_EQ(Kel_TextAlignment::basicDirection(QString()), Qt::LeftToRight);
    }
    {
        RuleScope rule(Kel_TextAlignment::kRTLAnyRightToLeft);
        EXPECT_EQ(Kel_TextAlignment::basicDirection(mixed), Qt::RightToLeft);
        EXPECT_EQ(Kel_TextAlignment::basicDirection(QStringLiteral("abc def")), Qt::LeftToRight);
        // A letter outside the basic plane (Hebrew-script Phoenician is not; this is Old Hungarian, R).
        EXPECT_EQ(Kel_TextAlignment::basicDirection(QStringLiteral("a ") + QString::fromUcs4(U"\U00010C80")),
                  Qt::RightToLeft);
    }

    // drawText lays the painter out in the text's direction, unless the rule is off.
    QImage image(40, 20, QImage::Format_ARGB32);
    QPainter painter(&image);
    painter.setLayoutDirection(Qt::LeftToRight);
    {
        RuleScope rule(Kel_TextAlignment::kRTLOff);
        Kel_TextAlignment::drawText(&painter, image.rect(), Qt::AlignLeft, kHebrew);
        EXPECT_EQ(painter.layoutDirection(), Qt::LeftToRight);
    }
    RuleScope rule(Kel_TextAlignment::kRTLFirstStrong);
    Kel_TextAlignment::drawText(&painter, image.rect(), Qt::AlignLeft, kHebrew);
    EXPECT_EQ(painter.layoutDirection(), Qt::RightToLeft);
    Kel_TextAlignment::drawText(&painter, image.rect(), Qt::AlignLeft, QStringLiteral("abc"));
    EXPECT_EQ(painter.layoutDirection(), Qt::LeftToRight);
}

TEST_F(TextEditsTest, EditsAlignByTheirTextUnderTheRule)
{
    {
        RuleScope off(Kel_TextAlignment::kRTLOff);
        line->setText(kHebrew);
        EXPECT_EQ(line->layoutDirection(), Qt::LeftToRight) << "off: the direction never changes";
    }
    RuleScope rule(Kel_TextAlignment::kRTLAnyRightToLeft);
    line->setText(QStringLiteral("abc ") + kHebrew);
    EXPECT_EQ(line->layoutDirection(), Qt::RightToLeft);
    line->setText(QStringLiteral("abc"));
    EXPECT_EQ(line->layoutDirection(), Qt::LeftToRight);

    focus(autoSize);
    QTest::keyClicks(autoSize, QStringLiteral("one"));
    QTest::keyClick(autoSize, Qt::Key_Return);
    typeText(autoSize, kArabic);
    for (QTextBlock block = autoSize->document()->begin(); block.isValid(); block = block.next())
        EXPECT_EQ(block.blockFormat().alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight | Qt::AlignAbsolute);
    EXPECT_EQ(autoSize->textCursor().position(), autoSize->toPlainText().size()) << "the cursor stays";
    // Realigning is part of the edit that caused it: one undo takes both back.
    autoSize->selectAll();
    QTest::keyClicks(autoSize, QStringLiteral("x"));
    EXPECT_EQ(autoSize->document()->begin().blockFormat().alignment() & Qt::AlignHorizontal_Mask,
              Qt::AlignLeft | Qt::AlignAbsolute);
    autoSize->document()->undo();
    EXPECT_EQ(autoSize->toPlainText(), QStringLiteral("one\n") + kArabic);
    EXPECT_EQ(autoSize->document()->begin().blockFormat().alignment() & Qt::AlignHorizontal_Mask,
              Qt::AlignRight | Qt::AlignAbsolute);
}

TEST_F(TextEditsTest, PlainTextWithLineBreaksBecomesHtml)
{
    text->setPlainText(QStringLiteral("a<b\nc"));
    EXPECT_TRUE(text->toHtml().contains(QStringLiteral("a&lt;b<br />c"))) << text->toHtml().toStdString();
    // Nothing else is escaped: an entity in the text is read as one.
    text->setPlainText(QStringLiteral("x &amp; y\r\nz"));
    EXPECT_EQ(text->toPlainText(), QStringLiteral("x & y\nz"));
    // A single line stays plain text.
    text->setPlainText(QStringLiteral("x &amp; <y>"));
    EXPECT_EQ(text->toPlainText(), QStringLiteral("x &amp; <y>"));
}

TEST_F(TextEditsTest, LineEditCommandsFollowItsState)
{
    focus(line);
    EXPECT_EQ(Dak_EditMenu::instance().currentCommander(), static_cast<Dak_Commander*>(line));
    EXPECT_FALSE(enabled(Dak_EditMenuCommander::kSelectAll)) << "nothing to select";
    EXPECT_TRUE(enabled(Dak_EditMenuCommander::kPaste));
    QTest::keyClicks(line, QStringLiteral("take one"));
    EXPECT_TRUE(enabled(Dak_EditMenuCommander::kUndo));
    EXPECT_FALSE(enabled(Dak_EditMenuCommander::kCopy));
    QTest::keyClick(line, Qt::Key_Home, Qt::ShiftModifier);
    for (unsigned int command : {Dak_EditMenuCommander::kCut, Dak_EditMenuCommander::kCopy,
                                 Dak_EditMenuCommander::kDelete, Dak_EditMenuCommander::kSelectAll})
        EXPECT_TRUE(enabled(command)) << command;

    line->setReadOnly(true);
    EXPECT_TRUE(enabled(Dak_EditMenuCommander::kCopy));
    for (unsigned int command :
         {Dak_EditMenuCommander::kCut, Dak_EditMenuCommander::kPaste, Dak_EditMenuCommander::kDelete})
        EXPECT_FALSE(enabled(command)) << command;
    line->setReadOnly(false);

    choose(Dak_EditMenuCommander::kCopy);
    choose(Dak_EditMenuCommander::kDelete);
    EXPECT_EQ(line->text(), QString());
    choose(Dak_EditMenuCommander::kUndo);
    EXPECT_EQ(line->text(), QStringLiteral("take one"));
    line->end(false);
    choose(Dak_EditMenuCommander::kPaste);
    EXPECT_EQ(line->text(), QStringLiteral("take onetake one"));
    choose(Dak_EditMenuCommander::kSelectAll);
    choose(Dak_EditMenuCommander::kCut);
    EXPECT_EQ(line->text(), QString());

    bool untouched = true;
    QString label;
    EXPECT_FALSE(line->findCommandStatus(Dak_EditMenuCommander::kCommandCount, untouched, label));
    EXPECT_TRUE(untouched);
}

TEST_F(TextEditsTest, DeleteDoesNothingInTheTextEditOnly)
{
    focus(text);
    QTest::keyClicks(text, QStringLiteral("keep me"));
    text->selectAll();
    EXPECT_TRUE(enabled(Dak_EditMenuCommander::kDelete)) << "reported available all the same";
    choose(Dak_EditMenuCommander::kDelete);
    EXPECT_EQ(text->toPlainText(), QStringLiteral("keep me"));
    choose(Dak_EditMenuCommander::kCut);
    EXPECT_EQ(text->toPlainText(), QString());
    EXPECT_FALSE(enabled(Dak_EditMenuCommander::kSelectAll));
    choose(Dak_EditMenuCommander::kUndo);
    EXPECT_EQ(text->toPlainText(), QStringLiteral("keep me"));
    text->setReadOnly(true);
    text->selectAll();
    EXPECT_FALSE(enabled(Dak_EditMenuCommander::kCut));
    EXPECT_TRUE(enabled(Dak_EditMenuCommander::kCopy));
    text->setReadOnly(false);

    focus(autoSize);
    QTest::keyClicks(autoSize, QStringLiteral("remove me"));
    QTest::keyClick(autoSize, Qt::Key_Home, Qt::ShiftModifier);
    choose(Dak_EditMenuCommander::kDelete);
    EXPECT_EQ(autoSize->toPlainText(), QString());
    choose(Dak_EditMenuCommander::kUndo);
    EXPECT_EQ(autoSize->toPlainText(), QStringLiteral("remove me"));
}

TEST_F(TextEditsTest, TheEditMenuOpeningKeepsTheFieldEditing)
{
    QSignalSpy finished(line, &QLineEdit::editingFinished);
    focus(line);
    QTest::keyClicks(line, QStringLiteral("selected"));
    line->selectAll();
    QMenu* editMenu = Dak_EditMenu::instance().menu();
    editMenu->popup(line->mapToGlobal(QPoint(0, line->height())));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(editMenu));
    EXPECT_EQ(finished.count(), 0) << "the focus-out went to the Edit menu";
    EXPECT_EQ(Dak_EditMenu::instance().currentCommander(), static_cast<Dak_Commander*>(line));
    QTest::keyClick(editMenu, Qt::Key_T); // Cu&t
    ASSERT_TRUE(waitFor([editMenu] { return !editMenu->isVisible(); }));
    EXPECT_EQ(line->text(), QString());

    // Another pop-up is not the Edit menu: the field's own focus-out runs.
    focus(line);
    QMenu other;
    other.addAction(QStringLiteral("Other"));
    other.popup(line->mapToGlobal(QPoint(0, line->height())));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    EXPECT_EQ(finished.count(), 1);
    other.hide();
}

TEST_F(TextEditsTest, KeysMappedForTheWindowLeaveTheLineEdit)
{
    Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
    int clears = 0;
    Mve_Action<void()> clear([&clears] { ++clears; }, "LineEditTest.Clear");
    publishAll({&clear});
    keymap->add(QKeySequence(QStringLiteral("F5")), QStringLiteral("LineEditTest.Refresh"),
                QStringLiteral("MainWindow::Refresh"), QString(), QStringLiteral("MainWindow"), QString(), false);
    keymap->add(QKeySequence(QStringLiteral("Ctrl+K")), QStringLiteral("LineEditTest.Clear"),
                QStringLiteral("LineEdit::Clear"), QString(), QStringLiteral("LineEdit"), QString(), false);
    keymap->add(QKeySequence(QStringLiteral("Ctrl+K")), QStringLiteral("LineEditTest.Kill"),
                QStringLiteral("MainWindow::Kill"), QString(), QStringLiteral("MainWindow"), QString(), false);
    keymap->add(QKeySequence(QStringLiteral("F2")), QString::fromUtf8("Hotkey|\xc2\xa9"),
                QStringLiteral("Hotkey::Copyright"), QString(), QStringLiteral("Hotkey"), QString(), false);

    focus(line);
    QTest::keyClick(line, Qt::Key_F5);
    QTest::keyClicks(line, QStringLiteral("ab"));
    EXPECT_EQ(window.keys, QList<int>({Qt::Key_F5}));
    EXPECT_EQ(line->text(), QStringLiteral("ab"));

    // The line edit's own context comes first.
    QTest::keyClick(line, Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(clears, 1);
    EXPECT_FALSE(window.keys.contains(Qt::Key_K));

    // Hot keys insert their text only where allowed.
    QTest::keyClick(line, Qt::Key_F2);
    EXPECT_EQ(line->text(), QStringLiteral("ab"));
    line->setAllowHotKeys(true);
    QTest::keyClick(line, Qt::Key_Left);
    QTest::keyClick(line, Qt::Key_F2);
    EXPECT_EQ(line->text(), QString::fromUtf8("a\xc2\xa9" "b"));
}

TEST_F(TextEditsTest, LineAndTextEditsBindTheirText)
{
    Mve_SimpleValue<QString> title(QStringLiteral("First take"), "TextEditTest.Title");
    Mve_SimpleValue<QString> notes(QStringLiteral("line one\nline two"), "TextEditTest.Notes");
    publishAll({&title, &notes});
    line->SetTextConnection("TextEditTest.Title");
    text->setPlainTextMode(true);
    text->SetTextConnection("TextEditTest.Notes");
    Kel_ConnectionUtils::recursiveConnect(&window, Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(line->text(), QStringLiteral("First take"));
    EXPECT_EQ(line->getInitialValue(), QStringLiteral("First take"));
    EXPECT_EQ(text->get(), QStringLiteral("line one\nline two"));

    focus(line);
    line->selectAll();
    QTest::keyClicks(line, QStringLiteral("Second"));
    EXPECT_EQ(title.getValue(), QStringLiteral("Second"));
    title.setValue(QStringLiteral("Third"));
    EXPECT_EQ(line->text(), QStringLiteral("Third"));
    EXPECT_EQ(line->getInitialValue(), QStringLiteral("Third")) << "every received value";

    focus(text);
    text->selectAll();
    QTest::keyClicks(text, QStringLiteral("plain"));
    EXPECT_EQ(notes.getValue(), QStringLiteral("plain"));
    // A read-only model takes nothing: the field shows its value again.
    notes.setReadOnly(true);
    QTest::keyClicks(text, QStringLiteral("zz"));
    EXPECT_EQ(text->toPlainText(), QStringLiteral("plain"));
    text->setPlainTextMode(false);
    QTest::keyClicks(text, QStringLiteral("zz"));
    EXPECT_EQ(text->toPlainText(), QStringLiteral("plain"));
    EXPECT_EQ(notes.getValue(), QStringLiteral("plain"));

    // The published form, with the text edit in rich-text mode.
    Kel_TextEdit rich(nullptr, "rich");
    rich.SetTextConnection(" publish TextEditTest.Rich ");
    Mvt_SimpleValue<QString>::Listener reader;
    reader.SetConnectionName(QStringLiteral("TextEditTest.Rich"));
    reader.connect(Mv_ConnectionEnvironment::blankEnvironment());
    reader.set(QStringLiteral("<b>bold</b>"));
    EXPECT_EQ(rich.toPlainText(), QStringLiteral("bold"));
    EXPECT_TRUE(reader.value().contains(QStringLiteral("font-weight")));
    rich.set(QStringLiteral("<i>x</i>"));
    EXPECT_EQ(reader.value(), rich.toHtml());
}

TEST_F(TextEditsTest, TheAutoSizeEditGrowsWithItsText)
{
    QSignalSpy sized(autoSize, &Kel_AutoSizeTextEdit::autoSized);
    const int oneLine = autoSize->sizeHint().height();
    EXPECT_EQ(oneLine, autoSize->contentsHeight());
    autoSize->setPlainText(QStringLiteral("one\ntwo\nthree"));
    EXPECT_GT(autoSize->sizeHint().height(), oneLine);
    EXPECT_EQ(autoSize->minimumSizeHint().height(), autoSize->sizeHint().height());
    EXPECT_GE(sized.count(), 1);

    // A press inside a selection keeps it (for dragging) unless the edit
    // drops it on click; Shift still extends.
    focus(autoSize);
    QTextCursor atStart = autoSize->textCursor();
    atStart.setPosition(1);
    const QPoint insideText = autoSize->cursorRect(atStart).center();
    autoSize->selectAll();
    QTest::mousePress(autoSize->viewport(), Qt::LeftButton, Qt::NoModifier, insideText);
    EXPECT_TRUE(autoSize->textCursor().hasSelection());
    QTest::mouseRelease(autoSize->viewport(), Qt::LeftButton, Qt::NoModifier, insideText);

    autoSize->setClearSelectionOnClick(true);
    autoSize->selectAll();
    QTest::mousePress(autoSize->viewport(), Qt::LeftButton, Qt::NoModifier, insideText);
    EXPECT_FALSE(autoSize->textCursor().hasSelection());
    QTest::mouseRelease(autoSize->viewport(), Qt::LeftButton, Qt::NoModifier, insideText);

    QTextCursor lastWord = autoSize->textCursor();
    lastWord.movePosition(QTextCursor::End);
    lastWord.movePosition(QTextCursor::StartOfWord, QTextCursor::KeepAnchor);
    autoSize->setTextCursor(lastWord);
    QTest::mousePress(autoSize->viewport(), Qt::LeftButton, Qt::ShiftModifier, insideText);
    EXPECT_TRUE(autoSize->textCursor().hasSelection());
    QTest::mouseRelease(autoSize->viewport(), Qt::LeftButton, Qt::ShiftModifier, insideText);
}

TEST_F(TextEditsTest, ThePopupEditorAcceptsOrCancels)
{
    Kel_LineEditPopup popup(&window, "rename");
    QSignalSpy accepted(&popup, &Kel_LineEditPopup::accepted);
    QSignalSpy rejected(&popup, &Kel_LineEditPopup::rejected);
    popup.popup(QRect(10, 10, 120, 24), QStringLiteral("Clip 1"));
    ASSERT_TRUE(waitFor([&popup] { return popup.hasFocus(); }));
    QTest::keyClicks(&popup, QStringLiteral("Interview"));
    QTest::keyClick(&popup, Qt::Key_Return);
    ASSERT_EQ(accepted.count(), 1);
    EXPECT_EQ(accepted.at(0).at(0).toString(), QStringLiteral("Interview"));
    EXPECT_FALSE(popup.isVisible());

    popup.popup(QRect(10, 10, 120, 24), QStringLiteral("Clip 2"));
    ASSERT_TRUE(waitFor([&popup] { return popup.hasFocus(); }));
    QTest::keyClick(&popup, Qt::Key_Escape);
    EXPECT_EQ(rejected.count(), 1);
    EXPECT_FALSE(popup.isOpen());

    // Leaving the field accepts what it holds.
    popup.popup(QRect(10, 10, 120, 24), QStringLiteral("Clip 3"));
    ASSERT_TRUE(waitFor([&popup] { return popup.hasFocus(); }));
    focus(line);
    ASSERT_EQ(accepted.count(), 2);
    EXPECT_EQ(accepted.at(1).at(0).toString(), QStringLiteral("Clip 3"));
}
