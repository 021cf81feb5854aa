#include "Kel_PlayButton.h"

#include "Kel_WhatsThis.h"

#include <QPointer>

Kel_PlayButton::Kel_PlayButton(QWidget* parent, const char* name)
    : Kel_ImmediateActionButton(parent, name), mPlaying(false)
{
    mPlayState.onNotify([this] { updatePlayState(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_PlayButton");
}

Kel_PlayButton::~Kel_PlayButton() = default;

void Kel_PlayButton::setPlayingImage(visualState state, const QByteArray& path)
{
    mPlayingNames[state] = path;
    const QPixmap pixmap = loadButtonImage(path, getImageReversed());
    if (pixmap.isNull())
        return; // keeps the previous image, as the stopped images do
    mPlayingPixmaps[state] = pixmap;
    updateGeometry();
    update();
}

void Kel_PlayButton::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_PlayButton> self(this);
    Kel_ImmediateActionButton::makeConnections(environment);
    if (self && mPlayState.connect(environment))
        updatePlayState();
}

void Kel_PlayButton::updatePlayState()
{
    Mv_Variant state;
    mPlayState->SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&state), false);
    bool playing = false;
    // A bool model says it directly; a text model plays when it says "playing".
    if (!state.get(playing))
        playing = state.value<QString>() == QLatin1String("playing");
    if (playing == mPlaying)
        return;
    mPlaying = playing;
    updateGeometry();
    update();
}

const QPixmap& Kel_PlayButton::pixmapForState(visualState state) const
{
    if (mPlaying && !mPlayingPixmaps[state].isNull())
        return mPlayingPixmaps[state];
    return Kel_ImmediateActionButton::pixmapForState(state);
}
