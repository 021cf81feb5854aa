#ifndef MV_DIAGNOSTICS_H
#define MV_DIAGNOSTICS_H

#include "kelplatform_export.h"

#include <QString>
#include <QStringList>
#include <QVector>

class Mv_ConnectionDict;
class Mv_ListenerBase;
class Mv_ModelBase;

// Why a binding by name does nothing: what a dictionary holds, taken as a
// snapshot when asked. Lists the published models with their kind and (for
// simple values) their value, the listeners with their specification and
// whether they are connected, the names that listeners wait for and nobody
// publishes, and for such a name the published names it most likely meant.
// Nothing is kept between calls and nothing is added to the hot paths, so a
// program that never asks pays nothing.
//
// Only listeners that have been connected are known to a dictionary; one
// whose owner never called connect() (or gave it an empty specification)
// appears nowhere. Every function takes the dictionary; null means the
// process-wide one.
class KELPLATFORM_EXPORT Mv_Diagnostics
{
public:
    struct ModelInfo
    {
        QString name;
        QString kind;          // the model's class, "Mve_SimpleValue<bool>"
        bool hasValue = false; // a simple value (or anything answering a variant get)
        QString value;         // its value as text, when hasValue
        int listenerCount = 0; // listeners attached to the name
    };

    struct ListenerInfo
    {
        QString specification; // as the owner gave it, "$Row" variables and all
        QString resolvedName;  // after variable expansion
        bool connected = false;
        // While unconnected: the name nobody publishes (the model's, or for
        // an element address the index model's); empty when connected.
        QString missingName;
        const Mv_ListenerBase* listener = nullptr;
    };

    // The published models, by name.
    static QVector<ModelInfo> models(const Mv_ConnectionDict* dict = nullptr);
    // The connected listeners and those waiting for a name, by resolved name.
    static QVector<ListenerInfo> listeners(const Mv_ConnectionDict* dict = nullptr);
    static ListenerInfo describe(const Mv_ListenerBase& listener);
    // Names that listeners wait for and nobody publishes, sorted.
    static QStringList waitingNames(const Mv_ConnectionDict* dict = nullptr);
    // Up to max published names nearest to name (edit distance, case
    // ignored, a swap of two neighbours counting as one edit), nearest
    // first; only names close enough to be a slip of the keyboard (about
    // one edit in six characters), and only the nearest and those one edit
    // behind them. An
    // element address ("Clips.nmae[Row]") is matched by its array name and
    // answered with the same brackets.
    static QStringList suggestions(const QString& name, const Mv_ConnectionDict* dict = nullptr, int max = 3);

    // The model's class name, without namespaces of the compiler's making.
    static QString kindName(const Mv_ModelBase& model);
    // The model's value as text; false when it is not a simple value.
    static bool valueText(const Mv_ModelBase& model, QString* text);
    // Sets a simple value from text, converted to the model's own type as a
    // listener's set would be; answers the set status (refused: 3).
    static int setValueText(Mv_ModelBase& model, const QString& text);

    // Logs, through kel.platform as warnings, every listener still
    // unconnected, with its suggestions; each resolved name once per
    // process. Answers how many it logged now.
    static int reportUnconnected(const Mv_ConnectionDict* dict = nullptr);
};

#endif
