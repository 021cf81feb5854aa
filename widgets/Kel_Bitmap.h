#ifndef KEL_BITMAP_H
#define KEL_BITMAP_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QLabel>
#include <QPixmap>

// A label that shows a picture chosen by models: a pixmap model, or a string
// model holding an image path (relative to the resource path, or absolute).
// A connected pixmap model that holds a picture wins over the path. With
// neither named the label keeps the pixmap it was given; with a named model
// that is missing, or a path that does not load, it shows nothing.
class KELCORE_EXPORT Kel_Bitmap : public QLabel, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray pathConnection READ getPathConnection WRITE setPathConnection)
    Q_PROPERTY(QByteArray pixmapConnection READ getPixmapConnection WRITE setPixmapConnection)

public:
    explicit Kel_Bitmap(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_Bitmap() override;

    // Connection specifications; they take effect at the next makeConnections.
    void setPathConnection(const QByteArray& spec) { mPath.setSpec(QString::fromUtf8(spec)); }
    QByteArray getPathConnection() const { return mPath.spec().toUtf8(); }
    void setPixmapConnection(const QByteArray& spec) { mPixmap.setSpec(QString::fromUtf8(spec)); }
    QByteArray getPixmapConnection() const { return mPixmap.spec().toUtf8(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the models and shows the picture they give.
    void updateAppearance();

    // The image path last read from the path model (empty without one).
    QString currentPath() const { return mLoadedPath; }

private:
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mPath{this};
    Kel_BoundProperty<Mvt_SimpleValue<QPixmap>::Listener> mPixmap{this};
    QString mLoadedPath;
    QPixmap mLoadedPixmap;
};

#endif
