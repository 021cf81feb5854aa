#ifndef KEL_LONGLABEL_H
#define KEL_LONGLABEL_H

#include "Kel_WidgetConnectInterface.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QLabel>
#include <memory>

// A label that shows the value of a long model as decimal text, in a font
// named in the font manager. Without a specification it keeps the text it
// was given; while its model is not connected it is empty.
class Kel_LongLabel : public QLabel, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray connectionName READ GetConnectionName WRITE SetConnectionName)
    Q_PROPERTY(QByteArray fontConnection READ getFontConnectionSpec WRITE setFontConnectionSpec)

public:
    explicit Kel_LongLabel(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_LongLabel() override;

    // Connection specification of the long model; takes effect at the next makeConnections.
    void SetConnectionName(const QByteArray& spec);
    QByteArray GetConnectionName() const { return mConnectionSpec; }
    // A Kel_FontManager key (not a model); a non-empty key sets the font at once.
    void setFontConnectionSpec(const QByteArray& key);
    QByteArray getFontConnectionSpec() const { return mFontConnectionSpec; }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the model and shows its value.
    void updateAppearance();

private:
    std::unique_ptr<Mvt_SimpleValue<long>::Listener> mValueListenerP;
    QByteArray mConnectionSpec;
    QByteArray mFontConnectionSpec;
};

#endif
