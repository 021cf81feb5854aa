#ifndef KEL_LONGLABEL_H
#define KEL_LONGLABEL_H

#include "kelcore_export.h"

#include "Kel_BoundFont.h"
#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QLabel>

// A label that shows the value of a long model as decimal text, in a font
// named in the font manager. Without a specification it keeps the text it
// was given; while its model is not connected it is empty.
class KELCORE_EXPORT Kel_LongLabel : public QLabel, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray connectionName READ GetConnectionName WRITE SetConnectionName)
    Q_PROPERTY(QByteArray fontConnection READ getFontConnectionSpec WRITE setFontConnectionSpec)

public:
    explicit Kel_LongLabel(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_LongLabel() override;

    // Connection specification of the long model; takes effect at the next makeConnections.
    void SetConnectionName(const QByteArray& spec) { mValue.setSpec(QString::fromUtf8(spec)); }
    QByteArray GetConnectionName() const { return mValue.spec().toUtf8(); }
    // A Kel_FontManager key (not a model); a non-empty key sets the font at once.
    void setFontConnectionSpec(const QByteArray& key) { mFont.setKey(key); }
    QByteArray getFontConnectionSpec() const { return mFont.key(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and shows its value.
    void updateAppearance();

private:
    typedef Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> LongProperty;

    LongProperty mValue{this, LongProperty::kConnectAlways};
    Kel_BoundFont mFont{this};
};

#endif
