#ifndef KEL_POILOOKUP_H
#define KEL_POILOOKUP_H

#include "kelcore_export.h"

#include <QRect>
#include <QString>
#include <functional>

class QWidget;

// Guided help's question "where is X?": resolves a dotted name path to a
// rectangle on the screen, across the application's windows. The first
// name is a top-level window's object name; each further name is a child
// widget's object name (found at any depth below the previous one) until a
// widget that resolves names inside itself takes the rest: one that
// implements Kel_IPointOfInterestFinder (menu bars, pop-up menus, widget
// lists, tree widgets, ...) or one a registered resolver knows (the bridges,
// which hand the rest to their views and lists).
//
//   "DemoWindow.bin.ClipList.ListView.Row3"   a row of a list in a bridge
//   "DemoWindow.DemoMenuBar.File.Open"        an item of an open menu
class KELCORE_EXPORT Kel_PoiLookup
{
public:
    Kel_PoiLookup() = delete;

    // True when path names something shown; *globalRect then receives its
    // screen rectangle and *widget (when not null) the widget that holds it.
    static bool find(const QString& path, QRect* globalRect, QWidget** widget = nullptr);

    // Resolves rest (the path below widget; empty for the widget itself)
    // for widgets of a kind it knows; false when it does not know widget or
    // finds nothing.
    typedef std::function<bool(QWidget* widget, const QString& rest, QRect* globalRect)> Resolver;
    // Adds a resolver for a kind of widget; layers above this one register
    // theirs when the library loads.
    static void addResolver(const Resolver& resolver);
};

#endif
