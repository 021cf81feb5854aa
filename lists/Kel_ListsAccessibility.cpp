// The accessible interfaces of the lists, registered with the views'
// accessibility factory when the library is loaded: views/ cannot know
// this folder, so the lists add theirs from here.
#include "Kel_ListView.h"
#include "Kel_HeaderAccessible_p.h"
#include "Kel_Header.h"
#include "Kel_ListViewAccessible_p.h"
#include "Kel_ListWithColumns.h"
#include "Kel_ListWithColumnsAccessible_p.h"
#include "Kel_ViewAccessibility.h"
#include "Kel_WidgetList.h"

#include <QAccessibleWidget>

namespace {

// A widget list is a list whose items are its row widgets, in row order
// (which moving rows makes differ from the order of the widget's children).
class Kel_WidgetListAccessible : public QAccessibleWidget
{
public:
    explicit Kel_WidgetListAccessible(Kel_WidgetList* list) : QAccessibleWidget(list, QAccessible::List) {}

    int childCount() const override { return isValid() ? int(list()->rowSize()) : 0; }

    QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        return QAccessible::queryAccessibleInterface(list()->indexToRow(index));
    }

    int indexOfChild(const QAccessibleInterface* child) const override
    {
        auto* row = child && isValid() ? qobject_cast<QWidget*>(child->object()) : nullptr;
        return row ? int(list()->rowToIndex(row)) : -1;
    }

    QString text(QAccessible::Text type) const override
    {
        const QString own = QAccessibleWidget::text(type);
        return type == QAccessible::Name && own.isEmpty() && isValid() ? widget()->objectName() : own;
    }

private:
    Kel_WidgetList* list() const { return static_cast<Kel_WidgetList*>(widget()); }
};

const struct Registration
{
    Registration()
    {
        Kel_ViewAccessibility::addViewCreator([](Kel_ViewInterface* view) -> QAccessibleInterface* {
            if (auto* columned = dynamic_cast<Kel_ListWithColumns*>(view))
                return new Kel_ListWithColumnsAccessible(columned);
            if (auto* list = dynamic_cast<Kel_ListView*>(view))
                return new Kel_ListViewAccessible(list);
            return nullptr;
        });
        Kel_ViewAccessibility::addWidgetCreator([](const QString& className, QObject* object) -> QAccessibleInterface* {
            if (className == QLatin1String("Kel_Header")) {
                auto* header = qobject_cast<Kel_Header*>(object);
                return header ? new Kel_HeaderAccessible(header) : nullptr;
            }
            if (className != QLatin1String("Kel_WidgetList"))
                return nullptr;
            auto* list = qobject_cast<Kel_WidgetList*>(object);
            return list ? new Kel_WidgetListAccessible(list) : nullptr;
        });
    }
} registration;

} // namespace
