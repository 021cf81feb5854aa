#ifndef KEL_CHECKBOXLIST_H
#define KEL_CHECKBOXLIST_H

#include "kelcore_export.h"

#include "Kel_BoundFont.h"
#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QList>
#include <QWidget>

class QCheckBox;
class QVBoxLayout;

// A column of check boxes, one per row of a list model. The list
// specification names the rows (a record array such as Mve_RecordArray);
// its field ".name" gives each box's caption and its field ".checked" (bool)
// each box's state. A tick is written to that row's ".checked" element and
// taken back when the model refuses it. Without a connected list there are
// no boxes; without a ".checked" array the boxes show unticked and disabled.
class KELCORE_EXPORT Kel_CheckBoxList : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray listConnection READ getListConnectionSpec WRITE setListConnectionSpec)
    Q_PROPERTY(QByteArray fontConnection READ getFontConnectionSpec WRITE setFontConnectionSpec)

public:
    explicit Kel_CheckBoxList(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_CheckBoxList() override;

    // The list's specification; the caption and state arrays are named after
    // it. It takes effect at the next makeConnections.
    void setListConnectionSpec(const QByteArray& spec);
    QByteArray getListConnectionSpec() const { return mList.spec().toUtf8(); }
    // A Kel_FontManager key (not a model) for the boxes; a non-empty key sets the font at once.
    void setFontConnectionSpec(const QByteArray& key) { mFont.setKey(key); }
    QByteArray getFontConnectionSpec() const { return mFont.key(); }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the rows and shows them.
    void updateAppearance();

    // The boxes, one per row (the rows' names are their object names' suffix).
    int count() const { return mBoxes.size(); }
    QCheckBox* box(int row) const { return mBoxes.value(row); }

protected:
    // Sets the state of every row the user may change; refused rows show
    // the model's state again. For the additional controls of subclasses.
    void setAllChecked(bool checked);
    // Where the boxes go; subclasses add their controls around it.
    QVBoxLayout* boxLayout() const { return mBoxLayoutP; }
    // Called after every re-read.
    virtual void appearanceUpdated() {}

private:
    void userToggled(int row, bool checked);
    void resizeBoxes(int count);

    typedef Mvt_Array<Mvt_SimpleValue<QString>>::Listener NameArrayListener;
    typedef Mvt_Array<Mvt_SimpleValue<bool>>::Listener BoolArrayListener;

    // Connected always, so that every connection ends with a re-read.
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mList{this, Kel_BoundPropertyBase::kConnectAlways};
    Kel_BoundProperty<NameArrayListener> mNames{this};
    Kel_BoundProperty<BoolArrayListener> mChecked{this};
    Kel_BoundFont mFont{this};
    QVBoxLayout* mBoxLayoutP;
    QList<QCheckBox*> mBoxes;
    bool mApplyingModelState;
};

#endif
