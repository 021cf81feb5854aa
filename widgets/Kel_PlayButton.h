#ifndef KEL_PLAYBUTTON_H
#define KEL_PLAYBUTTON_H

#include "kelcore_export.h"

#include "Kel_ImmediateActionButton.h"

// The transport's play button: an immediate action button (its script runs
// on press) that also follows a play-state model and, while it says the
// transport plays, draws its "playing" images (typically a pause or stop
// symbol) instead of its own. The play state may be a string model
// ("playing", "stopped", "cueing", as the main monitor publishes it) or a
// bool model; without a connected model the button shows as stopped. A
// playing image that is not given falls back to the stopped one.
class KELCORE_EXPORT Kel_PlayButton : public Kel_ImmediateActionButton
{
    Q_OBJECT
    Q_PROPERTY(QByteArray playStateConnection READ getPlayStateConnSpec WRITE setPlayStateConnSpec)
    Q_PROPERTY(QByteArray playingNormalImage READ getPlayingNormalImage WRITE setPlayingNormalImage)
    Q_PROPERTY(QByteArray playingTrackingImage READ getPlayingTrackingImage WRITE setPlayingTrackingImage)
    Q_PROPERTY(QByteArray playingDisabledImage READ getPlayingDisabledImage WRITE setPlayingDisabledImage)

public:
    explicit Kel_PlayButton(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_PlayButton() override;

    // The play-state specification; it takes effect at the next makeConnections.
    void setPlayStateConnSpec(const QByteArray& spec) { mPlayState.setSpec(QString::fromUtf8(spec)); }
    QByteArray getPlayStateConnSpec() const { return mPlayState.spec().toUtf8(); }

    // Images drawn while playing, by visual state (paths relative to the resource path).
    void setPlayingNormalImage(const QByteArray& path) { setPlayingImage(kNormalState, path); }
    QByteArray getPlayingNormalImage() const { return mPlayingNames[kNormalState]; }
    void setPlayingTrackingImage(const QByteArray& path) { setPlayingImage(kTrackingState, path); }
    QByteArray getPlayingTrackingImage() const { return mPlayingNames[kTrackingState]; }
    void setPlayingDisabledImage(const QByteArray& path) { setPlayingImage(kDisabledState, path); }
    QByteArray getPlayingDisabledImage() const { return mPlayingNames[kDisabledState]; }

    // Connects what the immediate button connects, then the play state.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the play state and repaints.
    void updatePlayState();

    bool isPlaying() const { return mPlaying; }

protected:
    const QPixmap& pixmapForState(visualState state) const override;

private:
    void setPlayingImage(visualState state, const QByteArray& path);

    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mPlayState{this};
    QByteArray mPlayingNames[kVisualStateCount];
    QPixmap mPlayingPixmaps[kVisualStateCount];
    bool mPlaying;
};

#endif
