#ifndef KEL_TCLABEL_H
#define KEL_TCLABEL_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mv_Timecode.h"
#include "Mvt_Action.h"
#include "Mvt_SimpleValue.h"

#include <QLabel>
#include <QString>

class QFocusEvent;
class QKeyEvent;

// Shows the timecode of a timecode model (hours, minutes, seconds and
// optionally frames; ";" separators for drop frame) and lets the user type a
// new one on the numeric keypad while it has the focus: digits enter from
// the right, the untyped ones grey, the point key takes the last one back,
// Enter sends the entry to "MainMonitor.gotoTimecode" and Escape throws it
// away. While the play-state model says "playing" the frames show as dashes.
class KELCORE_EXPORT Kel_TCLabel : public QLabel, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QString tcConnection READ getTCConnectionSpec WRITE setTCConnectionSpec)
    Q_PROPERTY(QString playConnection READ getPlayConnectionSpec WRITE setPlayConnectionSpec)
    Q_PROPERTY(QString modeConnection READ getModeConnectionSpec WRITE setModeConnectionSpec)
    Q_PROPERTY(bool showFrames READ getShowFrames WRITE setShowFrames)

public:
    enum ETCEditingMode
    {
        kNotEditing = 0,
        kEditing = 1
    };
    typedef Mvt_Action<void(Mv_Timecode)> GotoTimecodeAction;

    Kel_TCLabel(QWidget* parent, QString tcConnectionSpec, QString playConnectionSpec, QString modeConnectionSpec,
                bool showFrames);
    // The factory's form: unbound, with frames; name (if any) becomes the object name.
    explicit Kel_TCLabel(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_TCLabel() override;

    // Connection specifications; they take effect at the next makeConnections.
    QString getTCConnectionSpec() const { return mTC.spec(); }
    void setTCConnectionSpec(const QString& spec) { mTC.setSpec(spec); }
    QString getPlayConnectionSpec() const { return mPlay.spec(); }
    void setPlayConnectionSpec(const QString& spec) { mPlay.setSpec(spec); }
    QString getModeConnectionSpec() const { return mMode.spec(); }
    void setModeConnectionSpec(const QString& spec) { mMode.setSpec(spec); }
    bool getShowFrames() const { return mShowFrames; }
    // Also refits a polished label to the new width.
    void setShowFrames(bool show);

    // Connects the timecode, play-state and mode models, in that order.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Fixes the width to that of the widest text ("00;00;00;00", or without frames).
    void polish();

    // The shown timecode (while typing, the entry).
    const Mv_Timecode& timecode() const { return mTimecode; }
    bool isPlaying() const { return mPlaying; }
    bool isStoryMode() const { return mStoryMode; }

    // Reads "hhmmss" (frames kept) or "hhmmssff" into timecode; other
    // lengths are reported and change nothing.
    static void strToTimecode(const QString& text, Mv_Timecode& timecode);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

    // The text of timecode for a mode; both modes show the same text.
    QString formatForStory(const Mv_Timecode& timecode, ETCEditingMode mode) const;
    QString formatForSource(const Mv_Timecode& timecode, ETCEditingMode mode) const;
    // Greys the digits not typed yet and blackens the typed ones.
    QString formatForEditing(const QString& text) const;
    void updateString(bool repaint);
    void startEditing();
    void endEditing();

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<Mv_Timecode>::Listener> TimecodeProperty;
    typedef Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> StringProperty;

    void receiveTCMessage();
    void receivePlayMessage();
    void receiveModeMessage();
    QString displayText(const Mv_Timecode& timecode, ETCEditingMode mode) const;
    // The saved timecode's text without separators.
    QString savedDigits() const;
    // The typed digits pushed into the saved timecode from the right.
    void applyTypedDigits();
    void sendTypedTimecode();

    TimecodeProperty mTC{this, TimecodeProperty::kConnectAlways};
    StringProperty mPlay{this, StringProperty::kConnectAlways};
    StringProperty mMode{this, StringProperty::kConnectAlways};
    bool mShowFrames;
    bool mPlaying;
    bool mStoryMode;
    Mv_Timecode mTimecode;
    Mv_Timecode mSavedTimecode;
    ETCEditingMode mEditingMode;
    int mDigitsTyped;
    Kel_BoundProperty<GotoTimecodeAction::Listener> mGotoTimecode{this};
    bool mPolished;
};

#endif
