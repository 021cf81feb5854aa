#ifndef KEL_HEADERACCESSIBLE_P_H
#define KEL_HEADERACCESSIBLE_P_H

// Internal to the library; not installed (exported for white-box tests).

#include "kelcore_export.h"

#include <QAccessibleWidget>
#include <QHash>
#include <QPointer>

class Kel_Header;

// The accessible interface of a column header: a grouping whose children
// are the labels of the visible columns, in the order shown (role
// ColumnHeader, made on first ask).
class KELCORE_EXPORT Kel_HeaderAccessible : public QAccessibleWidget
{
public:
    explicit Kel_HeaderAccessible(Kel_Header* header);
    ~Kel_HeaderAccessible() override;

    Kel_Header* header() const;
    // The item of the column at a visible position; null out of range.
    QAccessibleInterface* item(int position) const;

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    QString text(QAccessible::Text type) const override;

private:
    // Items by column index: a column keeps its item when it moves.
    mutable QHash<long, QAccessible::Id> mItems;
};

// One visible column's label. Its value and description tell the sort
// ("ascending", "descending"); press sorts as a click does, show menu opens
// the context menu under it, set focus gives the header the focus on it.
class KELCORE_EXPORT Kel_HeaderItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    Kel_HeaderItemAccessible(Kel_Header* header, long column);

    long column() const { return mColumn; }
    // Where the column is shown now, -1 when hidden.
    int position() const;
    // Valid while its column is shown and is still the column it was made
    // for: removing a column from the model renumbers the later ones.
    bool isValid() const override;
    QObject* object() const override { return nullptr; }
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text type) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    QStringList keyBindingsForAction(const QString& actionName) const override;

private:
    QPointer<Kel_Header> mHeader;
    long mColumn;
    QString mIdentifier;
};

#endif
