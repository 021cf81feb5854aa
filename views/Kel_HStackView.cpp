#include "Kel_HStackView.h"

Kel_HStackView::Kel_HStackView() : Kel_StackViewBase(Qt::Horizontal)
{
}

Kel_HStackView::Kel_HStackView(const Kel_HStackView& other) : Kel_StackViewBase(other)
{
}

Kel_HStackView::~Kel_HStackView() = default;

Kel_ViewInterface* Kel_HStackView::clone()
{
    return new Kel_HStackView(*this);
}
