#include "Kel_StatusWindow.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_Label.h"
#include "Kel_ProgressThermometer.h"
#include "Kel_WhatsThis.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

Kel_StatusWindow::Kel_StatusWindow(QWidget* parent, const char* name)
    : QDialog(parent)
    , mMessageP(new Kel_Label(this, "statusMessage"))
    , mThermometerP(new Kel_ProgressThermometer(this, "statusThermometer"))
    , mCancelButtonP(new QPushButton(tr("Cancel"), this))
    , mCancelRequested(false)
{
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(tr("Working"));
    mMessageP->setWordWrap(true);
    mCancelButtonP->setObjectName(QStringLiteral("statusCancel"));
    mCancelButtonP->setEnabled(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(mMessageP);
    layout->addWidget(mThermometerP);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(mCancelButtonP);
    layout->addLayout(buttons);
    for (Kel_BoundPropertyBase* property : std::initializer_list<Kel_BoundPropertyBase*>{&mCancel, &mActive})
        property->onNotify([this] { updateAppearance(); });
    connect(mCancelButtonP, &QPushButton::clicked, this, &Kel_StatusWindow::requestCancel);
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_StatusWindow");
}

Kel_StatusWindow::~Kel_StatusWindow() = default;

void Kel_StatusWindow::setMessageConnectionSpec(const QByteArray& spec)
{
    mMessageP->setTextConnectionSpec(spec);
}

QByteArray Kel_StatusWindow::getMessageConnectionSpec() const
{
    return mMessageP->getTextConnectionSpec();
}

void Kel_StatusWindow::setProgressConnectionSpec(const QByteArray& spec)
{
    mThermometerP->setProgressConnectionSpec(spec);
}

QByteArray Kel_StatusWindow::getProgressConnectionSpec() const
{
    return mThermometerP->getProgressConnectionSpec();
}

void Kel_StatusWindow::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_StatusWindow> self(this);
    mCancelRequested = false;
    Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
    if (self && Kel_BoundPropertyBase::connectAll(environment, {&mCancel, &mActive}))
        updateAppearance();
}

void Kel_StatusWindow::updateAppearance()
{
    QPointer<Kel_StatusWindow> self(this);
    if (mActive.isNamed()) {
        bool active = false;
        mActive->get(active);
        if (!active)
            mCancelRequested = false; // the work ended: the next one starts afresh
        setVisible(active);
        if (!self)
            return;
    }
    mCancelButtonP->setText(mCancelRequested ? tr("Cancelling...") : tr("Cancel"));
    mCancelButtonP->setEnabled(!mCancelRequested && mCancel->isEnabled());
}

void Kel_StatusWindow::requestCancel()
{
    if (mCancelRequested || !mCancel->isEnabled())
        return;
    QPointer<Kel_StatusWindow> self(this);
    const bool taken = mCancel->call();
    if (!self || !taken)
        return; // refused: the work goes on and Cancel stays offered
    if (!mActive.isNamed()) {
        QDialog::reject();
        return;
    }
    mCancelRequested = true;
    updateAppearance();
}

void Kel_StatusWindow::reject()
{
    // Work that cannot be cancelled leaves the window to its owner.
    if (!mCancel.isNamed()) {
        QDialog::reject();
        return;
    }
    requestCancel();
}
