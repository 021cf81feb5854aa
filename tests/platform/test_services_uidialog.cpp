// Message boxes: the test seam and the real modal box.
#include "Ost_DirPaths.h"
#include "Ost_UIDialog.h"
#include "TestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

TEST(ServicesUIDialog, InterceptorGetsTheExactRequestAndAnswers)
{
    Ost_UIDialog::Request seen;
    Ost_UIDialog::Interceptor previous = Ost_UIDialog::setInterceptor([&](const Ost_UIDialog::Request& r) {
        seen = r;
        return 2;
    });
    DebugMessageCollector log;
    EXPECT_EQ(Ost_UIDialog::UIdialog(QStringLiteral("Save <b>changes</b>?"), QStringLiteral("Yes|No|Cancel"), 3,
                                     Ost_UIDialog::kQuestionIcon, QStringLiteral("details"), true,
                                     QStringLiteral("Editor.cpp")),
              2);
    EXPECT_TRUE(static_cast<bool>(Ost_UIDialog::setInterceptor(previous)));
    EXPECT_EQ(QStringList({seen.message, seen.buttonTexts, seen.detailText, seen.sourceFile}),
              QStringList({"Save <b>changes</b>?", "Yes|No|Cancel", "details", "Editor.cpp"}));
    EXPECT_EQ(seen.buttonCount, 3);
    EXPECT_EQ(seen.icon, Ost_UIDialog::kQuestionIcon);
    EXPECT_TRUE(seen.richText);
    EXPECT_TRUE(log.contains(QStringLiteral("Ost_UIDialog from Editor.cpp: Save <b>changes</b>?")));
}

TEST(ServicesUIDialog, RealBoxShowsTheButtonsAndReturnsTheClickedIndex)
{
    QStringList texts;
    // Once the box is up: note what it shows and click "Retry" with the mouse.
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&]() {
        auto* seenBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!seenBox || !seenBox->isVisible())
            return;
        poll.stop();
        EXPECT_TRUE(seenBox->isModal());
        EXPECT_EQ(seenBox->windowTitle(), Ost_DirPaths::GetProductName());
        EXPECT_EQ(seenBox->detailedText(), QStringLiteral("No space left"));
        EXPECT_EQ(seenBox->icon(), QMessageBox::Critical);
        EXPECT_EQ(seenBox->textFormat(), Qt::PlainText);
        QAbstractButton* retry = nullptr;
        for (QAbstractButton* button : seenBox->buttons()) {
            if (button->text().startsWith(QStringLiteral("Show Details")))
                continue; // the box's own button for the detail text
            texts.append(button->text());
            if (button->text() == QStringLiteral("Retry"))
                retry = button;
        }
        if (retry)
            QTest::mouseClick(retry, Qt::LeftButton);
        else
            seenBox->reject();
    });
    poll.start(10);

    // Four buttons asked for, three texts given (one empty): the rest say OK.
    EXPECT_EQ(Ost_UIDialog::UIdialog(QStringLiteral("Disk full"), QStringLiteral("Abort||Retry"), 4,
                                     Ost_UIDialog::kErrorIcon, QStringLiteral("No space left"), false,
                                     QStringLiteral("Writer.cpp")),
              2);
    texts.sort();
    EXPECT_EQ(texts, QStringList({"Abort", "OK", "OK", "Retry"}));
}
