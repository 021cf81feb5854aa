#ifndef KEL_LISTSELECTIONDIALOG_H
#define KEL_LISTSELECTIONDIALOG_H

#include "kelcore_export.h"

#include "Kel_BoundProperty.h"
#include "Kel_WidgetConnectInterface.h"
#include "Mvt_Array.h"
#include "Mvt_SimpleValue.h"
#include "SortedValueList.h"

#include <QDialog>
#include <QString>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

// Asks the user to choose among the elements of a string array ("Clips.name"):
// one of them, written to a long model, or several, written to a sorted
// list of rows (the shape of a list view's ":SelectionList"). The dialog
// opens on the model's current choice, a filter box narrows long lists,
// and OK writes the choice; a refused choice keeps the dialog open with
// the reason. Cancel writes nothing.
class KELCORE_EXPORT Kel_ListSelectionDialog : public QDialog, public Kel_WidgetConnectInterface
{
    Q_OBJECT

public:
    explicit Kel_ListSelectionDialog(QWidget* parent = nullptr, const char* name = nullptr);
    ~Kel_ListSelectionDialog() override;

    // The string array whose elements are offered.
    void setListConnectionSpec(const QString& spec) { mItems.setSpec(spec); }
    // A long model (the row chosen, -1 for none): one choice. Set either
    // this or the multiple-selection model.
    void setSelectionConnectionSpec(const QString& spec) { mSingle.setSpec(spec); }
    // A SortedValueList<long> model of rows: any number of choices.
    void setMultiSelectionConnectionSpec(const QString& spec) { mMulti.setSpec(spec); }
    // The line above the list.
    void setPrompt(const QString& prompt);

    void makeConnections(boost::shared_ptr<const Mv_ConnectionEnvironment> environment) override;

    // Rows of the array shown now (after the filter), for tests and tools.
    QListWidget* listWidget() const { return mListP; }

public slots:
    void accept() override;

private:
    void fill();
    void applyFilter(const QString& text);

    Kel_BoundProperty<Mvt_Array<Mvt_SimpleValue<QString>>::Listener> mItems{this};
    Kel_BoundProperty<Mvt_SimpleValue<long>::Listener> mSingle{this};
    Kel_BoundProperty<Mvt_SimpleValue<SortedValueList<long>>::Listener> mMulti{this};
    QLabel* mPromptP;
    QLineEdit* mFilterP;
    QListWidget* mListP;
    QLabel* mErrorP;
    QPushButton* mOkButtonP;
};

#endif
