#ifndef DAK_EDITMENU_H
#define DAK_EDITMENU_H

#include "kelplatform_export.h"

#include <QObject>
#include <QString>
#include <QVector>

class QAction;
class QMenu;
class Dak_Commander;

// The application's Edit menu. It acts on the commander that last took focus:
// before every showing its items are enabled from that commander's
// findCommandStatus, and a chosen item is sent to its obeyCommand.
class KELPLATFORM_EXPORT Dak_EditMenu : public QObject
{
    Q_OBJECT

public:
    // The process-wide menu, created on first use (a QApplication must exist).
    static Dak_EditMenu& instance();

    // The menu to put into a menu bar; it stays owned by Dak_EditMenu.
    QMenu* menu() const { return mMenuP; }
    // The item for a Dak_EditMenuCommander::k... code, or null.
    QAction* action(unsigned int command) const;

    // Makes commander the one the menu acts on.
    void focusInEvent(Dak_Commander* commander);
    // Whether commander should ignore this focus loss: true only when focus
    // goes to a pop-up that is this Edit menu and commander is the current
    // one, so that the menu still acts on it.
    bool isFocusOutEvent(Dak_Commander* commander, bool toPopup);
    Dak_Commander* currentCommander() const { return mCurrentP; }
    // Stops acting on commander if it is the current one.
    void forgetCommander(Dak_Commander* commander);

    // Refreshes the items' enabled state and texts from the current commander.
    void updateActions();

private:
    friend class Dak_Commander;

    Dak_EditMenu();
    ~Dak_EditMenu() override;
    static Dak_EditMenu* existingInstance();
    static void destroyInstance();
    void obey(unsigned int command);

    QMenu* mMenuP;
    QVector<QAction*> mActions;
    QVector<QString> mDefaultTexts;
    Dak_Commander* mCurrentP;
};

#endif
