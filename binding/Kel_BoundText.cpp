#include "Kel_BoundText.h"

#include <QPointer>

namespace {

const char kPublishWord[] = "publish";

} // namespace

Kel_BoundText::Kel_BoundText(QObject* owner, TextReader readText, TextWriter showText)
    : mOwnerP(owner)
    , mReadText(std::move(readText))
    , mShowText(std::move(showText))
    , mListener(owner)
    , mSettingModel(false)
{
    mListener.onNotify([this] { receiveListenerMessage(); });
}

Kel_BoundText::~Kel_BoundText()
{
    clear();
}

bool Kel_BoundText::setSpec(const QByteArray& spec, const NameResolver& resolvePublishedName)
{
    if (spec == mSpec)
        return false;
    mSpec = spec;
    clear();

    const QString trimmed = QString::fromLatin1(spec).trimmed();
    if (!trimmed.startsWith(QLatin1String(kPublishWord))) {
        mListener.rename(trimmed);
        return true;
    }
    QString name = trimmed.mid(int(sizeof(kPublishWord)) - 1).trimmed();
    if (resolvePublishedName)
        name = resolvePublishedName(name);
    mPublishedModelP.reset(new Mvt_SimpleValue<QString>(name));
    mPublishedModelP->setReceiveMessageCB(
        [this](const Mv_MessageInterface& message) { return handlePublishedModelMessage(message); });
    mPublishedModelP->Publish();
    return true;
}

void Kel_BoundText::clear()
{
    if (mPublishedModelP) {
        // Unpublished before it goes, without answering its listeners' last requests.
        std::unique_ptr<Mvt_SimpleValue<QString>> model(std::move(mPublishedModelP));
        model->setReceiveMessageCB(Mv_ModelBase::ReceiveMessageCB());
        model->UnPublish();
    }
    if (mListener.isNamed())
        mListener.rename(QString());
}

void Kel_BoundText::connect(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    mListener.connect(environment);
}

void Kel_BoundText::textChanged()
{
    const bool guarded = mOwnerP != nullptr;
    const QPointer<QObject> owner(mOwnerP);
    if (mPublishedModelP) {
        mPublishedModelP->notifyValueChanged();
        if (guarded && !owner)
            return;
    }
    if (!mListener.isConnected() || mSettingModel)
        return;
    mSettingModel = true;
    const int status = mListener.set(mReadText());
    if (status == Kel_BoundPropertyBase::kOwnerDeleted)
        return;
    if (status == Mvt_SimpleValue_BaseAPI::kSetRefused) {
        // A read-only model, or a value it does not take: show its own again.
        // Still guarded, so that showing it is not sent back.
        mShowText(mListener->value(QString()));
        if (guarded && !owner)
            return;
    }
    mSettingModel = false;
}

void Kel_BoundText::receiveListenerMessage()
{
    if (!mListener.isConnected() || mSettingModel)
        return;
    const QString value = mListener->value(QString());
    const bool guarded = mOwnerP != nullptr;
    const QPointer<QObject> owner(mOwnerP);
    mShowText(value);
    if ((guarded && !owner) || !mListenedValueHandler)
        return;
    mListenedValueHandler(value);
}

bool Kel_BoundText::handlePublishedModelMessage(const Mv_MessageInterface& message)
{
    typedef Mvt_SimpleValue_API<QString> API;
    if (const auto* get = message.as<API::MsgGet>()) {
        if (get->result())
            *get->result() = mReadText();
        return true;
    }
    if (const auto* set = message.as<API::MsgSet>()) {
        if (set->value() == mReadText()) {
            set->setStatus(Mvt_SimpleValue_BaseAPI::kSetUnchanged);
            return true;
        }
        Mvt_SimpleValue<QString>* model = mPublishedModelP.get();
        Mv_ModelBase::Guard guard(model);
        mShowText(set->value());
        set->setStatus(Mvt_SimpleValue_BaseAPI::kSetChanged);
        if (guard.alive())
            model->notifyValueChanged();
        return true;
    }
    return false;
}
