#include "Kel_LongLabel.h"

#include "Kel_FontManager.h"
#include "Kel_WhatsThis.h"
#include "Mv_MessageDispatcher.h"

namespace {

const Mv_MessageDispatcher<Kel_LongLabel>& valueDispatcher()
{
    static const Mv_MessageDispatcher<Kel_LongLabel> dispatcher(&Kel_LongLabel::updateAppearance);
    return dispatcher;
}

} // namespace

Kel_LongLabel::Kel_LongLabel(QWidget* parent, const char* name)
    : QLabel(parent),
      mValueListenerP(new Mvt_SimpleValue<long>::Listener(QString(), Mv_ConnectionEnvironment::blankEnvironment()))
{
    setObjectName(QString::fromLatin1(name));
    mValueListenerP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& m) { valueDispatcher().dispatch(this, m); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_LongLabel");
}

Kel_LongLabel::~Kel_LongLabel()
{
    mValueListenerP->setReceiveMessageCB(Mv_ListenerBase::ReceiveMessageCB());
    mValueListenerP.reset();
}

void Kel_LongLabel::SetConnectionName(const QByteArray& spec)
{
    mConnectionSpec = spec;
}

void Kel_LongLabel::setFontConnectionSpec(const QByteArray& key)
{
    if (key == mFontConnectionSpec)
        return;
    mFontConnectionSpec = key;
    if (!key.isEmpty())
        setFont(Kel_FontManager::getFont(QString::fromUtf8(key)));
}

void Kel_LongLabel::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mValueListenerP->SetConnectionName(QString::fromUtf8(mConnectionSpec));
    mValueListenerP->connect(environment);
}

void Kel_LongLabel::updateAppearance()
{
    if (mConnectionSpec.isEmpty())
        return;
    long value = 0;
    setText(mValueListenerP->get(value) ? QString::number(value) : QString());
}
