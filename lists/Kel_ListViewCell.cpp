#include "Kel_ListViewCell.h"

// Out of line, so that the class's type information lives in the library.
Kel_ListViewCell::~Kel_ListViewCell() = default;
