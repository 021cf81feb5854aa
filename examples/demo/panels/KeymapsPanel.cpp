// "Keymaps": the mappings the window loaded from resources/Keymaps/
// (DemoKeys.xml, its include and its German variant) and what the last key
// pressed in the window did. The window itself offers its keys to the keymap.
#include "DemoPanel.h"

#include "Kel_KeyboardLanguage.h"
#include "Kel_KeymapMgr.h"
#include "Mve_Action.h"
#include "Mvt_SimpleValue.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

const char kContext[] = "MainWindow";
const int kGermanKeyboard = 7;

// What an entry does, in words.
QString describe(const QKeySequence& key, const Kel_KeymapMgr::KeyMappingInfo& info)
{
    Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
    if (keymap->isMenuAction(info)) {
        const QString label = keymap->getMenuActionLabel(key, info);
        return label.isEmpty() ? QStringLiteral("menu command (none at the moment)")
                               : QStringLiteral("menu command \"%1\"").arg(QString(label).remove(QLatin1Char('&')));
    }
    if (!info.actionScript.isEmpty())
        return QStringLiteral("script %1").arg(info.actionScript);
    if (!info.action.isEmpty())
        return QStringLiteral("action %1").arg(info.action);
    return QStringLiteral("nothing");
}

class KeymapsPage : public QWidget
{
public:
    explicit KeymapsPage(QWidget* parent)
        : QWidget(parent)
        , mTableP(new QLabel(this))
        , mListP(new QTreeWidget(this))
        , mLastKeyP(new QLabel(this))
        , mChanged([this] { refreshList(); }, "KeymapsChanged.Action")
        , mLastKey("Keymaps.LastKey")
        , mLastKeyUsed("Keymaps.LastKeyUsed")
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(new QLabel(QStringLiteral("Keys that no widget uses reach the window, which offers them to "
                                                    "Kel_KeymapMgr in the context \"MainWindow\"."),
                                     this));
        auto* german = new QCheckBox(QStringLiteral("German keyboard layout (uses DemoKeys-German.xml)"), this);
        connect(german, &QCheckBox::toggled, this, [this](bool on) {
            Kel_KeyboardLanguage::setCurrentLanguageOverride(on ? kGermanKeyboard : -1);
            refreshList();
        });
        layout->addWidget(german);
        layout->addWidget(mTableP);
        mListP->setHeaderLabels({QStringLiteral("Key"), QStringLiteral("Does"), QStringLiteral("Description")});
        mListP->setRootIsDecorated(false);
        mListP->setFocusPolicy(Qt::NoFocus); // leaves the keys to the window
        mListP->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        layout->addWidget(mListP, 1);
        layout->addWidget(mLastKeyP);

        // The keymap announces its changes through this action.
        mChanged.Publish();
        const auto refreshLastKey = [this](const Mv_MessageInterface&) { refreshLastKeyText(); };
        mLastKey.setReceiveMessageCB(refreshLastKey);
        mLastKeyUsed.setReceiveMessageCB(refreshLastKey);
        mLastKey.connect(Mv_ConnectionEnvironment::blankEnvironment());
        mLastKeyUsed.connect(Mv_ConnectionEnvironment::blankEnvironment());
        refreshList();
    }

private:
    void refreshList()
    {
        Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
        const QMap<QString, Kel_KeymapMgr::KeyMappingInfo>& table = keymap->KeyMap(-1);
        QStringList languages;
        for (int lang : keymap->getLoadedLangs())
            languages << QString::number(lang);
        mTableP->setText(QStringLiteral("Tables loaded: %1. The keyboard uses table %2.")
                             .arg(languages.join(QStringLiteral(", ")))
                             .arg(keymap->loaded(-1) ? keymap->getCurrentLang() : 0));
        mListP->clear();
        const QString prefix = QString::fromLatin1(kContext) + QString::fromLatin1(Kel_KeymapMgr::kSeparator);
        for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
            if (!it.key().startsWith(prefix))
                continue;
            const QString keyText = it.key().mid(prefix.size());
            const QString custom = it->isCustom ? QStringLiteral(" (custom)") : QString();
            mListP->addTopLevelItem(new QTreeWidgetItem(
                {keyText, describe(QKeySequence::fromString(keyText, QKeySequence::PortableText), *it),
                 it->description + custom}));
        }
        refreshLastKeyText();
    }

    void refreshLastKeyText()
    {
        const QString key = mLastKey.value(QString());
        if (key.isEmpty()) {
            mLastKeyP->setText(QStringLiteral("Last key: none yet. Try F5, F8, F9 or F11."));
            return;
        }
        Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
        const QKeySequence sequence = QKeySequence::fromString(key, QKeySequence::PortableText);
        const auto& table = keymap->KeyMap(-1);
        const auto it =
            table.constFind(QString::fromLatin1(kContext) + QString::fromLatin1(Kel_KeymapMgr::kSeparator) + key);
        const QString does = it == table.constEnd() ? QStringLiteral("not mapped") : describe(sequence, *it);
        mLastKeyP->setText(QStringLiteral("Last key: %1, %2, %3.")
                               .arg(key, does,
                                    mLastKeyUsed.value(false) ? QStringLiteral("used by the keymap")
                                                              : QStringLiteral("passed on")));
    }

    QLabel* mTableP;
    QTreeWidget* mListP;
    QLabel* mLastKeyP;
    Mve_Action<void()> mChanged;
    Mvt_SimpleValue<QString>::Listener mLastKey;
    Mvt_SimpleValue<bool>::Listener mLastKeyUsed;
};

QWidget* createKeymapsPanel(QWidget* parent)
{
    return new KeymapsPage(parent);
}

// Presses a menu-command key and a script key in the window, as a user would.
void pressKeys(QWidget* page)
{
    for (Qt::Key key : {Qt::Key_F5, Qt::Key_F8}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(page->window(), &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
        QApplication::sendEvent(page->window(), &release);
    }
}

const DemoPanelRegistrar registrar({QStringLiteral("Keymaps"), 350, &createKeymapsPanel, &pressKeys});

} // namespace
