#include "Kel_TCLabel.h"

#include "Kel_WhatsThis.h"
#include "Ost_Assert.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QPointer>

namespace {

// The digits typed in the current entry. Only the focused label takes
// keys, so one buffer serves every label of the process.
QString& typedDigits()
{
    static QString digits;
    return digits;
}

const char kGotoTimecode[] = "MainMonitor.gotoTimecode";

} // namespace

Kel_TCLabel::Kel_TCLabel(QWidget* parent, QString tcConnectionSpec, QString playConnectionSpec,
                         QString modeConnectionSpec, bool showFrames)
    : QLabel(parent)
    , mShowFrames(showFrames)
    , mPlaying(false)
    , mStoryMode(false)
    , mEditingMode(kNotEditing)
    , mDigitsTyped(0)
    , mPolished(false)
{
    setObjectName(QStringLiteral("TCLabel"));
    setFocusPolicy(Qt::StrongFocus);
    setTextFormat(Qt::AutoText); // the entry's grey and black digits are markup
    setToolTip(tr("Click here to edit timecode"));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_TCLabel");
    mTC.setSpec(tcConnectionSpec);
    mPlay.setSpec(playConnectionSpec);
    mMode.setSpec(modeConnectionSpec);
    mTC.onNotify([this] { receiveTCMessage(); });
    mPlay.onNotify([this] { receivePlayMessage(); });
    mMode.onNotify([this] { receiveModeMessage(); });
    mGotoTimecode.setSpec(QString::fromLatin1(kGotoTimecode));
    updateString(false);
}

Kel_TCLabel::Kel_TCLabel(QWidget* parent, const char* name) : Kel_TCLabel(parent, QString(), QString(), QString(), true)
{
    if (name && *name)
        setObjectName(QString::fromLatin1(name));
}

Kel_TCLabel::~Kel_TCLabel() = default;

void Kel_TCLabel::setShowFrames(bool show)
{
    if (show == mShowFrames)
        return;
    mShowFrames = show;
    if (mPolished)
        polish();
    updateString(true);
}

void Kel_TCLabel::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    Kel_BoundPropertyBase::connectAll(environment, {&mTC, &mPlay, &mMode});
}

void Kel_TCLabel::polish()
{
    mPolished = true;
    const QString widest = mShowFrames ? QStringLiteral("00;00;00;00") : QStringLiteral("00;00;00");
    setFixedWidth(QFontMetrics(font()).horizontalAdvance(widest));
}

bool Kel_TCLabel::event(QEvent* event)
{
    const bool result = QLabel::event(event);
    if (event->type() == QEvent::Polish)
        polish();
    return result;
}

QString Kel_TCLabel::displayText(const Mv_Timecode& timecode, ETCEditingMode mode) const
{
    const QChar separator = timecode.separator();
    QString text = QStringLiteral("%1%2%3%4%5")
                       .arg(timecode.hours, 2, 10, QLatin1Char('0'))
                       .arg(separator)
                       .arg(timecode.minutes, 2, 10, QLatin1Char('0'))
                       .arg(separator)
                       .arg(timecode.seconds, 2, 10, QLatin1Char('0'));
    if (mShowFrames) {
        text += separator;
        text += mPlaying ? QStringLiteral("--") : QStringLiteral("%1").arg(timecode.frames, 2, 10, QLatin1Char('0'));
    }
    if (mode == kEditing && mDigitsTyped >= 1)
        text = formatForEditing(text);
    return text;
}

QString Kel_TCLabel::formatForStory(const Mv_Timecode& timecode, ETCEditingMode mode) const
{
    return displayText(timecode, mode);
}

QString Kel_TCLabel::formatForSource(const Mv_Timecode& timecode, ETCEditingMode mode) const
{
    return displayText(timecode, mode);
}

QString Kel_TCLabel::formatForEditing(const QString& text) const
{
    // The typed digits and the separators among them.
    int k = mDigitsTyped;
    k += (mDigitsTyped >= 3) + (mDigitsTyped >= 5) + (mDigitsTyped >= 7);
    k = qMin(k, text.size());
    return QStringLiteral("<font color=#808080>") + text.left(text.size() - k)
         + QStringLiteral("</font><font color=black>") + text.right(k) + QStringLiteral("</font>");
}

void Kel_TCLabel::updateString(bool repaint)
{
    setText(mStoryMode ? formatForStory(mTimecode, mEditingMode) : formatForSource(mTimecode, mEditingMode));
    if (repaint)
        update();
}

void Kel_TCLabel::startEditing()
{
    mEditingMode = kEditing;
    mSavedTimecode = mTimecode;
    mDigitsTyped = 0;
}

void Kel_TCLabel::endEditing()
{
    mEditingMode = kNotEditing;
    mTimecode = mSavedTimecode; // an entry not sent is thrown away
    mDigitsTyped = 0;
}

void Kel_TCLabel::focusInEvent(QFocusEvent* event)
{
    QLabel::focusInEvent(event);
    startEditing();
    updateString(true);
}

void Kel_TCLabel::focusOutEvent(QFocusEvent* event)
{
    QLabel::focusOutEvent(event);
    endEditing();
    updateString(true);
}

void Kel_TCLabel::strToTimecode(const QString& text, Mv_Timecode& timecode)
{
    const int length = text.size();
    if (length != 6 && length != 8) {
        OST_ASSERT(6 == length || 8 == length);
        return;
    }
    // No range test: "75" seconds are stored as 75.
    const auto pair = [&text](int at) { return quint16(text.mid(at, 2).toUInt()); };
    timecode.hours = pair(0);
    timecode.minutes = pair(2);
    timecode.seconds = pair(4);
    if (length == 8)
        timecode.frames = pair(6);
}

QString Kel_TCLabel::savedDigits() const
{
    QString digits = displayText(mSavedTimecode, kNotEditing);
    digits.remove(QLatin1Char(':'));
    digits.remove(QLatin1Char(';'));
    return digits;
}

void Kel_TCLabel::applyTypedDigits()
{
    const QString base = savedDigits();
    const int origLength = base.size();
    const QString tmp = base.left(origLength - mDigitsTyped) + typedDigits();
    OST_ASSERT(origLength == tmp.length());
    OST_ASSERT(origLength == 8);
    strToTimecode(tmp, mTimecode);
    updateString(true);
}

void Kel_TCLabel::sendTypedTimecode()
{
    const Mv_Timecode entered = mTimecode;
    endEditing();
    QPointer<Kel_TCLabel> self(this);
    if (!mGotoTimecode.connect(Mv_ConnectionEnvironment::blankEnvironment()))
        return;
    mGotoTimecode->call(entered);
    if (!self)
        return;
    startEditing();
    updateString(true);
}

void Kel_TCLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->modifiers() != Qt::KeypadModifier || mEditingMode != kEditing) {
        if (event->key() == Qt::Key_Escape) {
            endEditing();
            updateString(true);
            startEditing();
            return;
        }
        QLabel::keyPressEvent(event);
        return;
    }

    if (mDigitsTyped == 0)
        typedDigits().clear();
    // Six digits without frames, eight with them.
    const int origLength = savedDigits().size();

    const int key = event->key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        if (mDigitsTyped >= origLength)
            return;
        ++mDigitsTyped;
        typedDigits() += QChar(QLatin1Char(char('0' + (key - Qt::Key_0))));
        applyTypedDigits();
        return;
    }
    switch (key) {
    case Qt::Key_Period:
    case Qt::Key_Comma: // the keypad's decimal key on many European layouts
        if (mDigitsTyped < 1)
            return;
        --mDigitsTyped;
        typedDigits().chop(1);
        applyTypedDigits();
        return;
    case Qt::Key_Enter:
        sendTypedTimecode();
        return;
    default:
        QApplication::beep();
        return;
    }
}

void Kel_TCLabel::receiveTCMessage()
{
    if (!mTC.isConnected())
        return;
    const quint16 seconds = mTimecode.seconds;
    mTimecode = mTC->value(mTimecode);
    // While playing the frames show as dashes: only a new second shows.
    if (mPlaying && mTimecode.seconds == seconds)
        return;
    QPointer<Kel_TCLabel> self(this);
    if (mEditingMode == kEditing) {
        focusNextPrevChild(true);
        if (!self)
            return;
    }
    updateString(true);
}

void Kel_TCLabel::receivePlayMessage()
{
    if (!mPlay.isConnected())
        return;
    const bool playing = mPlay->value(QString()) == QLatin1String("playing");
    QPointer<Kel_TCLabel> self(this);
    if (playing && mEditingMode == kEditing) {
        focusNextPrevChild(true);
        if (!self)
            return;
    }
    mPlaying = playing;
    updateString(true);
}

void Kel_TCLabel::receiveModeMessage()
{
    if (!mMode.isConnected())
        return;
    const QString mode = mMode->value(QString());
    mStoryMode = mode == QLatin1String("Story") || mode == QLatin1String("ShotList");
    updateString(true);
}
