// Reads turtle programs from their text form.
//
// tree: "(" name children... ")", tokens separated by space, tab, line feed or carriage return.
// Every fault is reported as a line on the error log and reading goes on where it can, so that a
// damaged text may still give a partial tree. The depth of nesting is bounded by memory alone.
#pragma once

#include "model/expr.h"

namespace pelmora {

// The first tree of the zero-terminated `text`; what follows it is ignored. The caller owns the
// tree; null when the outermost node could not be read.
ExprNode* parse_expr(const char* text);

} // namespace pelmora
