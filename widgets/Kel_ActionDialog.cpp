#include "Kel_ActionDialog.h"

#include "Kel_ConnectionUtils.h"
#include "Kel_WhatsThis.h"

#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>

Kel_ActionDialog::Kel_ActionDialog(QWidget* parent, const char* name) : QDialog(parent)
{
    setObjectName(QString::fromLatin1(name));
    mAcceptScript.onReadinessChanged([this] { updateAcceptButtons(); });
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_ActionDialog");
}

Kel_ActionDialog::~Kel_ActionDialog() = default;

void Kel_ActionDialog::makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment)
{
    QPointer<Kel_ActionDialog> self(this);
    if (!mAcceptScript.connect(environment) || !mRejectScript.connect(environment))
        return;
    for (QDialogButtonBox* box : findChildren<QDialogButtonBox*>()) {
        // Unique: a form may have made the same connections already.
        connect(box, SIGNAL(accepted()), this, SLOT(accept()), Qt::UniqueConnection);
        connect(box, SIGNAL(rejected()), this, SLOT(reject()), Qt::UniqueConnection);
    }
    Kel_ConnectionUtils::recursiveConnectChildren(this, environment);
    if (self)
        updateAcceptButtons();
}

void Kel_ActionDialog::updateAcceptButtons()
{
    const bool ready = mAcceptScript.isReady();
    for (QDialogButtonBox* box : findChildren<QDialogButtonBox*>()) {
        for (QAbstractButton* button : box->buttons()) {
            const QDialogButtonBox::ButtonRole role = box->buttonRole(button);
            if (role == QDialogButtonBox::AcceptRole || role == QDialogButtonBox::YesRole
                || role == QDialogButtonBox::ApplyRole)
                button->setEnabled(ready);
        }
    }
}

void Kel_ActionDialog::accept()
{
    if (!mAcceptScript.isReady())
        return; // refused: the dialog stays open
    if (!mAcceptScript.run())
        return; // the script deleted the dialog
    QDialog::accept();
}

void Kel_ActionDialog::reject()
{
    if (!mRejectScript.run())
        return;
    QDialog::reject();
}
