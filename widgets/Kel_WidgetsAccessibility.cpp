// Accessible interfaces of the painted widgets, registered with the views'
// accessibility factory when the library is loaded: without them a screen
// reader or a UI-test tool sees a nameless rectangle where a transport
// button or a slider is.
#include "Kel_ImageMappedButtons.h"
#include "Kel_ImmediateActionButton.h"
#include "Kel_KeyboardClick_p.h"
#include "Kel_PlayButton.h"
#include "Kel_Slider.h"
#include "Kel_StandardBistateButton.h"
#include "Kel_StandardRadioButton.h"
#include "Kel_ViewAccessibility.h"

#include <QAccessibleWidget>

namespace {

// A painted button: named by its accessible name, else its tool tip, else
// its object name; pressed (and toggled) by a click at its centre.
class PaintedButtonAccessible : public QAccessibleWidget
{
public:
    PaintedButtonAccessible(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

    // The painted widget is all there is (its focus frame is no child to read).
    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    QString text(QAccessible::Text type) const override
    {
        QString own = QAccessibleWidget::text(type);
        if (type != QAccessible::Name || !own.isEmpty())
            return own;
        own = widget()->toolTip();
        return own.isEmpty() ? widget()->objectName() : own;
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        if (auto* bistate = qobject_cast<Kel_StandardBistateButton*>(widget())) {
            const auto shown = bistate->getState();
            s.checkable = true;
            s.checked = shown == Kel_StandardBistateButton::kOnState || shown == Kel_StandardBistateButton::kOnTrackingState;
            s.pressed = shown == Kel_StandardBistateButton::kOffTrackingState ||
                        shown == Kel_StandardBistateButton::kOnTrackingState;
            s.disabled = s.disabled || shown == Kel_StandardBistateButton::kDisabledState;
        } else if (auto* button = qobject_cast<Kel_ImmediateActionButton*>(widget())) {
            s.pressed = button->getVisualState() == Kel_ImmediateActionButton::kTrackingState;
            s.disabled = s.disabled || button->getVisualState() == Kel_ImmediateActionButton::kDisabledState;
            if (auto* play = qobject_cast<Kel_PlayButton*>(widget())) {
                s.checkable = true;
                s.checked = play->isPlaying();
            }
        }
        return s;
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (!state().disabled) {
            names.prepend(pressAction());
            if (qobject_cast<Kel_StandardBistateButton*>(widget()) && !qobject_cast<Kel_StandardRadioButton*>(widget()))
                names.insert(1, toggleAction());
        }
        return names;
    }

    void doAction(const QString& actionName) override
    {
        if ((actionName == pressAction() || actionName == toggleAction()) && actionNames().contains(actionName))
            Kel_KeyboardClick::click(widget());
        else
            QAccessibleWidget::doAction(actionName);
    }
};

// A slider: its value, within its range, read through the value interface.
class SliderAccessible : public PaintedButtonAccessible, public QAccessibleValueInterface
{
public:
    explicit SliderAccessible(Kel_Slider* slider) : PaintedButtonAccessible(slider, QAccessible::Slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return PaintedButtonAccessible::interface_cast(type);
    }
    QString text(QAccessible::Text type) const override
    {
        return type == QAccessible::Value ? QString::number(slider()->value()) : PaintedButtonAccessible::text(type);
    }
    QStringList actionNames() const override { return QAccessibleWidget::actionNames(); }
    void doAction(const QString& actionName) override { QAccessibleWidget::doAction(actionName); }

    QVariant currentValue() const override { return slider()->value(); }
    // Read-only: the keys change the value, through the model.
    void setCurrentValue(const QVariant&) override {}
    QVariant maximumValue() const override { return slider()->maximum(); }
    QVariant minimumValue() const override { return slider()->minimum(); }
    QVariant minimumStepSize() const override { return 1; }

private:
    Kel_Slider* slider() const { return static_cast<Kel_Slider*>(widget()); }
};

QAccessibleInterface* paintedWidgetInterface(const QString& className, QObject* object)
{
    auto* widget = qobject_cast<QWidget*>(object);
    if (!widget)
        return nullptr;
    if (className == QLatin1String("Kel_StandardRadioButton"))
        return new PaintedButtonAccessible(widget, QAccessible::RadioButton);
    if (className == QLatin1String("Kel_StandardBistateButton") || className == QLatin1String("Kel_ImmediateActionButton"))
        return new PaintedButtonAccessible(widget, QAccessible::Button);
    if (className == QLatin1String("Kel_ImageMappedButtons"))
        return new PaintedButtonAccessible(widget, QAccessible::Grouping);
    if (className == QLatin1String("Kel_Slider"))
        return new SliderAccessible(static_cast<Kel_Slider*>(widget));
    return nullptr;
}

const bool sRegistered = [] {
    Kel_ViewAccessibility::addWidgetCreator(&paintedWidgetInterface);
    return true;
}();

} // namespace
