#include "Kel_VStackView.h"

Kel_VStackView::Kel_VStackView() : Kel_StackViewBase(Qt::Vertical)
{
}

Kel_VStackView::Kel_VStackView(const Kel_VStackView& other) : Kel_StackViewBase(other)
{
}

Kel_VStackView::~Kel_VStackView() = default;

Kel_ViewInterface* Kel_VStackView::clone()
{
    return new Kel_VStackView(*this);
}
