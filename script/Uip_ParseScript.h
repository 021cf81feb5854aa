#ifndef UIP_PARSESCRIPT_H
#define UIP_PARSESCRIPT_H

#include "kelcore_export.h"

#include "Uip_ParseError.h"

#include <QString>

class Uip_ParseNode;

// Parses an action script: statements separated by ";", each an identifier,
// a string or boolean literal, a call with at most one argument, or an
// assignment. Returns a new Uip_StatementBlock_ParseNode that the caller
// owns (an empty block for a blank script), or null when the script is
// malformed; error (may be null) then receives the reason, and on success
// is reset to "no error". Never throws.
KELCORE_EXPORT Uip_ParseNode* Uip_ParseScript(QString script, Uip_ParseError* error);

#endif
