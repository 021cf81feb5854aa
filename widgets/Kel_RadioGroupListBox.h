#ifndef KEL_RADIOGROUPLISTBOX_H
#define KEL_RADIOGROUPLISTBOX_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mv_Variant.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"

#include <QByteArray>
#include <QList>
#include <QWidget>

class QButtonGroup;
class QRadioButton;
class QVBoxLayout;

// A list of radio buttons, one per row of a list model: each row has a name
// (its caption) and an id, and the row whose id equals the current-id model's
// value is the one chosen. Choosing a row writes its id to the current-id
// model; a refused choice is taken back. Ids and the current id may be of
// any value kind (compared as text); without an id array a row's id is its
// index. The base connection (SetConn) names all four models at once: the
// list itself, its ".name" and ".id" fields and ".currentID"; a model named
// on its own replaces the one derived from the base. Without a connected
// current id the buttons are disabled.
class KELCORE_EXPORT Kel_RadioGroupListBox : public QWidget, public Kel_WidgetConnectInterface
{
    Q_OBJECT
    Q_PROPERTY(QByteArray connection READ GetConn WRITE SetConn)
    Q_PROPERTY(QByteArray listConnection READ GetListConn WRITE SetListConn)
    Q_PROPERTY(QByteArray itemNameConnection READ GetItemNameConn WRITE SetItemNameConn)
    Q_PROPERTY(QByteArray itemIDConnection READ GetItemIDConn WRITE SetItemIDConn)
    Q_PROPERTY(QByteArray currentIDConnection READ GetCurrentIDConn WRITE SetCurrentIDConn)

public:
    explicit Kel_RadioGroupListBox(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_RadioGroupListBox() override;

    // Connection specifications; they take effect at the next makeConnections.
    void SetConn(const QByteArray& spec) { mBase = spec; }
    QByteArray GetConn() const { return mBase; }
    void SetListConn(const QByteArray& spec) { mListSpec = spec; }
    QByteArray GetListConn() const { return mListSpec; }
    void SetItemNameConn(const QByteArray& spec) { mNameSpec = spec; }
    QByteArray GetItemNameConn() const { return mNameSpec; }
    void SetItemIDConn(const QByteArray& spec) { mIDSpec = spec; }
    QByteArray GetItemIDConn() const { return mIDSpec; }
    void SetCurrentIDConn(const QByteArray& spec) { mCurrentSpec = spec; }
    QByteArray GetCurrentIDConn() const { return mCurrentSpec; }

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Re-reads the rows and the current id.
    void updateAppearance();

    int count() const { return mButtons.size(); }
    QRadioButton* button(int row) const { return mButtons.value(row); }
    // The row shown as chosen, or -1.
    int currentRow() const;

private:
    typedef Mvt_Array<Mvt_SimpleValue<QString>>::Listener ArrayListener;

    void resizeButtons(int count);
    Mv_Variant rowID(int row) const;
    void userChose(int row);

    QByteArray mBase;
    QByteArray mListSpec;
    QByteArray mNameSpec;
    QByteArray mIDSpec;
    QByteArray mCurrentSpec;
    Kel_BoundProperty<Mvt_ArrayContainer::Listener> mList{this};
    Kel_BoundProperty<ArrayListener> mNames{this};
    Kel_BoundProperty<ArrayListener> mIDs{this};
    // Read and written as variants, whatever the model's value type.
    Kel_BoundProperty<Mvt_SimpleValue<QString>::Listener> mCurrent{this, Kel_BoundPropertyBase::kConnectAlways};
    QVBoxLayout* mButtonLayoutP;
    QButtonGroup* mGroupP;
    QList<QRadioButton*> mButtons;
    bool mApplyingModelState;
};

#endif
