#include "Kel_Bitmap.h"

#include "Kel_WhatsThis.h"
#include "Ost_Resource.h"

#include <QDir>

Kel_Bitmap::Kel_Bitmap(QWidget* parent, const char* name) : QLabel(parent)
{
    setObjectName(QString::fromLatin1(name));
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mPath, &mPixmap})
        property->onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_Bitmap");
}

Kel_Bitmap::~Kel_Bitmap() = default;

void Kel_Bitmap::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    if (Kel_BoundPropertyBase::connectAll(environment, {&mPath, &mPixmap}))
        updateAppearance();
}

void Kel_Bitmap::updateAppearance()
{
    if (!mPath.isNamed() && !mPixmap.isNamed())
        return; // a plain picture label
    QPixmap pixmap;
    mPixmap->get(pixmap);
    if (pixmap.isNull()) {
        const QString path = mPath->value(QString());
        if (path != mLoadedPath) {
            // Loaded once per path: a notification of another model does not reload it.
            mLoadedPath = path;
            mLoadedPixmap = QPixmap();
            if (!path.isEmpty())
                mLoadedPixmap.load(QDir::isAbsolutePath(path) ? path : Ost_Resource::getResourcePath() + path);
        }
        pixmap = mLoadedPixmap;
    }
    if (pixmap.isNull())
        clear();
    else
        setPixmap(pixmap);
}
