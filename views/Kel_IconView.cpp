#include "Kel_IconView.h"

#include "Ost_Resource.h"

#include <QDir>
#include <QPainter>
#include <QPixmapCache>

Kel_IconView::Kel_IconView() : Kel_ViewBase(), mType(kImageNameConnection)
{
    mIcon.onNotify([this] { sendAllBitsChanged(); });
}

Kel_IconView::Kel_IconView(const Kel_IconView& other)
    : Kel_ViewBase(other), mType(other.mType), mImageNames(other.mImageNames)
{
    mIcon.setSpec(other.mIcon.spec());
    mIcon.onNotify([this] { sendAllBitsChanged(); });
}

Kel_IconView::~Kel_IconView() = default;

QString Kel_IconView::imagePath(const QString& name)
{
    if (name.startsWith(QLatin1Char(':')) || QDir::isAbsolutePath(name))
        return name;
    return Ost_Resource::getResourcePath() + QStringLiteral("Images/") + name;
}

QPixmap Kel_IconView::loadImage(const QString& name)
{
    if (name.isEmpty())
        return QPixmap();
    const QString path = imagePath(name);
    QPixmap pixmap;
    if (QPixmapCache::find(path, &pixmap))
        return pixmap;
    if (pixmap.load(path))
        QPixmapCache::insert(path, pixmap);
    return pixmap;
}

QPixmap Kel_IconView::currentPixmap() const
{
    Mv_Variant value;
    if (!mIcon->SendMessageToModel(Mvt_SimpleValue_BaseAPI::MsgGetVariant(&value), false))
        return QPixmap();
    switch (mType) {
    case kImageNameConnection:
        return loadImage(value.value<QString>());
    case kImageIndexConnection: {
        long index = -1;
        if (!value.get(index) || index < 0 || index >= mImageNames.size())
            return QPixmap();
        return loadImage(mImageNames.at(int(index)));
    }
    case kPixmapConnection:
        return value.value<QPixmap>();
    }
    return QPixmap();
}

void Kel_IconView::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mIcon.connect(environment);
    Kel_ViewBase::makeConnections(environment);
}

void Kel_IconView::drawContents(QPainter* painter, const QRect&)
{
    const QPixmap pixmap = currentPixmap();
    if (!painter || pixmap.isNull() || getWidth() <= 0 || getHeight() <= 0)
        return;
    QSize size = pixmap.size();
    // Shrunk to fit, never enlarged past its own size.
    if (size.width() > getWidth() || size.height() > getHeight())
        size.scale(getSize(), Qt::KeepAspectRatio);
    QRect target(QPoint(0, 0), size);
    target.moveCenter(getLocalDrawingRect().center());
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->drawPixmap(target, pixmap);
    painter->restore();
}

Kel_ViewInterface* Kel_IconView::clone()
{
    return new Kel_IconView(*this);
}
