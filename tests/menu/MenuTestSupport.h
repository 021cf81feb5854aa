#ifndef MENU_TEST_SUPPORT_H
#define MENU_TEST_SUPPORT_H

// Helpers shared by the menu tests: menus built from inline XML, and a
// real pop-up opened and clicked the way a user does it.
#include "Kel_PopupMenu.h"
#include "Mnu_Menu.h"
#include "Mnu_QtManager.h"
#include "Mv_ConnectionEnvironment.h"
#include "Mve_RecordArray.h"
#include "Ost_Resource.h"
#include "TestSupport.h"

#include <QAction>
#include <QDomDocument>
#include <QPixmap>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

namespace menutest {

// A list model with every field a list segment reads.
struct ListModel
{
    explicit ListModel(const QString& name) : array(name)
    {
        array.addField<QString>("name");
        array.addField<QString>("id");
        array.addField<QString>("accelerator");
        array.addField<QString>("accel"); // what a radio list reads
        array.addField<QString>("iconName");
        array.addField<QPixmap>("icon");
        array.addField<bool>("selected");
        array.Publish();
    }
    long add(const QString& name, const QString& id, bool selected = false)
    {
        const long row = array.appendRow();
        array.setValue<QString>(row, "name", name);
        array.setValue<QString>(row, "id", id);
        array.setValue<bool>(row, "selected", selected);
        return row;
    }
    // Read from the field's values: Mve_Array<bool>::at() hands out a
    // reference to a temporary.
    bool selected(long row) const { return array.field<bool>("selected")->values().at(size_t(row)); }
    Mve_RecordArray array;
};

inline QString resourceDir()
{
    return testDataDir() + QStringLiteral("menu/");
}

// A connected stand-alone menu read from the text of a <Menu> element.
inline std::unique_ptr<Mnu_QtManager> menuFromXml(const QString& xml)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(xml)) << xml.toStdString();
    QDomElement root = document.documentElement();
    std::unique_ptr<Mnu_QtManager> manager(new Mnu_QtManager());
    EXPECT_TRUE(manager->setMenus(&root));
    manager->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
    manager->instantiateMenus();
    return manager;
}

// The items as the user sees them: texts, "-" for separators, "[x]" before
// checked items and "(off)" after disabled ones.
inline QStringList items(QMenu* menu)
{
    QStringList texts;
    for (QAction* action : menu->actions()) {
        if (!action->isVisible())
            continue;
        if (action->isSeparator()) {
            texts << QStringLiteral("-");
            continue;
        }
        QString text = action->text();
        if (action->isChecked())
            text.prepend(QStringLiteral("[x]"));
        if (!action->isEnabled())
            text.append(QStringLiteral("(off)"));
        texts << text;
    }
    return texts;
}

// Shows the menu as a user would open it (Qt emits aboutToShow). Qt does
// not show a menu that has no items after that.
inline void open(QMenu* menu)
{
    menu->popup(QPoint(40, 40));
    if (!items(menu).isEmpty()) {
        ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    }
}

inline void close(QMenu* menu)
{
    menu->hide();
    waitFor([menu] { return !menu->isVisible(); });
}

// The items seen when the menu is opened; the menu is closed again.
inline QStringList opened(QMenu* menu)
{
    open(menu);
    const QStringList seen = items(menu);
    close(menu);
    return seen;
}

inline QAction* itemWithText(QMenu* menu, const QString& text)
{
    for (QAction* action : menu->actions()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

// Opens the menu and clicks the item showing text; the menu closes.
inline void choose(QMenu* menu, const QString& text)
{
    open(menu);
    QAction* action = itemWithText(menu, text);
    ASSERT_NE(action, nullptr) << text.toStdString() << " in " << items(menu).join(", ").toStdString();
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
    if (menu->isVisible())
        close(menu);
}

// The messages of a parse, without the managers' trace lines.
inline QStringList parseMessages(const DebugMessageCollector& collector)
{
    QStringList result;
    for (const QString& message : collector.messages()) {
        if (!message.startsWith(QLatin1String("]]]")) && !message.startsWith(QLatin1String("Mnu_QtManager::set"))
            && !message.startsWith(QLatin1String("Mnu_QtManager::removeItem")))
            result << message;
    }
    return result;
}

} // namespace menutest

#endif
