#ifndef OST_UIDIALOG_H
#define OST_UIDIALOG_H

#include "kelplatform_export.h"

#include <QString>
#include <boost/function.hpp>

// Modal message boxes with caller-chosen button texts.
class KELPLATFORM_EXPORT Ost_UIDialog
{
public:
    enum UIicon_t { kNoIcon = 0, kInformationIcon = 1, kErrorIcon = 2, kWarningIcon = 3, kQuestionIcon = 4 };

    // Everything one UIdialog call asked for.
    struct Request
    {
        QString message;
        QString buttonTexts;
        short buttonCount;
        UIicon_t icon;
        QString detailText;
        bool richText;
        QString sourceFile;
    };
    typedef boost::function<int(const Request&)> Interceptor;

    // Shows a modal box titled with the product name, holding buttonCount
    // buttons labelled with the first "|"-separated parts of buttonTexts
    // ("OK" for a missing or empty part). Returns the 0-based index of the
    // pressed button, or -1 when the box was closed without one.
    static int UIdialog(QString message, QString buttonTexts, short buttonCount, UIicon_t icon, QString detailText,
                        bool richText, QString sourceFile);

    // While an interceptor is installed UIdialog asks it instead of showing a
    // box and returns its answer. An empty function removes it. Returns the
    // previous interceptor.
    static Interceptor setInterceptor(Interceptor interceptor);
};

#endif
