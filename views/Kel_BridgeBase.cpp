#include "Kel_BridgeBase.h"

#include "Kel_PoiLookup.h"
#include "Kel_ViewContainerInterface.h"
#include "Kel_ViewInterface.h"

#include <QPainter>
#include <QWidget>

Kel_BridgeBase::Kel_BridgeBase(QWidget* widget)
    : mChildP(nullptr), mTiled(false), mBackgroundPixmap(), mHasBackgroundColor(false), mBackgroundColor(),
      mWidgetP(widget)
{
}

Kel_BridgeBase::~Kel_BridgeBase()
{
    deleteChild();
}

void Kel_BridgeBase::setChild(Kel_ViewInterface* view)
{
    if (view == mChildP)
        return;
    // Two owners would both delete it.
    if (Kel_ViewContainerInterface* previous = view ? view->getParent() : nullptr)
        previous->releaseView(view);
    deleteChild();
    mChildP = view;
}

bool Kel_BridgeBase::releaseChild(Kel_ViewInterface* view)
{
    if (!view || view != mChildP)
        return false;
    mChildP = nullptr;
    view->setParent(nullptr);
    return true;
}

void Kel_BridgeBase::setBridgeBackgroundColor(const QColor& color)
{
    mBackgroundColor = color;
    mHasBackgroundColor = true;
    if (QWidget* host = viewHostWidget())
        host->update();
}

void Kel_BridgeBase::setBridgeBackgroundPixmap(const QPixmap& pixmap, bool tiled)
{
    mBackgroundPixmap = pixmap;
    mTiled = tiled;
    if (QWidget* host = viewHostWidget())
        host->update();
}

QString Kel_BridgeBase::findUiName(const QPoint& point)
{
    QString name = mWidgetP ? mWidgetP->objectName() : QString();
    QWidget* host = viewHostWidget();
    if (!mChildP || !host)
        return name;
    const QPoint local = host == mWidgetP ? point : host->mapFrom(mWidgetP, point);
    if (!mChildP->getLocalDrawingRect().contains(local))
        return name;
    if (!name.isEmpty())
        name += QLatin1Char('.');
    return name + mChildP->findUiName(local);
}

QRect Kel_BridgeBase::findPoi(const QString& dottedName)
{
    if (!mWidgetP || dottedName.isEmpty())
        return QRect();
    const QString name = mWidgetP->objectName();
    QString rest = dottedName;
    if (!name.isEmpty()) {
        if (dottedName == name)
            return QRect(mWidgetP->mapToGlobal(QPoint(0, 0)), mWidgetP->size());
        if (!dottedName.startsWith(name + QLatin1Char('.')))
            return QRect();
        rest = dottedName.mid(name.size() + 1);
    }
    QWidget* host = viewHostWidget();
    QPoint where;
    if (!mChildP || !host || !mChildP->findItem(rest, &where))
        return QRect();
    return QRect(host->mapToGlobal(where), QSize(1, 1));
}

namespace {

// Guided help reaches the views of a bridge through the bridge's own lookup.
const struct BridgePoiResolver
{
    BridgePoiResolver()
    {
        Kel_PoiLookup::addResolver([](QWidget* widget, const QString& rest, QRect* globalRect) {
            auto* bridge = dynamic_cast<Kel_BridgeBase*>(widget);
            if (!bridge || rest.isEmpty())
                return false;
            const QString name = widget->objectName();
            const QRect found = bridge->findPoi(name.isEmpty() ? rest : name + QLatin1Char('.') + rest);
            if (found.isNull())
                return false;
            if (globalRect)
                *globalRect = found;
            return true;
        });
    }
} bridgePoiResolver;

} // namespace

void Kel_BridgeBase::paintBackground(QPainter& painter, const QRect& area) const
{
    if (mHasBackgroundColor)
        painter.fillRect(area, mBackgroundColor);
    if (mBackgroundPixmap.isNull())
        return;
    if (mTiled)
        painter.drawTiledPixmap(area, mBackgroundPixmap, area.topLeft());
    else
        painter.drawPixmap(area, mBackgroundPixmap);
}

void Kel_BridgeBase::deleteChild()
{
    Kel_ViewInterface* view = mChildP;
    mChildP = nullptr;
    delete view;
}
