#ifndef UIP_CLONEPARSETREE_H
#define UIP_CLONEPARSETREE_H

#include "kelcore_export.h"

class Uip_ParseNode;

// A copy of a tree as Uip_ParseScript makes it, not connected, that the
// caller owns; for code that connects the same script text many times
// and would otherwise parse it as often. Null for a null tree, and for a
// tree holding a kind of node that cannot be copied: parse the text then.
// The tree copied should not have been connected (a copy never carries
// connections over).
KELCORE_EXPORT Uip_ParseNode* Uip_CloneParseTree(const Uip_ParseNode* tree);

#endif
