#ifndef KEL_SPRITE_H
#define KEL_SPRITE_H

#include "kelcore_export.h"

#include "Kel_WidgetConnectInterface.h"

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <memory>

class Kel_AnimationTimer;

// An animated bitmap: one image holding the frames of an animation side by
// side (a film strip, frameCount frames of equal width), played in a loop
// while the widget is shown and running. Not bound to a model: a form
// shows it where something moves by itself (a record light, a spinner).
class KELCORE_EXPORT Kel_Sprite : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QString imagePath READ getImagePath WRITE setImagePath)
    Q_PROPERTY(int frameCount READ getFrameCount WRITE setFrameCount)
    Q_PROPERTY(int interval READ getInterval WRITE setInterval)
    Q_PROPERTY(bool running READ isRunning WRITE setRunning)

public:
    explicit Kel_Sprite(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Sprite() override;

    // The strip, relative to the resource path ("Images/Record.png"); a
    // strip that does not load shows nothing.
    void setImagePath(const QString& path);
    QString getImagePath() const { return mImagePath; }
    // Frames in the strip (at least 1); the strip's width divided by it is
    // a frame's width.
    void setFrameCount(int count);
    int getFrameCount() const { return mFrameCount; }
    // Milliseconds between two frames.
    void setInterval(int ms);
    int getInterval() const;
    // Whether the animation plays (while shown); stopped, it shows frame 0.
    void setRunning(bool running);
    bool isRunning() const { return mRunning; }

    // Nothing to connect; present so that forms connect it like the others.
    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    int frame() const { return mFrame; }
    bool isAnimating() const;
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSize frameSize() const;

    QString mImagePath;
    QPixmap mStrip;
    int mFrameCount;
    int mFrame;
    bool mRunning;
    std::unique_ptr<Kel_AnimationTimer> mAnimationP;
};

#endif
