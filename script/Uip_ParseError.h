#ifndef UIP_PARSEERROR_H
#define UIP_PARSEERROR_H

#include "kelcore_export.h"

#include <QString>

// The outcome of parsing an action script: empty when the parse succeeded,
// else the error text and where in the script it was found.
//
// Line and position are 1-based (the line of the script, and the character
// within that line) for errors found by the parser; a default-constructed
// value, which means "no error", carries 0 in both.
class KELCORE_EXPORT Uip_ParseError
{
public:
    Uip_ParseError() = default;
    // An error: mIsError is set.
    Uip_ParseError(QString message, long line, long position);
    Uip_ParseError(const Uip_ParseError&) = default;
    Uip_ParseError(Uip_ParseError&&) = default;
    Uip_ParseError& operator=(const Uip_ParseError&) = default;
    Uip_ParseError& operator=(Uip_ParseError&&) = default;

    bool IsError() const { return mIsError; }

    QString mMessage;
    long mLine = 0;
    long mPosition = 0;
    bool mIsError = false;
};

#endif
