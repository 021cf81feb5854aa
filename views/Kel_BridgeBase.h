#ifndef KEL_BRIDGEBASE_H
#define KEL_BRIDGEBASE_H

#include "kelcore_export.h"

#include <QColor>
#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QString>

class Kel_ViewInterface;
class QPainter;
class QWidget;

// What the bridge widgets share: the hosted view (owned), the background
// they paint behind it, and the dotted names of what lies under a point.
class KELCORE_EXPORT Kel_BridgeBase
{
public:
    // widget is the bridge itself; it is not owned.
    explicit Kel_BridgeBase(QWidget* widget);
    virtual ~Kel_BridgeBase();

    // Takes ownership of view, out of the container that held it; a view
    // hosted before is deleted. The bridge widgets also make themselves its
    // parent and fit themselves to it.
    virtual void setChild(Kel_ViewInterface* view);
    Kel_ViewInterface* getChild() const { return mChildP; }

    // Filled behind the view.
    void setBridgeBackgroundColor(const QColor& color);
    // Drawn behind the view, over the colour: repeated from the top-left
    // corner when tiled, else scaled to the whole area.
    void setBridgeBackgroundPixmap(const QPixmap& pixmap, bool tiled);

    // The bridge's object name, followed by "." and the hosted view's dotted
    // name when the view lies under point (bridge coordinates). The dot is
    // left out when the bridge has no name.
    virtual QString findUiName(const QPoint& point);
    // Where dottedName (the bridge's name first, unless it has none) lies on
    // the screen: the bridge's own rectangle for its name alone, or a 1x1
    // rectangle at the centre of the named view; a null rectangle when
    // nothing has that name.
    virtual QRect findPoi(const QString& dottedName);

    // The widget the hosted view is painted on: the bridge itself, or the
    // content widget of a scroll area.
    QWidget* viewHost() const { return viewHostWidget(); }

    // Keyboard focus among the hosted views. The views that accept focus,
    // depth first in reading order (what Tab walks through).
    QList<Kel_ViewInterface*> focusableViews() const;
    // The innermost view accepting focus on the path that key presses take
    // from the hosted view (each container's focus view), or null.
    Kel_ViewInterface* focusedView() const;
    // Makes key presses reach view, a view of the hosted tree (others are
    // ignored); moves the focus frame and tells accessibility clients.
    void setFocusedView(Kel_ViewInterface* view);
    // Moves the focus to the next (or previous) focusable view; false when
    // there is none that way, so that the focus can leave the bridge.
    bool focusNextView(bool next);

protected:
    // Member-wise, as bridges never are copied themselves (they are widgets).
    Kel_BridgeBase(const Kel_BridgeBase&) = default;
    Kel_BridgeBase& operator=(const Kel_BridgeBase&) = default;

    // The widget in whose coordinates the view lives: the bridge itself, or
    // the content widget of a scroll area.
    virtual QWidget* viewHostWidget() const { return mWidgetP; }
    // Fills area with the background colour and picture, when set.
    void paintBackground(QPainter& painter, const QRect& area) const;
    // Deletes the hosted view; bridges call it from their destructors, while
    // the widget is still whole, in case the view talks to it on its way out.
    void deleteChild();
    // Gives up the hosted view without deleting it, when it is view (then
    // true); the view keeps no parent.
    bool releaseChild(Kel_ViewInterface* view);
    // The host got the keyboard focus: Tab enters at the first focusable
    // view, Backtab at the last; otherwise the focused view stays (the
    // first one when none was, unless a click is giving the focus).
    void focusEntered(Qt::FocusReason reason);
    // After input that may have moved the focus among the views: repaints
    // the focus frame and tells accessibility clients when it moved.
    void focusMayHaveChanged();
    // A dotted frame around the focused view while the host has the focus
    // (not around the hosted view itself, which shows its own focus).
    void paintFocusFrame(QPainter& painter) const;
    // The focused view's rectangle (host coordinates) should be seen.
    virtual void showFocusedRect(const QRect&) {}

    Kel_ViewInterface* mChildP;
    bool mTiled;
    QPixmap mBackgroundPixmap;
    bool mHasBackgroundColor;
    QColor mBackgroundColor;
    QWidget* mWidgetP;

private:
    // The focused view last reported; compared, never used.
    const Kel_ViewInterface* mReportedFocusP = nullptr;
};

#endif
