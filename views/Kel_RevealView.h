#ifndef KEL_REVEALVIEW_H
#define KEL_REVEALVIEW_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_ContainerViewBase.h"
#include "Mvt_SimpleValue.h"

#include <QString>

// A header line with a disclosure triangle and a title, and below it a body
// view that the header shows and hides. A bool model holds whether the body
// is revealed; clicking the header (or Space while the view has the focus)
// sends the opposite, and a refused change leaves the view as the model
// says. Unconnected, the view keeps the state itself (revealed at first) and
// the header toggles it. The view is as high as the header, plus the body
// while revealed, and tells its parent when that changes, so that a
// vertical stack closes up behind a hidden body. Unlike most views it is not
// read-only at first; setReadOnly(true) makes the header inert.
class KELCORE_EXPORT Kel_RevealView : public Kel_ContainerViewBase
{
public:
    Kel_RevealView();
    // Copies the body, the title, the specifications and the own state; the copy is unconnected.
    Kel_RevealView(const Kel_RevealView& other);
    ~Kel_RevealView() override;

    // Connection specification of the bool model; takes effect at the next makeConnections.
    void setRevealStateConnection(const QString& spec) { mRevealed.setSpec(spec); }
    QString getRevealStateConnection() const { return mRevealed.spec(); }
    // The title, or a string model that holds it (the model wins while connected).
    void setTitle(const QString& title);
    QString getTitle() const { return mTitle; }
    void setTitleConnection(const QString& spec) { mTitleModel.setSpec(spec); }
    QString getTitleConnection() const { return mTitleModel.spec(); }

    // Takes ownership of body (replacing and deleting the previous one) and
    // places it below the header, indented as far as the title. Null
    // removes the body.
    void setBody(Kel_ViewInterface* body);
    Kel_ViewInterface* body() const { return mBodyP; }

    // Whether the body is shown now.
    bool isRevealed() const { return mShown; }
    // The text the header shows now.
    QString displayedTitle() const;
    // The height of the header line.
    int headerHeight() const;
    // Lays the header and body out again and resizes the view; call it
    // after changing the body's size directly.
    void relayout();

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override;
    QSize getMinSize() override;
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseReleaseEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseMoveEvent(QMouseEvent* event, const QPoint& local) override;
    void mouseDoubleClickEvent(QMouseEvent* event, const QPoint& local) override;
    void keyPressEvent(QKeyEvent* event) override;
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void removeView(Kel_ViewInterface* view) override;
    bool releaseView(Kel_ViewInterface* view) override;
    void removeAllSubViews() override;

private:
    // Re-reads the models; lays out again when the state changed.
    void updateAppearance();
    void toggle();
    bool inHeader(const QPoint& local) const;
    QSize contentSize() const;

    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mRevealed{this};
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mTitleModel{this};
    QString mTitle;
    bool mOwnState = true; // the state while unconnected
    bool mShown = true;    // what the layout shows
    Kel_ViewInterface* mBodyP = nullptr; // owned as a sub-view
};

#endif
