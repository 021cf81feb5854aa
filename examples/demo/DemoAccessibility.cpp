#include "DemoAccessibility.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QMetaEnum>
#include <QStringList>
#include <QWidget>

namespace {

// Rows of a list shown in the dump; the rest are there, but not printed.
const int kRowsShown = 3;

QString states(const QAccessible::State& s)
{
    QStringList names;
    const struct
    {
        bool on;
        const char* name;
    } flags[] = {{bool(s.invisible), "invisible"}, {bool(s.offscreen), "offscreen"}, {bool(s.disabled), "disabled"},
                 {bool(s.focusable), "focusable"}, {bool(s.focused), "focused"},     {bool(s.readOnly), "readOnly"},
                 {bool(s.selectable), "selectable"}, {bool(s.selected), "selected"}, {bool(s.checkable), "checkable"},
                 {bool(s.checked), "checked"},     {bool(s.expandable), "expandable"}, {bool(s.expanded), "expanded"},
                 {bool(s.collapsed), "collapsed"}};
    for (const auto& flag : flags) {
        if (flag.on)
            names << QString::fromLatin1(flag.name);
    }
    return names.join(QLatin1Char(' '));
}

void dump(QAccessibleInterface* iface, int depth, QStringList& lines)
{
    if (!iface || !iface->isValid())
        return;
    const QMetaEnum roles = QMetaEnum::fromType<QAccessible::Role>();
    const char* role = roles.valueToKey(iface->role());
    QString line = QString(depth * 2, QLatin1Char(' ')) + QString::fromLatin1(role ? role : "?");
    line += QStringLiteral(" name=\"%1\"").arg(iface->text(QAccessible::Name));
    const QString value = iface->text(QAccessible::Value);
    if (!value.isEmpty())
        line += QStringLiteral(" value=\"%1\"").arg(value);
    const QString stateText = states(iface->state());
    if (!stateText.isEmpty())
        line += QStringLiteral(" [%1]").arg(stateText);
    lines << line;
    const bool isList = iface->role() == QAccessible::List || iface->role() == QAccessible::Table;
    const int count = iface->childCount();
    const int shown = isList ? qMin(count, kRowsShown) : count;
    for (int i = 0; i < shown; ++i)
        dump(iface->child(i), depth + 1, lines);
    if (shown < count)
        lines << QString((depth + 1) * 2, QLatin1Char(' ')) + QStringLiteral("... %1 rows").arg(count);
}

} // namespace

QString demoAccessibilityTree(QWidget* root)
{
    QStringList lines;
    dump(QAccessible::queryAccessibleInterface(root), 0, lines);
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
