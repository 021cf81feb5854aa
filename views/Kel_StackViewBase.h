#ifndef KEL_STACKVIEWBASE_H
#define KEL_STACKVIEWBASE_H

#include "kelcore_export.h"

#include "Kel_ContainerViewBase.h"

#include <Qt>
#include <vector>

// Sub-views laid one after the other along one axis, each starting where
// the previous one ends: side by side from the left (Kel_HStackView, list
// rows with one cell per column) or one below the other from the top
// (Kel_VStackView). The stack is as long as its views together and as thick
// as the thickest.
//
// Besides the laid-out views, a stack can show proxy views (for instance the
// stand-ins of a column being dragged): sub-views that stay where they are
// put and do not count in the indexes, so that cell addressing is unaffected.
class KELCORE_EXPORT Kel_StackViewBase : public Kel_ContainerViewBase
{
public:
    Kel_StackViewBase& operator=(const Kel_StackViewBase&) = delete;
    ~Kel_StackViewBase() override;

    Qt::Orientation orientation() const { return mOrientation; }

    // Number of laid-out views.
    int count() const { return int(mStack.size()); }
    // The view at index (0 is leftmost or topmost), or null when out of range.
    Kel_ViewInterface* viewAt(int index) const;
    // The index of view, or -1 when it is not laid out here.
    int indexOf(const Kel_ViewInterface* view) const;

    // Takes ownership of view and appends it (a view already here, or null, is ignored).
    void AddSubView(Kel_ViewInterface* view) override;
    // Takes ownership of view and inserts it before index; an index outside
    // [0, count()] is clamped into it, so the view is never lost.
    void insertView(int index, Kel_ViewInterface* view);
    // Deletes the view at index; out of range does nothing.
    void removeViewAt(int index);
    // Moves the view at from so that it ends up at index to; the others keep
    // their order. Out of range does nothing.
    void moveView(int from, int to);

    // Takes ownership of a proxy view, shown at its own origin and z-order.
    void addProxyView(Kel_ViewInterface* view);
    void clearProxyViews();
    int proxyCount() const { return int(mProxies.size()); }

    // Places the views again and updates the stack's size, telling the
    // parent when it changed; call it after resizing cells directly.
    void relayout();

    // The extent of the laid-out views, never less than the stored minimum.
    QSize getMinSize() override;
    // A laid-out view changed size: the stack re-lays itself.
    void childSizeChanged(Kel_ViewInterface* child, QSize newSize, QSize oldSize) override;
    void removeView(Kel_ViewInterface* view) override;
    // The cells after a released view close up.
    bool releaseView(Kel_ViewInterface* view) override;
    void removeAllSubViews() override;

protected:
    explicit Kel_StackViewBase(Qt::Orientation orientation);
    // Clones the laid-out views; proxy views are transient and not copied.
    Kel_StackViewBase(const Kel_StackViewBase& other);

private:
    QSize contentSize() const;
    // Drops view from the laid-out cells or the proxies; true for a cell.
    bool forget(Kel_ViewInterface* view);

    Qt::Orientation mOrientation;
    std::vector<Kel_ViewInterface*> mStack;   // in layout order; owned through the container
    std::vector<Kel_ViewInterface*> mProxies; // owned through the container
};

#endif
