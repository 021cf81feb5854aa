#ifndef KEL_TRANSPARENTOVERLAY_H
#define KEL_TRANSPARENTOVERLAY_H

#include "kelcore_export.h"

#include <QPixmap>
#include <QWidget>

class QVariantAnimation;

// A frameless top-level window that shows a pixmap at its top-left corner
// with a given alpha (window opacity), above its owner's window: the
// monitor's play-rate display, a column being dragged in a header. It takes
// neither the focus nor the mouse. Its owner moves, sizes, shows and hides
// it, and deletes it with itself.
class KELCORE_EXPORT Kel_TransparentOverlay : public QWidget
{
    Q_OBJECT

public:
    explicit Kel_TransparentOverlay(QWidget* owner = nullptr);
    ~Kel_TransparentOverlay() override;

    void setPixmap(const QPixmap& pixmap);
    QPixmap pixmap() const { return mPixmap; }

    // Opacity from 0 (invisible) to 255 (opaque). immediately false fades
    // from the current opacity over fadeDuration() ms instead.
    void setAlpha(unsigned short alpha, bool immediately);
    // The alpha last asked for (reached at the end of a fade).
    unsigned short alpha() const { return mAlpha; }

    void setFadeDuration(int ms) { mFadeDuration = ms; }
    int fadeDuration() const { return mFadeDuration; }

    // The pixmap's size.
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap mPixmap;
    unsigned short mAlpha;
    int mFadeDuration;
    QVariantAnimation* mFadeP; // a child: deleted with the overlay
};

#endif
