#include "Kel_PopupDisplay.h"

#include "Kel_WhatsThis.h"

#include <QPointer>

Kel_PopupDisplay::Kel_PopupDisplay(QWidget* parent, const char* name) : QComboBox(parent)
{
    setObjectName(QString::fromLatin1(name));
    mName.onNotify([this] { updateAppearance(); });
    connect(this, SIGNAL(activated(int)), this, SLOT(userActivated(int)));
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_PopupDisplay");
}

Kel_PopupDisplay::~Kel_PopupDisplay() = default;

void Kel_PopupDisplay::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mName.connect(environment);
}

void Kel_PopupDisplay::updateAppearance()
{
    QPointer<Kel_PopupDisplay> self(this);
    const QString name = mName->value(QString());
    setCurrentIndex(findText(name));
    if (self)
        setEnabled(mName.isConnected());
}

void Kel_PopupDisplay::userActivated(int index)
{
    if (index < 0 || !mName.isConnected())
        return;
    if (mName.set(itemText(index)) == Mvt_SimpleValue_BaseAPI::kSetRefused)
        updateAppearance();
}
