#ifndef MV_CONNECTIONENVIRONMENT_H
#define MV_CONNECTIONENVIRONMENT_H

#include "kelplatform_export.h"

#include <QHash>
#include <QString>
#include <boost/shared_ptr.hpp>

class Mv_ConnectionDict;

// A table of variables, with a parent environment and the connection
// dictionary in which names are resolved. Connection specifications name
// variables with a leading "$" ($Row, $Window); listeners expand them from
// the environment chain given to connect(). Environments are built, filled
// with set() and then handed around as shared pointers to const.
//
// Variable names are a letter or "_" followed by letters, digits and "_".
// A variable that no environment of the chain defines is left in the name as
// written ("$Window" stays "$Window"), and "$$" stands for a literal "$".
class KELPLATFORM_EXPORT Mv_ConnectionEnvironment
{
public:
    typedef boost::shared_ptr<const Mv_ConnectionEnvironment> ConstPtr;
    typedef boost::shared_ptr<Mv_ConnectionEnvironment> Ptr;

    // A new environment under parent, resolving in dict (null: the parent's
    // dictionary, or the process-wide one).
    explicit Mv_ConnectionEnvironment(ConstPtr parent = ConstPtr(), Mv_ConnectionDict* dict = nullptr);

    // The shared empty environment on the process-wide dictionary.
    static ConstPtr blankEnvironment();
    // Convenience: a new child environment of parent.
    static Ptr create(ConstPtr parent = ConstPtr(), Mv_ConnectionDict* dict = nullptr);

    // The value of a variable, looked up here and then up the parent chain;
    // a null string when no environment defines it.
    QString get(const QString& name) const;
    bool has(const QString& name) const;

    // Defines or replaces a variable of this environment.
    void set(const QString& name, const QString& value);

    // Takes several assignments from one text: "Name=Value" parts separated
    // by ";" or line breaks; names and values are trimmed; a part without
    // "=" or with an invalid name is skipped. Returns the number taken.
    // Example: "Row=Clips::Row7; Column = name".
    int set(const QString& assignments);

    // The text with every "$Name" replaced by its value (see the class
    // comment). Values are inserted as they are, not expanded again.
    QString replaceVariableNames(const QString& text) const;

    ConstPtr getParent() const { return mParent; }
    Mv_ConnectionDict* getDictionary() const { return mDictP; }
    // The variables defined in this environment itself (not its parents).
    const QHash<QString, QString>& localVariables() const { return mVariables; }

    static bool isValidVariableName(const QString& name);

private:
    QHash<QString, QString> mVariables;
    ConstPtr mParent;
    Mv_ConnectionDict* mDictP;
};

#endif
