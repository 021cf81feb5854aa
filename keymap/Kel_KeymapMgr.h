#ifndef KEL_KEYMAPMGR_H
#define KEL_KEYMAPMGR_H

#include "kelcore_export.h"

#include "Mv_ConnectionEnvironment.h"
#include "Mvt_Action.h"

#include <QKeySequence>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <boost/shared_ptr.hpp>
#include <memory>

class Kel_MenuCommandInterface;
class QDomDocument;
class QDomElement;
class QKeyEvent;
class TaskSchedulerTask;

// The process-wide keyboard-shortcut table: per keyboard language, what a
// key does in a context (a menu command, an action script or an action
// model), read from keymap files and asked by widgets from their key-press
// handlers. Every change is announced through the action model
// "KeymapsChanged.Action", once per burst of changes.
class KELCORE_EXPORT Kel_KeymapMgr
{
public:
    // What one key does in one context.
    struct KeyMappingInfo
    {
        QString action;       // action model name; "Hotkey|text" in the "Hotkey" context
        QString actionId;     // "<context>::<id>"
        QString description;
        bool isCustom = false; // a user mapping, written by customKeyMappingsToXml()
        QString actionScript;
    };

    // Joins a context and a key text in mapping keys, and the parts of an actionId.
    static constexpr const char* kSeparator = "::";

    Kel_KeymapMgr(const Kel_KeymapMgr&) = delete;
    Kel_KeymapMgr& operator=(const Kel_KeymapMgr&) = delete;

    static Kel_KeymapMgr* getInstance();

    // The folder load() reads from (a "/" is added when missing); empty
    // means the resource path.
    void setKeyMapsDirPath(const QString& dirPath);
    // The menu bar (a Kel_MenuBar) asked for menu-command mappings; not
    // owned, may be null, forgotten when the bar is destroyed.
    void setMenuBar(Kel_MenuCommandInterface* menuBar);

    // Loads baseName into the default table, then every file
    // "<baseName>...-<English language name>.xml" of dirPath into its language's table.
    void loadAll(const QString& dirPath, const QString& baseName);
    // Loads the file name + ".xml" of the keymap folder (else name as a
    // path) into the table of lang (-1: the keyboard's language).
    bool load(const QString& name, int lang = 0);
    // Reads a keymap document held in memory into the table of lang.
    bool loadFromXMLString(const QString& xml, int lang = 0);

    // Sets the entry for (context, sequence) in the current table, replacing
    // a previous one whole; false when sequence or context is empty.
    bool add(const QKeySequence& sequence, const QString& action, const QString& actionId,
             const QString& actionScript, const QString& context, const QString& description, bool isCustom);
    // Overwrites the entry for (context, sequence) if the current table has one, else add().
    bool addOrReplace(const QKeySequence& sequence, const QString& action, const QString& actionId,
                      const QString& actionScript, const QString& context, const QString& description,
                      bool isCustom);
    // Rebinds every entry (of every language) whose actionId is actionId:
    // text becomes its script (isScript) or its action. True if any entry matched.
    bool actionSetup(const QString& actionId, const QString& text, const QString& description, bool isScript);

    // The action of the entry for the key in context, or a null string.
    QString lookup(const QKeyEvent* event, const QString& context, int lang = -1);
    QString lookup(const QKeySequence& sequence, const QString& context, int lang = -1);
    // Reverse lookup: the portable key text of the first entry of context
    // whose action is "<context>|<actionName>"; a null string when none.
    QString lookup(const QString& actionName, const QString& context, int lang = -1);
    // Whether the key is mapped in context to something that can run.
    bool hasAction(const QKeyEvent* event, const QString& context, int lang = -1);
    // Runs what the key is mapped to in context: a menu command, else the
    // script (connected in environment), else the action model. True when
    // the key was used and must not travel further.
    bool handleAction(const QKeyEvent* event, const QString& context,
                      boost::shared_ptr<const Mv_ConnectionEnvironment> environment, int lang = -1);
    // Whether the entry triggers a menu command ("<context>::MenuAction[::<key>]").
    bool isMenuAction(const KeyMappingInfo& info) const;
    // The displayed text of the menu command that a menu-command entry for
    // sequence triggers; empty for other entries or without a menu bar.
    QString getMenuActionLabel(const QKeySequence& sequence, const KeyMappingInfo& info) const;

    // The table in use for lang: its own when a file was loaded for it,
    // else the default table (lang -1: the keyboard's language).
    QMap<QString, KeyMappingInfo>& KeyMap(int lang);
    QMap<QString, KeyMappingInfo>& KeyMap();

    // Removes every entry of context from the current table.
    void removeKeysOfContext(const QString& context);
    // Empties the current table.
    void clearMgr();
    // The custom entries of the current table as a keymap document.
    QString customKeyMappingsToXml();
    // Writes the entries of context (all when empty) to the debug log.
    bool dump(const QString& context = QString(), int lang = -1);

    // Makes lang (-1: the keyboard's language; 9 counts as 0) the current
    // language and returns it.
    int setupCurrentLang(int lang);
    // Whether a file was loaded for lang (-1: the current language).
    bool loaded(int lang) const;
    // The key of a key event: key code and the Shift, Control, Alt and Meta
    // modifiers only, so keypad keys map like the main keyboard's.
    static QKeySequence keySequence(const QKeyEvent* event);

    QString getKeyMapsDirPath() const { return mKeyMapsDirPath; }
    Kel_MenuCommandInterface* getMenuBar() const;
    int getCurrentLang() const { return mCurrentLang; }
    const QList<int>& getLoadedLangs() const { return mLoadedLangs; }

protected:
    // Applications use getInstance(); separate managers are for tests and tools.
    Kel_KeymapMgr();
    // Deletes the listener and a pending notification task.
    ~Kel_KeymapMgr();

private:
    typedef QMap<QString, KeyMappingInfo> Table;

    bool xmlDocParser(const QDomDocument& document);
    bool xmlParser(const QDomElement& root);
    bool parseIncludes(const QDomElement& includes);
    bool parseEntry(const QDomElement& entry, const QString& defaultContext);
    // Reads a parsed document into the table of lang.
    bool parseIntoTable(const QDomDocument& document, int lang);
    void notifyKeymapsChanged();
    void notifyKeymapsChangedTask();

    std::unique_ptr<Mvt_Action<void()>::Listener> mKeymapsChangedListenerP;
    // Made when a notification is due; the scheduler owns and deletes it once
    // it has run, this manager when it goes first.
    TaskSchedulerTask* mNotifyTaskP;
    bool mNotifyPending;
    QString mKeyMapsDirPath;
    int mCurrentLang;
    QMap<int, Table> mKeyMaps;
    QList<int> mLoadedLangs;
    Kel_MenuCommandInterface* mMenuBarP;
    QPointer<QObject> mMenuBarOwnerP; // tells whether mMenuBarP still lives
    QStringList mFilesBeingLoaded; // canonical paths, to refuse include cycles
};

#endif
