#ifndef KEL_HSTACKVIEW_H
#define KEL_HSTACKVIEW_H

#include "kelcore_export.h"

#include "Kel_StackViewBase.h"

// Sub-views laid side by side, left to right at y 0, each starting where the
// previous one ends; the stack is as wide as their widths together and as
// high as the highest. Used for list rows: one cell view per column.
class KELCORE_EXPORT Kel_HStackView : public Kel_StackViewBase
{
public:
    Kel_HStackView();
    // Clones the laid-out views; proxy views are transient and not copied.
    Kel_HStackView(const Kel_HStackView& other);
    ~Kel_HStackView() override;

    Kel_ViewInterface* clone() override;
};

#endif
