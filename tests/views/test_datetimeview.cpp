// The date/time view: a QDateTime (or QDate) model shown as text.
#include "Kel_DateTimeView.h"
#include "Mve_SimpleValue.h"
#include "ViewTestSupport.h"

#include <QLocale>

TEST(DateTimeView, ShowsItsModelInTheLocaleOrAGivenFormat)
{
    const QDateTime when(QDate(2026, 3, 14), QTime(9, 26, 53));
    Mve_SimpleValue<QDateTime> saved(when, "DateTimeView.Saved");
    Mve_SimpleValue<QDate> due(QDate(2026, 12, 24), "DateTimeView.Due");
    publishAll({&saved, &due});
    RecordingParent parent;
    Kel_DateTimeView view;
    view.setName(QStringLiteral("Saved"));
    view.setSize(QSize(150, 20));
    view.setParent(&parent);

    // Unbound: nothing, or the empty text.
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(view.getText(), QString());
    view.setEmptyText(QStringLiteral("never"));
    view.updateAppearance();
    EXPECT_EQ(view.getText(), QStringLiteral("never"));

    view.setConnectionSpec(QStringLiteral("$Doc.Saved"));
    view.makeConnections(environmentWith(QStringLiteral("Doc"), QStringLiteral("DateTimeView")));
    EXPECT_EQ(view.getText(), QLocale().toString(when, QLocale::ShortFormat));
    view.setFormat(QStringLiteral("yyyy-MM-dd hh:mm"));
    parent.log.clear();
    saved.setValue(when.addDays(1));
    EXPECT_EQ(view.getText(), QStringLiteral("2026-03-15 09:26"));
    EXPECT_EQ(parent.log, QStringList{"bits Saved 0,0 150x20"});
    saved.setValue(QDateTime());
    EXPECT_EQ(view.getText(), QStringLiteral("never"));

    // A model of dates is shown as a date.
    view.setConnectionSpec(QStringLiteral("DateTimeView.Due"));
    view.setFormat(QStringLiteral("d MMM yyyy"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(view.getText(), QDate(2026, 12, 24).toString(QStringLiteral("d MMM yyyy")));

    // A model of another kind reads as no value.
    Mve_SimpleValue<long> count(3, "DateTimeView.Count");
    count.Publish();
    view.setConnectionSpec(QStringLiteral("DateTimeView.Count"));
    view.makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    EXPECT_EQ(view.getText(), QStringLiteral("never"));

    std::unique_ptr<Kel_ViewInterface> copy(view.clone());
    auto* copied = static_cast<Kel_DateTimeView*>(copy.get());
    EXPECT_EQ(copied->getFormat(), QStringLiteral("d MMM yyyy"));
    EXPECT_EQ(copied->getConnectionSpec(), QStringLiteral("DateTimeView.Count"));
}
