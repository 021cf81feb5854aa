#include "Kel_KeymapMgr.h"

#include "Kel_KeyboardLanguage.h"
#include "Kel_Logging_p.h"
#include "Kel_MenuCommandInterface.h"
#include "Mv_Variant.h"
#include "Ost_Resource.h"
#include "Ost_StringUtils.h"
#include "TaskScheduler.h"
#include "TaskSchedulerTask.h"
#include "Uip_ParseNode.h"
#include "Uip_ParseScript.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <boost/bind/bind.hpp>

namespace {

const char kRootTag[] = "KeyMappings";
const char kMenuActionId[] = "MenuAction";
const char kChangedActionName[] = "KeymapsChanged.Action";
const char kNotifyTaskName[] = "KeymapsChangedNotifyTask";
const int kNotifyTaskPriority = 10;

QString separator()
{
    return QString::fromLatin1(Kel_KeymapMgr::kSeparator);
}

QString mappingKey(const QString& context, const QKeySequence& sequence)
{
    return context + separator() + sequence.toString(QKeySequence::PortableText);
}

// The context part of a mapping key.
QString contextOfKey(const QString& key)
{
    return key.section(separator(), 0, 0);
}

// The key text part of a mapping key.
QString keyTextOfKey(const QString& key)
{
    const int at = key.indexOf(separator());
    return at < 0 ? QString() : key.mid(at + separator().size());
}

// Only regular files: a device or a pipe named in an include must not make
// the parser read for ever.
bool openRegularFile(QFile& file)
{
    return QFileInfo(file.fileName()).isFile() && file.open(QIODevice::ReadOnly);
}

} // namespace

Kel_KeymapMgr::Kel_KeymapMgr()
    : mKeymapsChangedListenerP(new Mvt_Action<void()>::Listener(QString::fromLatin1(kChangedActionName),
                                                                  Mv_ConnectionEnvironment::blankEnvironment()))
    , mNotifyTaskP(nullptr)
    , mNotifyPending(false)
    , mCurrentLang(0)
    , mMenuBarP(nullptr)
{
}

Kel_KeymapMgr::~Kel_KeymapMgr()
{
    delete mNotifyTaskP;
}

Kel_KeymapMgr* Kel_KeymapMgr::getInstance()
{
    // Lives until the library is unloaded; never replaced.
    static Kel_KeymapMgr instance;
    return &instance;
}

void Kel_KeymapMgr::setKeyMapsDirPath(const QString& dirPath)
{
    mKeyMapsDirPath = dirPath;
    // load() appends the file name directly.
    if (!mKeyMapsDirPath.isEmpty() && !mKeyMapsDirPath.endsWith(QLatin1Char('/'))
        && !mKeyMapsDirPath.endsWith(QLatin1Char('\\')))
        mKeyMapsDirPath += QLatin1Char('/');
}

void Kel_KeymapMgr::setMenuBar(Kel_MenuCommandInterface* menuBar)
{
    mMenuBarP = menuBar;
    mMenuBarOwnerP = menuBar ? menuBar->menuCommandOwner() : nullptr;
}

Kel_MenuCommandInterface* Kel_KeymapMgr::getMenuBar() const
{
    return mMenuBarOwnerP ? mMenuBarP : nullptr;
}

void Kel_KeymapMgr::loadAll(const QString& dirPath, const QString& baseName)
{
    setKeyMapsDirPath(dirPath);
    load(baseName, 0);

    const QMap<QString, int> languages = Kel_KeyboardLanguage::languageNames();
    const QDir dir(mKeyMapsDirPath.isEmpty() ? Ost_Resource::getResourcePath() : mKeyMapsDirPath);
    if (dir.path().isEmpty() || !dir.exists())
        return;
    const QStringList files =
        dir.entryList(QStringList(QStringLiteral("*.xml")), QDir::Files | QDir::Readable, QDir::Name);
    for (QString name : files) {
        if (name.endsWith(QLatin1String(".xml")))
            name.chop(4);
        if (!name.startsWith(baseName))
            continue;
        const int dash = name.indexOf(QLatin1Char('-'));
        if (dash < 0)
            continue;
        const auto language = languages.constFind(name.mid(dash + 1));
        if (language != languages.constEnd())
            load(name, language.value());
    }
}

bool Kel_KeymapMgr::load(const QString& name, int lang)
{
    const QString dir = mKeyMapsDirPath.isEmpty() ? Ost_Resource::getResourcePath() : mKeyMapsDirPath;
    const QString path = dir + name + QStringLiteral(".xml");
    QFile file(path);
    if (!openRegularFile(file)) {
        file.setFileName(name);
        if (name.isEmpty() || !openRegularFile(file)) {
            qCDebug(lcKelKeymap, "Kel_KeymapMgr::load cannot open resource %s", qUtf8Printable(path));
            return false;
        }
    }
    const QString canonicalPath = QFileInfo(file.fileName()).canonicalFilePath();
    if (mFilesBeingLoaded.contains(canonicalPath)) {
        qCDebug(lcKelKeymap, "Kel_KeymapMgr::load, recursive include of %s", qUtf8Printable(file.fileName()));
        return false;
    }

    QDomDocument document;
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(&file, false, &message, &line, &column)) {
        qCDebug(lcKelKeymap, "Kel_KeymapMgr load parse error %s at line %d column %d", qUtf8Printable(message), line,
                column);
        return false;
    }
    file.close();

    mFilesBeingLoaded.append(canonicalPath);
    const bool ok = parseIntoTable(document, lang);
    mFilesBeingLoaded.removeLast();
    return ok;
}

bool Kel_KeymapMgr::loadFromXMLString(const QString& xml, int lang)
{
    QDomDocument document;
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(xml, false, &message, &line, &column)) {
        qCDebug(lcKelKeymap, "Kel_KeymapMgr load parse error %s at line %d column %d", qUtf8Printable(message), line,
                column);
        return false;
    }
    return parseIntoTable(document, lang);
}

bool Kel_KeymapMgr::parseIntoTable(const QDomDocument& document, int lang)
{
    const int savedLang = mCurrentLang;
    const int table = setupCurrentLang(lang);
    // Marked before parsing: the table is in use even if the file then fails.
    if (!mLoadedLangs.contains(table))
        mLoadedLangs.append(table);
    const bool ok = xmlDocParser(document);
    mCurrentLang = savedLang;
    return ok;
}

bool Kel_KeymapMgr::add(const QKeySequence& sequence, const QString& action, const QString& actionId,
                        const QString& actionScript, const QString& context, const QString& description,
                        bool isCustom)
{
    if (sequence.isEmpty() || context.isEmpty() || sequence.toString(QKeySequence::PortableText).isEmpty())
        return false;
    KeyMappingInfo& info = KeyMap()[mappingKey(context, sequence)];
    info.action = action;
    info.actionId = actionId;
    info.description = description;
    info.isCustom = isCustom;
    info.actionScript = actionScript;
    notifyKeymapsChanged();
    return true;
}

bool Kel_KeymapMgr::addOrReplace(const QKeySequence& sequence, const QString& action, const QString& actionId,
                                 const QString& actionScript, const QString& context, const QString& description,
                                 bool isCustom)
{
    Table& table = KeyMap();
    const auto it = table.find(mappingKey(context, sequence));
    if (it == table.end())
        return add(sequence, action, actionId, actionScript, context, description, isCustom);
    it->action = action;
    it->actionId = actionId;
    it->description = description;
    it->isCustom = isCustom;
    it->actionScript = actionScript;
    notifyKeymapsChanged();
    return true;
}

bool Kel_KeymapMgr::actionSetup(const QString& actionId, const QString& text, const QString& description,
                                bool isScript)
{
    bool changed = false;
    for (Table& table : mKeyMaps) {
        for (KeyMappingInfo& info : table) {
            if (info.actionId != actionId)
                continue;
            (isScript ? info.actionScript : info.action) = text;
            info.description = description;
            changed = true;
        }
    }
    if (changed)
        notifyKeymapsChanged();
    return changed;
}

QString Kel_KeymapMgr::lookup(const QKeyEvent* event, const QString& context, int lang)
{
    return lookup(keySequence(event), context, lang);
}

QString Kel_KeymapMgr::lookup(const QKeySequence& sequence, const QString& context, int lang)
{
    const Table& table = KeyMap(lang);
    const auto it = table.constFind(mappingKey(context, sequence));
    return it == table.constEnd() ? QString() : it->action;
}

QString Kel_KeymapMgr::lookup(const QString& actionName, const QString& context, int lang)
{
    if (actionName.isEmpty() || context.isEmpty())
        return QString();
    const Table& table = KeyMap(lang);
    const QString wanted = context + QLatin1Char('|') + actionName;
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        if (it->action == wanted && contextOfKey(it.key()) == context)
            return keyTextOfKey(it.key());
    }
    return QString();
}

bool Kel_KeymapMgr::hasAction(const QKeyEvent* event, const QString& context, int lang)
{
    const Table& table = KeyMap(lang);
    const auto it = table.constFind(mappingKey(context, keySequence(event)));
    if (it == table.constEnd())
        return false;
    return !it->action.isEmpty() || !it->actionScript.isEmpty() || isMenuAction(*it);
}

bool Kel_KeymapMgr::handleAction(const QKeyEvent* event, const QString& context,
                                 boost::shared_ptr<const Mv_ConnectionEnvironment> environment, int lang)
{
    const QKeySequence sequence = keySequence(event);
    const Table& table = KeyMap(lang);
    const auto it = table.constFind(mappingKey(context, sequence));
    if (it == table.constEnd())
        return false;
    // Copied: running the mapping may change the table.
    const KeyMappingInfo info = *it;
    if (!environment)
        environment = Mv_ConnectionEnvironment::blankEnvironment();

    if (isMenuAction(info)) {
        const QString target = info.actionId.section(separator(), 2, 2);
        const QKeySequence accelerator =
            target.isEmpty() ? sequence : QKeySequence::fromString(target, QKeySequence::PortableText);
        if (Kel_MenuCommandInterface* bar = getMenuBar())
            bar->triggerMenuCommand(accelerator);
        // The key belongs to the menu even while its command is disabled.
        return true;
    }

    if (!info.actionScript.isEmpty()) {
        std::unique_ptr<Uip_ParseNode> script(Uip_ParseScript(info.actionScript, nullptr));
        if (!script || !script->ConnectAndTypeCheck(environment, nullptr))
            return false;
        Mv_Variant result;
        script->Evaluate(&result);
        return true;
    }

    if (!info.action.isEmpty()) {
        Mvt_Action<bool()>::Listener action(info.action, environment);
        if (!action.isConnectedToModel() || !action.isEnabled())
            return false;
        action.trigger(Mvt_Action_API::ArgumentList());
        return true;
    }
    return false;
}

bool Kel_KeymapMgr::isMenuAction(const KeyMappingInfo& info) const
{
    return info.actionId.section(separator(), 1, 1) == QLatin1String(kMenuActionId);
}

QString Kel_KeymapMgr::getMenuActionLabel(const QKeySequence& sequence, const KeyMappingInfo& info) const
{
    Kel_MenuCommandInterface* bar = getMenuBar();
    if (!isMenuAction(info) || !bar)
        return QString();
    const QString target = info.actionId.section(separator(), 2, 2);
    const QKeySequence accelerator =
        target.isEmpty() ? sequence : QKeySequence::fromString(target, QKeySequence::PortableText);
    return bar->menuCommandText(accelerator);
}

QMap<QString, Kel_KeymapMgr::KeyMappingInfo>& Kel_KeymapMgr::KeyMap(int lang)
{
    if (lang < 0)
        lang = setupCurrentLang(-1);
    // A language file replaces the default table whole.
    if (lang != 9 && mLoadedLangs.contains(lang))
        return mKeyMaps[lang];
    return mKeyMaps[0];
}

QMap<QString, Kel_KeymapMgr::KeyMappingInfo>& Kel_KeymapMgr::KeyMap()
{
    return KeyMap(mCurrentLang);
}

void Kel_KeymapMgr::removeKeysOfContext(const QString& context)
{
    Table& table = KeyMap();
    const QString prefix = context + separator();
    bool removed = false;
    for (auto it = table.begin(); it != table.end();) {
        if (it.key().startsWith(prefix)) {
            it = table.erase(it);
            removed = true;
        } else {
            ++it;
        }
    }
    if (removed)
        notifyKeymapsChanged();
}

void Kel_KeymapMgr::clearMgr()
{
    KeyMap().clear();
    notifyKeymapsChanged();
}

QString Kel_KeymapMgr::customKeyMappingsToXml()
{
    QDomDocument document;
    QDomElement root = document.createElement(QString::fromLatin1(kRootTag));
    document.appendChild(root);
    QDomElement entries = document.createElement(QStringLiteral("Entries"));
    root.appendChild(entries);

    const auto addText = [&document](QDomElement& parent, const QString& tag, const QString& text) {
        QDomElement element = document.createElement(tag);
        element.appendChild(document.createTextNode(text));
        parent.appendChild(element);
    };
    const Table& table = KeyMap();
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        if (!it->isCustom)
            continue;
        // Custom mappings bind keys to named actions only: no identifier,
        // script or description is written.
        QDomElement entry = document.createElement(QStringLiteral("Entry"));
        addText(entry, QStringLiteral("KeySequence"), keyTextOfKey(it.key()));
        addText(entry, QStringLiteral("Context"), contextOfKey(it.key()));
        addText(entry, QStringLiteral("Action"), it->action);
        entry.appendChild(document.createElement(QStringLiteral("CustomKeyMapping")));
        entries.appendChild(entry);
    }
    return document.toString(1);
}

bool Kel_KeymapMgr::dump(const QString& context, int lang)
{
    // The table first: with lang -1 it moves the current language, which the header reports.
    const Table& table = KeyMap(lang);
    const QString prefix = context + separator();
    qCDebug(lcKelKeymap, "================================================");
    qCDebug(lcKelKeymap, "Dump Key Mappings: (lang = %d)", lang < 0 ? mCurrentLang : lang);
    qCDebug(lcKelKeymap, " - - - - - - - - - - - - - - - - - - - - - - - -");
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        if (!context.isEmpty() && !it.key().startsWith(prefix))
            continue;
        const QString line = it.key().leftJustified(20) + it->actionId.left(30) + it->action.left(50);
        qCDebug(lcKelKeymap, "%s", qUtf8Printable(line));
    }
    qCDebug(lcKelKeymap, "Total Key Mappings found: %d", int(table.size()));
    qCDebug(lcKelKeymap, "================================================");
    return true;
}

int Kel_KeymapMgr::setupCurrentLang(int lang)
{
    if (lang < 0)
        lang = Kel_KeyboardLanguage::currentLanguage();
    // English keyboards use the default table.
    mCurrentLang = lang == 9 ? 0 : lang;
    return mCurrentLang;
}

bool Kel_KeymapMgr::loaded(int lang) const
{
    return mLoadedLangs.contains(lang < 0 ? mCurrentLang : lang);
}

QKeySequence Kel_KeymapMgr::keySequence(const QKeyEvent* event)
{
    if (!event)
        return QKeySequence();
    int key = event->key();
    if (key == 0 && event->text().size() == 1)
        key = event->text().at(0).unicode();
    if (key == 0 || key == Qt::Key_unknown)
        return QKeySequence();
    // Keypad and group-switch modifiers are dropped: a keypad digit maps
    // like a main-keyboard digit.
    const Qt::KeyboardModifiers modifiers =
        event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return QKeySequence(key | int(modifiers));
}

bool Kel_KeymapMgr::xmlDocParser(const QDomDocument& document)
{
    const QDomElement root = document.documentElement();
    if (root.tagName() != QLatin1String(kRootTag)) {
        qCDebug(lcKelKeymap, "Kel_KeymapMgr::xmlDocParser, unexpected top-level tag <%s>",
                qUtf8Printable(root.tagName()));
        return false;
    }
    return xmlParser(root);
}

bool Kel_KeymapMgr::xmlParser(const QDomElement& root)
{
    for (QDomElement element = root.firstChildElement(); !element.isNull(); element = element.nextSiblingElement()) {
        const QString tag = element.tagName();
        if (tag == QLatin1String("Includes")) {
            if (!parseIncludes(element))
                return false;
        } else if (tag == QLatin1String("Entries")) {
            const QString context = element.attribute(QStringLiteral("Context"));
            for (QDomElement entry = element.firstChildElement(); !entry.isNull();
                 entry = entry.nextSiblingElement()) {
                if (entry.tagName() != QLatin1String("Entry")) {
                    qCDebug(lcKelKeymap, "Kel_KeymapMgr::xmlParser, unexpected tag <%s>",
                            qUtf8Printable(entry.tagName()));
                    return false;
                }
                if (!parseEntry(entry, context))
                    return false;
            }
        } else {
            qCDebug(lcKelKeymap, "Kel_KeymapMgr::xmlParser, unexpected tag <%s>", qUtf8Printable(tag));
            return false;
        }
    }
    return true;
}

bool Kel_KeymapMgr::parseIncludes(const QDomElement& includes)
{
    for (QDomElement file = includes.firstChildElement(); !file.isNull(); file = file.nextSiblingElement()) {
        if (file.tagName() != QLatin1String("File")) {
            qCDebug(lcKelKeymap, "Kel_KeymapMgr::parseIncludes, unexpected tag <%s>", qUtf8Printable(file.tagName()));
            return false;
        }
        // Into the table being filled, which is the current one while loading.
        if (!load(file.text().trimmed(), mCurrentLang))
            return false;
    }
    return true;
}

bool Kel_KeymapMgr::parseEntry(const QDomElement& entry, const QString& defaultContext)
{
    QString id = entry.attribute(QStringLiteral("id"));
    QString keyText = entry.attribute(QStringLiteral("key"));
    QString context = defaultContext;
    KeyMappingInfo info;
    for (QDomElement child = entry.firstChildElement(); !child.isNull(); child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        if (tag == QLatin1String("Action"))
            info.action = Ost_StringUtils::throughLocal8Bit(child.text());
        else if (tag == QLatin1String("ActionID"))
            id = Ost_StringUtils::throughLocal8Bit(child.text());
        else if (tag == QLatin1String("ActionScript"))
            info.actionScript = Ost_StringUtils::throughLocal8Bit(child.text());
        else if (tag == QLatin1String("KeySequence"))
            keyText = Ost_StringUtils::throughLocal8Bit(child.text());
        else if (tag == QLatin1String("Context"))
            context = Ost_StringUtils::throughLocal8Bit(child.text());
        else if (tag == QLatin1String("Description"))
            info.description = child.text();
        else if (tag == QLatin1String("CustomKeyMapping"))
            info.isCustom = true;
    }
    if (keyText.isEmpty()) {
        qCDebug(lcKelKeymap, "Kel_KeymapMgr::parseEntry, missing tag KeySequence");
        return false;
    }
    if (context.isEmpty()) {
        qCDebug(lcKelKeymap, "Kel_KeymapMgr::parseEntry, missing tag Context");
        return false;
    }
    // Key texts are read in the portable form on every platform, so that one
    // file means the same keys everywhere. An unreadable text gives an empty
    // sequence, which add() refuses without failing the file.
    const QKeySequence sequence(keyText, QKeySequence::PortableText);
    add(sequence, info.action, context + separator() + id, info.actionScript, context, info.description,
        info.isCustom);
    return true;
}

void Kel_KeymapMgr::notifyKeymapsChanged()
{
    if (mNotifyPending)
        return;
    if (!mNotifyTaskP)
        mNotifyTaskP = new TaskSchedulerTask(QString::fromLatin1(kNotifyTaskName), kNotifyTaskPriority,
                                             boost::bind(&Kel_KeymapMgr::notifyKeymapsChangedTask, this), true,
                                             false);
    TaskScheduler::instance()->addTask(mNotifyTaskP, false);
    mNotifyPending = true;
}

void Kel_KeymapMgr::notifyKeymapsChangedTask()
{
    // The scheduler owns and deletes the task once it has run.
    mNotifyTaskP = nullptr;
    mNotifyPending = false;
    if (mKeymapsChangedListenerP && mKeymapsChangedListenerP->isConnectedToModel())
        mKeymapsChangedListenerP->trigger(Mvt_Action_API::ArgumentList());
}
