#include "Kel_PoiLookup.h"

#include "Kel_IPointOfInterestFinder.h"

#include <QApplication>
#include <QStringList>
#include <QWidget>

#include <vector>

namespace {

std::vector<Kel_PoiLookup::Resolver>& resolvers()
{
    static std::vector<Kel_PoiLookup::Resolver> all;
    return all;
}

// Asks widget to resolve rest itself; false when it cannot.
bool resolveInside(QWidget* widget, const QString& rest, QRect* globalRect)
{
    if (auto* finder = dynamic_cast<Kel_IPointOfInterestFinder*>(widget)) {
        if (finder->findPoi(rest.isEmpty() ? widget->objectName() : rest, globalRect))
            return true;
    }
    for (const Kel_PoiLookup::Resolver& resolver : resolvers()) {
        if (resolver(widget, rest, globalRect))
            return true;
    }
    return false;
}

// The nearest descendant of parent called name: children before
// grandchildren, so that a name used at two depths means the outer one.
QWidget* childNamed(QWidget* parent, const QString& name)
{
    if (QWidget* direct = parent->findChild<QWidget*>(name, Qt::FindDirectChildrenOnly))
        return direct;
    return parent->findChild<QWidget*>(name);
}

} // namespace

void Kel_PoiLookup::addResolver(const Resolver& resolver)
{
    if (resolver)
        resolvers().push_back(resolver);
}

bool Kel_PoiLookup::find(const QString& path, QRect* globalRect, QWidget** widget)
{
    QStringList names = path.split(QLatin1Char('.'));
    // An empty name would match any child.
    if (names.contains(QString()))
        return false;
    // Shown windows first: a hidden one of the same name answers only when
    // no shown one does.
    QWidget* current = nullptr;
    for (QWidget* top : QApplication::topLevelWidgets()) {
        if (top->objectName() == names.first() && (!current || (top->isVisible() && !current->isVisible())))
            current = top;
    }
    if (!current)
        return false;
    names.removeFirst();
    while (true) {
        QRect rect(current->mapToGlobal(QPoint(0, 0)), current->size());
        const QString rest = names.join(QLatin1Char('.'));
        // A widget that knows names inside itself has the last word on them.
        if (resolveInside(current, rest, &rect) || names.isEmpty()) {
            if (!names.isEmpty() || current->isVisible()) {
                if (globalRect)
                    *globalRect = rect;
                if (widget)
                    *widget = current;
                return true;
            }
            return false;
        }
        QWidget* next = childNamed(current, names.first());
        if (!next)
            return false;
        current = next;
        names.removeFirst();
    }
}
