#include "Kel_BoundFont.h"

#include "Kel_FontManager.h"

#include <QWidget>

void Kel_BoundFont::setKey(const QByteArray& key)
{
    if (key == mKey)
        return;
    mKey = key;
    if (!key.isEmpty())
        mWidgetP->setFont(Kel_FontManager::getFont(QString::fromUtf8(key)));
}
