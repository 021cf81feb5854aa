#ifndef KEL_SELECTABLEVIEW_H
#define KEL_SELECTABLEVIEW_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_ContainerViewBase.h"
#include "Mvt_SimpleValue.h"

#include <QColor>

// A container that draws a selection highlight behind its sub-views while a
// bool model holds true, and draws them in the highlighted-text colour then
// (value views without a colour of their own draw in the painter's pen).
// A click that no sub-view takes selects (sets the model to true); a click
// with Ctrl, or Space while the view has the focus, toggles. A refused
// change leaves the view showing the model. Unconnected it is never
// selected; unconnected or read-only (unlike most views, it is not at
// first), clicks do nothing. The model is read at every paint,
// so one view re-used for every row of a list highlights each row's own
// state.
class KELCORE_EXPORT Kel_SelectableView : public Kel_ContainerViewBase
{
public:
    Kel_SelectableView();
    // Copies the sub-views, the specification and the colours; the copy is unconnected.
    Kel_SelectableView(const Kel_SelectableView& other);
    ~Kel_SelectableView() override;

    // Connection specification of the bool model; takes effect at the next makeConnections.
    void setIsSelectedConnectionSpec(const QString& spec) { mSelected.setSpec(spec); }
    QString getIsSelectedConnectionSpec() const { return mSelected.spec(); }
    // The highlight and the text over it; invalid (the default) means the
    // application palette's highlight colours.
    void setHighlightColor(const QColor& color) { mHighlight = color; }
    void setHighlightedTextColor(const QColor& color) { mHighlightedText = color; }
    QColor highlightColor() const;
    QColor highlightedTextColor() const;

    // Whether the model holds true now (false when unconnected).
    bool isSelected() const;
    // Whether the model is connected (else clicks do nothing).
    bool isBound() const { return mSelected.isConnected(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override;
    void mousePressEvent(QMouseEvent* event, const QPoint& local) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Sends selected to the model; repaints either way, so that a refused
    // change shows the model's state again.
    void userSetSelected(bool selected);
    // The model changed: repaint, and tell accessibility clients.
    void selectionNotified();

    Kel_BoundProperty<Mvt_SimpleValue<bool>::Listener> mSelected{this, Kel_BoundPropertyBase::kConnectAlways};
    QColor mHighlight;
    QColor mHighlightedText;
};

#endif
