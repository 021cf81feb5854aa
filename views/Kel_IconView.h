#ifndef KEL_ICONVIEW_H
#define KEL_ICONVIEW_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_ViewBase.h"
#include "Mvt_SimpleValue.h"

#include <QPixmap>
#include <QStringList>

// Draws one icon chosen by a model, scaled to fit the view (keeping its
// proportions) and centred. What the model holds is told by the connection
// type: an image name, an index into the view's own list of image names
// (a bool model picks 0 or 1), or the picture itself. Image names are
// looked up under "Images/" of the resource path unless they are absolute
// or Qt resource paths (":/..."). Unconnected, or when the image cannot be
// found, the view draws nothing. The model is read again at every paint, so
// one view re-used for every row of a list draws each row's icon.
class KELCORE_EXPORT Kel_IconView : public Kel_ViewBase
{
public:
    enum ConnectionType
    {
        kImageNameConnection, // a string model naming the image
        kImageIndexConnection, // a long or bool model indexing setImageNames
        kPixmapConnection      // a QPixmap model
    };

    Kel_IconView();
    // Copies the specification, the type and the names; the copy is unconnected.
    Kel_IconView(const Kel_IconView& other);
    ~Kel_IconView() override;

    // Connection specification of the model choosing the icon; takes effect
    // at the next makeConnections.
    void SetConnectionID(const QString& spec) { mIcon.setSpec(spec); }
    QString GetConnectionID() const { return mIcon.spec(); }
    void setConnectionType(ConnectionType type) { mType = type; }
    ConnectionType getConnectionType() const { return mType; }
    // The images an index model chooses from.
    void setImageNames(const QStringList& names) { mImageNames = names; }
    QStringList getImageNames() const { return mImageNames; }

    // The picture the model chooses now (null when none).
    QPixmap currentPixmap() const;
    // The image file for a name: absolute and resource paths as given,
    // others under "Images/" of the resource path.
    static QString imagePath(const QString& name);

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;
    void drawContents(QPainter* painter, const QRect& rect) override;
    Kel_ViewInterface* clone() override;

private:
    static QPixmap loadImage(const QString& name);

    // Read as a variant, so that one listener serves every connection type.
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mIcon{this, Kel_BoundPropertyBase::kConnectAlways};
    ConnectionType mType;
    QStringList mImageNames;
};

#endif
