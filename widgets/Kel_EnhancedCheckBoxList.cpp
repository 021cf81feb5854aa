#include "Kel_EnhancedCheckBoxList.h"

#include "Kel_WhatsThis.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

Kel_EnhancedCheckBoxList::Kel_EnhancedCheckBoxList(QWidget* parent, const char* name)
    : Kel_CheckBoxList(parent, name)
{
    auto* controls = new QHBoxLayout;
    mAllP = new QPushButton(tr("All"), this);
    mAllP->setObjectName(QStringLiteral("allButton"));
    mNoneP = new QPushButton(tr("None"), this);
    mNoneP->setObjectName(QStringLiteral("noneButton"));
    mSummaryP = new QLabel(this);
    mSummaryP->setObjectName(QStringLiteral("summaryLabel"));
    controls->addWidget(mAllP);
    controls->addWidget(mNoneP);
    controls->addStretch();
    controls->addWidget(mSummaryP);
    // Below the boxes, above the stretch that keeps them at the top.
    static_cast<QVBoxLayout*>(layout())->insertLayout(1, controls);
    connect(mAllP, &QPushButton::clicked, this, [this] { setAllChecked(true); });
    connect(mNoneP, &QPushButton::clicked, this, [this] { setAllChecked(false); });
    appearanceUpdated();
    Kel_WhatsThis::setBestWhatsThisName(this, "Kel_EnhancedCheckBoxList");
}

Kel_EnhancedCheckBoxList::~Kel_EnhancedCheckBoxList() = default;

void Kel_EnhancedCheckBoxList::appearanceUpdated()
{
    int checked = 0;
    bool changeable = false;
    for (int row = 0; row < count(); ++row) {
        checked += box(row)->isChecked() ? 1 : 0;
        changeable = changeable || box(row)->isEnabled();
    }
    mAllP->setEnabled(changeable);
    mNoneP->setEnabled(changeable);
    mSummaryP->setText(tr("%1 of %2").arg(checked).arg(count()));
}
