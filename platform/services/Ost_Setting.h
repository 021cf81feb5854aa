#ifndef OST_SETTING_H
#define OST_SETTING_H

#include "kelplatform_export.h"

#include <QHash>
#include <QPair>
#include <QString>
#include <QVector>

// Reads named parameters from a settings XML text. Below the chosen start
// root element every leaf element is one parameter, named by the dotted path
// of element names from just below the start root down to the leaf
// (see docs/settings.md). The start root and prefix may be set before or
// after the XML: parameters are worked out when they are asked for.
class KELPLATFORM_EXPORT Ost_Setting
{
public:
    Ost_Setting();

    // Keeps only the parameters whose name equals prefix or starts with
    // prefix + "."; names keep the prefix. Empty: all parameters.
    void SetPrefix(const QString& prefix);
    // The element below which parameters are read: the first element with
    // that name in document order. Empty: the document root.
    void SetStartRoot(const QString& startRoot);
    // Parses xml. merge=false replaces everything read before; merge=true
    // adds its parameters, a name already known taking the new value.
    // False on malformed XML (a debug message says where); the parameters
    // read before are then kept unchanged.
    bool SetXML(const QString& xml, bool merge);

    // The n-th parameter (0-based, document order); false when out of range.
    bool GetNthParam(int n, QString& name, QString& value) const;
    int GetParamCount() const;
    // The value of the named parameter; false when there is none.
    bool GetParam(const QString& name, QString& value) const;

private:
    struct Element
    {
        QString mName;
        QString mText;
        int mParent;
        int mDepth;
        bool mHasChildElements;
    };
    typedef QVector<Element> ElementList; // one parsed text, in document order
    typedef QPair<QString, QString> Param;

    void refresh() const;
    void appendParams(const ElementList& elements, QVector<Param>& params, QHash<QString, int>& index) const;

    QVector<ElementList> mDocuments;
    QString mPrefix;
    QString mStartRoot;
    mutable bool mDirty;
    mutable QVector<Param> mParams;
    mutable QHash<QString, int> mParamIndex;
};

#endif
