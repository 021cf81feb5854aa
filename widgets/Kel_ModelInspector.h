#ifndef KEL_MODELINSPECTOR_H
#define KEL_MODELINSPECTOR_H

#include "kelcore_export.h"

#include <QPoint>
#include <QString>
#include <QVector>
#include <QWidget>

class Mv_ConnectionDict;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QTableWidgetItem;
class QTimer;

// A live look into the models behind the widgets, for the developer of an
// application whose binding by name does nothing: the published models
// (filterable; values of simple kinds editable in place), the listeners
// still waiting for a name with the names they probably meant, and a pick
// mode that shows the bound properties of the widget or view under the
// cursor and the models behind them. It reads the dictionary only while it
// is shown.
class KELCORE_EXPORT Kel_ModelInspector : public QWidget
{
    Q_OBJECT

public:
    // One bound property of the widget or view under the cursor.
    struct Binding
    {
        QString owner;         // the widget's object name and class, or the view's dotted name
        QString specification; // as the widget was given it
        QString resolvedName;  // after variable expansion
        bool connected = false;
        long index = -1;       // the element shown, for element addresses
        QString value;         // the model's value as text, for simple values
    };

    // dict: the dictionary to show; null means the process-wide one.
    explicit Kel_ModelInspector(QWidget* parent = nullptr, Mv_ConnectionDict* dict = nullptr);
    ~Kel_ModelInspector() override;

    // The bound properties of the widget or light-weight view at globalPos,
    // innermost owner first. A view is found through the bridge that hosts
    // it; a list under the point first shows the row there, so element
    // addresses name that row.
    static QVector<Binding> bindingsAt(const QPoint& globalPos);

    // In pick mode the inspector follows the mouse over the application's
    // windows; a click ends it (and goes nowhere else), as does Escape.
    void setPicking(bool picking);
    bool isPicking() const { return mPicking; }

public slots:
    // Reads the dictionary again; done twice a second while shown.
    void refresh();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void buildUi();
    void fillModels();
    void fillUnconnected();
    void showBindingsAt(const QPoint& globalPos);
    void modelValueEdited(QTableWidgetItem* item);
    bool isMine(const QWidget* widget) const;

    Mv_ConnectionDict* mDictP;
    QLineEdit* mFilterP = nullptr;
    QTableWidget* mModelsP = nullptr;
    QTableWidget* mUnconnectedP = nullptr;
    QTableWidget* mBindingsP = nullptr;
    QPushButton* mPickP = nullptr;
    QLabel* mStatusP = nullptr;
    QTimer* mTimerP = nullptr;
    bool mPicking = false;
    bool mFilling = false; // tables being filled: item changes are not edits
};

#endif
