#include "Kel_LongLabel.h"

#include "Kel_WhatsThis.h"

Kel_LongLabel::Kel_LongLabel(QWidget* parent, const char* name) : QLabel(parent)
{
    setObjectName(QString::fromLatin1(name));
    mValue.onNotify([this] { updateAppearance(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_LongLabel");
}

Kel_LongLabel::~Kel_LongLabel() = default;

void Kel_LongLabel::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mValue.connect(environment);
}

void Kel_LongLabel::updateAppearance()
{
    if (!mValue.isNamed())
        return;
    long value = 0;
    setText(mValue->get(value) ? QString::number(value) : QString());
}
