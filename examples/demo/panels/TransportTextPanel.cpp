// "Timecode, keys and text": a self-contained transport bar whose timecode
// labels follow a running demo clock (29.97 drop frame and 25 non-drop; click
// one and type on the numeric keypad, Enter jumps there), a shortcut editor
// of key edits that writes the custom keymap, and text fields bound to this
// panel's models, one Hebrew and one Arabic, aligned by the right-to-left
// rule, an in-place rename editor and a comment field that grows with its
// text. The Edit menu of the window's menu bar works on the text fields.
#include "DemoPanel.h"

#include "Kel_AutoSizeTextEdit.h"
#include "Kel_ConnectionUtils.h"
#include "Kel_EditMenuTestWindow.h"
#include "Kel_KeyEdit.h"
#include "Kel_KeymapMgr.h"
#include "Kel_Label.h"
#include "Kel_LineEdit.h"
#include "Kel_LineEditPopup.h"
#include "Kel_TCLabel.h"
#include "Kel_TextAlignment.h"
#include "Kel_TextEdit.h"
#include "Kel_Time.h"
#include "Mv_ConnectionDict.h"
#include "Mve_Action.h"
#include "Mve_SimpleValue.h"

#include <QApplication>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <cmath>
#include <memory>
#include <vector>

namespace {

const double kDropFrameRate = 30000.0 / 1001.0;
const int kPalRate = 25;

// 29.97 drop-frame timecode of a frame count: frame numbers 0 and 1 of every
// minute are skipped, except in every tenth minute.
Mv_Timecode dropFrameTimecode(long frame)
{
    const long perTenMinutes = 17982; // 10 * 60 * 30 - 9 * 2
    const long perMinute = 1798;      // 60 * 30 - 2
    const long tens = frame / perTenMinutes;
    const long rest = frame % perTenMinutes;
    frame += 18 * tens + (rest >= 2 ? 2 * ((rest - 2) / perMinute) : 0);
    return Mv_Timecode(quint16(frame / 108000 % 24), quint16(frame / 1800 % 60), quint16(frame / 30 % 60),
                       quint16(frame % 30), 1);
}

long dropFrameNumber(const Mv_Timecode& tc)
{
    const long minutes = 60L * tc.hours + tc.minutes;
    return (minutes * 60 + tc.seconds) * 30 + tc.frames - 2 * (minutes - minutes / 10);
}

// The panel's own models and the clock that drives them.
class TransportTextModels
{
public:
    static TransportTextModels& instance()
    {
        static TransportTextModels models;
        return models;
    }

    void play(bool on)
    {
        playState.setValue(on ? QStringLiteral("playing") : QStringLiteral("stopped"));
        if (on)
            clock.start();
        else
            clock.stop();
    }
    void goTo(const Mv_Timecode& tc)
    {
        seconds = tc.isDropFrame() ? dropFrameNumber(tc) / kDropFrameRate
                                   : ((tc.hours * 60.0 + tc.minutes) * 60.0 + tc.seconds) + double(tc.frames) / kPalRate;
        showTime();
    }
    // Writes the key of one shortcut into the custom keymap.
    void applyShortcut(const QString& id, const QString& action, const QString& keyText)
    {
        Kel_KeymapMgr* keymap = Kel_KeymapMgr::getInstance();
        const QString actionId = QStringLiteral("MainWindow::") + id;
        // The key this shortcut had before goes.
        QMap<QString, Kel_KeymapMgr::KeyMappingInfo>& table = keymap->KeyMap();
        for (auto it = table.begin(); it != table.end();) {
            if (it->actionId == actionId && it->isCustom)
                it = table.erase(it);
            else
                ++it;
        }
        const QKeySequence key = QKeySequence::fromString(keyText, QKeySequence::PortableText);
        if (!key.isEmpty())
            keymap->addOrReplace(key, action, actionId, QString(), QStringLiteral("MainWindow"), id, true);
        customKeymap.setValue(keymap->customKeyMappingsToXml());
    }

    Mve_SimpleValue<Mv_Timecode> positionDropFrame{Mv_Timecode(0, 0, 0, 0, 1), "TransportText.PositionDF"};
    Mve_SimpleValue<Mv_Timecode> position25{Mv_Timecode(), "TransportText.Position25"};
    Mve_SimpleValue<QString> playState{QStringLiteral("stopped"), "TransportText.PlayState"};
    Mve_SimpleValue<QString> mode{QStringLiteral("Source"), "TransportText.Mode"};
    Mve_SimpleValue<double> elapsed{0.0, "TransportText.Elapsed"};
    Mve_Action<void(Mv_Timecode)> gotoTimecode{[this](Mv_Timecode tc) { goTo(tc); }, "MainMonitor.gotoTimecode"};
    Mve_Action<void()> playAction{[this] { play(true); }, "TransportText.Play"};
    Mve_Action<void()> stopAction{[this] { play(false); }, "TransportText.Stop"};
    Mve_Action<void()> rewindAction{[this] { goTo(Mv_Timecode()); }, "TransportText.Rewind"};
    Mve_SimpleValue<QString> playKey{QStringLiteral("Ctrl+Shift+P"), "TransportText.Key.Play"};
    Mve_SimpleValue<QString> stopKey{QStringLiteral("Ctrl+Shift+S"), "TransportText.Key.Stop"};
    Mve_SimpleValue<QString> rewindKey{QStringLiteral("Ctrl+Shift+Home"), "TransportText.Key.Rewind"};
    Mve_SimpleValue<QString> customKeymap{QString(), "TransportText.CustomKeymap"};
    Mve_SimpleValue<QString> clipName{QStringLiteral("Harbour at dawn"), "TransportText.ClipName"};
    Mve_SimpleValue<QString> hebrewTitle{QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d \xd7\xa2\xd7\x95\xd7\x9c\xd7\x9d"),
                                         "TransportText.HebrewTitle"};
    Mve_SimpleValue<QString> arabicNotes{
        QString::fromUtf8("\xd9\x85\xd8\xb1\xd8\xad\xd8\xa8\xd8\xa7 \xd8\xa8\xd8\xa7\xd9\x84\xd8\xb9\xd8\xa7\xd9\x84\xd9\x85\n"
                          "\xd8\xa7\xd9\x84\xd9\x84\xd9\x82\xd8\xb7\xd8\xa9 \xd8\xa7\xd9\x84\xd8\xab\xd8\xa7\xd9\x86\xd9\x8a\xd8\xa9"),
        "TransportText.ArabicNotes"};

private:
    TransportTextModels()
    {
        for (Mv_ModelBase* model : std::vector<Mv_ModelBase*>{
                 &positionDropFrame, &position25, &playState, &mode, &elapsed, &playAction, &stopAction,
                 &rewindAction, &playKey, &stopKey, &rewindKey, &customKeymap, &clipName, &hebrewTitle,
                 &arabicNotes})
            model->Publish();
        // The timecode labels send their entries to this fixed name; a monitor
        // elsewhere in the application may own it already.
        if (!Mv_ConnectionDict::Singleton()->isPublished(gotoTimecode.GetConnectionName()))
            gotoTimecode.Publish();
        clock.setInterval(20);
        QObject::connect(&clock, &QTimer::timeout, [this] {
            seconds += clock.interval() / 1000.0;
            showTime();
        });
    }

    void showTime()
    {
        positionDropFrame.setValue(dropFrameTimecode(long(std::floor(seconds * kDropFrameRate))));
        const long frames = long(std::floor(seconds * kPalRate));
        position25.setValue(Mv_Timecode(quint16(frames / (kPalRate * 3600) % 24), quint16(frames / (kPalRate * 60) % 60),
                                        quint16(frames / kPalRate % 60), quint16(frames % kPalRate)));
        elapsed.setValue(seconds);
    }

    QTimer clock;
    double seconds = 0.0;
};

QGroupBox* transportBar(QWidget* parent)
{
    TransportTextModels& models = TransportTextModels::instance();
    auto* box = new QGroupBox(QStringLiteral("Transport (click a timecode, type on the keypad, Enter jumps)"), parent);
    auto* row = new QHBoxLayout(box);
    auto* play = new QPushButton(QStringLiteral("Play"), box);
    auto* stop = new QPushButton(QStringLiteral("Stop"), box);
    QObject::connect(play, &QPushButton::clicked, [&models] { models.play(true); });
    QObject::connect(stop, &QPushButton::clicked, [&models] { models.play(false); });
    // Reached by Tab, but a click leaves the focus on the timecode being typed into.
    play->setFocusPolicy(Qt::TabFocus);
    stop->setFocusPolicy(Qt::TabFocus);
    row->addWidget(play);
    row->addWidget(stop);
    row->addWidget(new QLabel(QStringLiteral("29.97 DF"), box));
    row->addWidget(new Kel_TCLabel(box, "TransportText.PositionDF", "TransportText.PlayState", "TransportText.Mode", true));
    row->addWidget(new QLabel(QStringLiteral("25 fps"), box));
    row->addWidget(new Kel_TCLabel(box, "TransportText.Position25", "TransportText.PlayState", "TransportText.Mode", true));
    row->addWidget(new QLabel(QStringLiteral("no frames"), box));
    row->addWidget(new Kel_TCLabel(box, "TransportText.Position25", QString(), QString(), false));
    row->addWidget(new QLabel(QStringLiteral("elapsed"), box));
    row->addWidget(new Kel_Time(box, "TransportText.Elapsed", nullptr, false));
    row->addStretch(1);
    return box;
}

QGroupBox* shortcutEditor(QWidget* parent)
{
    auto* box = new QGroupBox(QStringLiteral("Shortcuts (press a combination in a field)"), parent);
    auto* layout = new QHBoxLayout(box);
    auto* form = new QFormLayout;
    struct Shortcut
    {
        const char* id;
        const char* action;
        const char* keyModel;
    };
    const Shortcut shortcuts[] = {{"Play", "TransportText.Play", "TransportText.Key.Play"},
                                  {"Stop", "TransportText.Stop", "TransportText.Key.Stop"},
                                  {"Rewind", "TransportText.Rewind", "TransportText.Key.Rewind"}};
    for (const Shortcut& shortcut : shortcuts) {
        auto* edit = new Kel_KeyEdit(box, QString::fromLatin1(shortcut.id), QString::fromLatin1(shortcut.keyModel));
        const QString id = QString::fromLatin1(shortcut.id);
        const QString action = QString::fromLatin1(shortcut.action);
        const auto apply = [id, action](const QString& key) {
            TransportTextModels::instance().applyShortcut(id, action, key);
        };
        QObject::connect(edit, &QLineEdit::textChanged, apply);
        // Connected here, so the shortcut's first key goes into the keymap at once.
        edit->makeConnections(Mv_ConnectionEnvironment::blankEnvironment());
        apply(edit->text());
        form->addRow(id, edit);
    }
    layout->addLayout(form);
    auto* custom = new Kel_TextEdit(box, QStringLiteral("Custom keymap"), QStringLiteral("TransportText.CustomKeymap"));
    custom->setPlainTextMode(true);
    custom->setReadOnly(true);
    layout->addWidget(custom, 1);
    return box;
}

QGroupBox* textFields(QWidget* parent)
{
    auto* box = new QGroupBox(QStringLiteral("Text bound to models (the Edit menu acts on the focused field)"), parent);
    auto* form = new QFormLayout(box);
    auto* rule = new QComboBox(box);
    rule->addItems({QStringLiteral("Off"), QStringLiteral("First strong character decides"),
                    QStringLiteral("Any right-to-left character decides")});
    rule->setCurrentIndex(Kel_TextAlignment::rtlAlgorithm());
    form->addRow(QStringLiteral("Right-to-left rule"), rule);
    auto* clip = new Kel_LineEdit(box, QStringLiteral("clipName"), QStringLiteral("TransportText.ClipName"));
    form->addRow(QStringLiteral("Clip name"), clip);
    auto* echo = new Kel_Label(box, "clipNameEcho");
    echo->setTextConnectionSpec("TransportText.ClipName");
    auto* rename = new QPushButton(QStringLiteral("Rename in place..."), box);
    auto* echoRow = new QHBoxLayout;
    echoRow->addWidget(echo, 1);
    echoRow->addWidget(rename);
    form->addRow(QStringLiteral("Its model holds"), echoRow);
    // An in-place editor over the label; Enter or leaving it renames, Escape does not.
    auto* popup = new Kel_LineEditPopup(box, "renameClip");
    QObject::connect(rename, &QPushButton::clicked, [popup, echo] {
        popup->popup(QRect(echo->mapTo(popup->parentWidget(), QPoint(0, 0)), echo->size()), echo->text());
    });
    QObject::connect(popup, &Kel_LineEditPopup::accepted,
                     [](const QString& name) { TransportTextModels::instance().clipName.setValue(name); });
    auto* hebrew = new Kel_LineEdit(box, QStringLiteral("hebrewTitle"), QStringLiteral("TransportText.HebrewTitle"));
    form->addRow(QStringLiteral("Hebrew title"), hebrew);
    auto* arabic = new Kel_TextEdit(box, QStringLiteral("Arabic notes"), QStringLiteral("TransportText.ArabicNotes"));
    arabic->setPlainTextMode(true);
    arabic->setMaximumHeight(80);
    form->addRow(QStringLiteral("Arabic notes"), arabic);
    auto* comment = new Kel_AutoSizeTextEdit(box, "comment");
    comment->setPlaceholderText(QStringLiteral("A comment that grows line by line"));
    comment->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    form->addRow(QStringLiteral("Comment"), comment);
    QObject::connect(rule, QOverload<int>::of(&QComboBox::currentIndexChanged), [hebrew, arabic](int index) {
        Kel_TextAlignment::setRTLAlgorithm(Kel_TextAlignment::RTLAlgorithm(index));
        // Re-align the samples under the new rule.
        hebrew->slotAutoAlign(hebrew->text());
        arabic->slotAutoAlign();
    });
    auto* sample = new QPushButton(QStringLiteral("Open the EditMenuTest window"), box);
    QObject::connect(sample, &QPushButton::clicked, [] { Kel_EditMenuTestWindow::open(); });
    form->addRow(QString(), sample);
    return box;
}

QWidget* createTransportTextPanel(QWidget* parent)
{
    TransportTextModels::instance();
    // The samples show their rule from the start.
    if (Kel_TextAlignment::rtlAlgorithm() == Kel_TextAlignment::kRTLOff)
        Kel_TextAlignment::setRTLAlgorithm(Kel_TextAlignment::kRTLFirstStrong);
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(transportBar(page));
    layout->addWidget(shortcutEditor(page));
    layout->addWidget(textFields(page), 1);
    Kel_ConnectionUtils::recursiveConnect(page, Mv_ConnectionEnvironment::blankEnvironment());
    return page;
}

// Starts a keypad entry in the drop-frame label, as a user would.
void typeTimecode(QWidget* page)
{
    const QList<Kel_TCLabel*> labels = page->findChildren<Kel_TCLabel*>();
    if (labels.isEmpty())
        return;
    page->window()->activateWindow();
    labels.first()->setFocus(Qt::MouseFocusReason);
    for (Qt::Key key : {Qt::Key_1, Qt::Key_2, Qt::Key_1, Qt::Key_5}) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::KeypadModifier, QString(QChar('0' + (key - Qt::Key_0))));
        QApplication::sendEvent(labels.first(), &press);
    }
}

const DemoPanelRegistrar registrar({QStringLiteral("Timecode, keys and text"), 450, &createTransportTextPanel,
                                    &typeTimecode});

} // namespace
