// Reads turtle programs from their text form.
//
// tree: "(" name children... ")", tokens separated by space, tab, line feed or carriage return.
// Faults are reported as lines on the error log, and reading continues where it can, so that a
// damaged text may still give a partial tree. The depth of nesting is bounded by memory alone.
#pragma once

#include "model/expr.h"

namespace pelmora {

// The most faults that are reported, so that no text can fill the disk. Reading continues after
// them.
inline constexpr int kMaxParseFaults = 10'240;

// The first tree of the zero-terminated `text`; what follows it is ignored. The caller owns the
// tree; null when the outermost node could not be read.
ExprNode* parse_expr(const char* text);

// The same for one of several texts: at most `*faults_left` faults are reported, and each is
// subtracted from it.
ExprNode* parse_expr(const char* text, int* faults_left);

} // namespace pelmora
