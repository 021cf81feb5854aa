#ifndef KEL_BOUNDFONT_H
#define KEL_BOUNDFONT_H

#include "kelcore_export.h"

#include <QByteArray>

class QWidget;

// A widget's named font (its fontConnection property): a key of the font
// manager rather than a model. Setting a new, non-empty key gives the widget
// that font at once; an unknown key gives the default font and adds the key.
class KELCORE_EXPORT Kel_BoundFont
{
public:
    explicit Kel_BoundFont(QWidget* widget) : mWidgetP(widget) {}

    void setKey(const QByteArray& key);
    QByteArray key() const { return mKey; }

private:
    QWidget* mWidgetP;
    QByteArray mKey;
};

#endif
