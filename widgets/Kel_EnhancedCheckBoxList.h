#ifndef KEL_ENHANCEDCHECKBOXLIST_H
#define KEL_ENHANCEDCHECKBOXLIST_H

#include "kelcore_export.h"

#include "Kel_CheckBoxList.h"

class QLabel;
class QPushButton;

// A Kel_CheckBoxList with controls below the boxes: "All" and "None" tick or
// untick every row the model lets the user change, and a summary tells how
// many rows are ticked ("2 of 5"). The buttons are disabled while no row can
// be changed.
class KELCORE_EXPORT Kel_EnhancedCheckBoxList : public Kel_CheckBoxList
{
    Q_OBJECT

public:
    explicit Kel_EnhancedCheckBoxList(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_EnhancedCheckBoxList() override;

    QPushButton* allButton() const { return mAllP; }
    QPushButton* noneButton() const { return mNoneP; }
    QLabel* summaryLabel() const { return mSummaryP; }

protected:
    void appearanceUpdated() override;

private:
    QPushButton* mAllP;
    QPushButton* mNoneP;
    QLabel* mSummaryP;
};

#endif
