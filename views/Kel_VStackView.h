#ifndef KEL_VSTACKVIEW_H
#define KEL_VSTACKVIEW_H

#include "kelcore_export.h"

#include "Kel_StackViewBase.h"

// Sub-views laid one below the other, top to bottom at x 0, each starting
// where the previous one ends; the stack is as high as their heights
// together and as wide as the widest. Sections of a panel, reveal groups.
class KELCORE_EXPORT Kel_VStackView : public Kel_StackViewBase
{
public:
    Kel_VStackView();
    // Clones the laid-out views; proxy views are transient and not copied.
    Kel_VStackView(const Kel_VStackView& other);
    ~Kel_VStackView() override;

    Kel_ViewInterface* clone() override;
};

#endif
