// Writes turtle programs as text, in three layouts that parse_expr() reads back. Line breaks are
// "\n"; a stream that is to hold CR LF translates them itself.
#pragma once

#include "model/expr.h"

#include <cstdio>

namespace pelmora {

// Indented by 3 spaces a level, as new text that the caller releases with free(). Null when there
// is no memory for the first piece; when it runs out later, the children not yet written are left
// out and what was built is returned.
char* expr_to_text(const ExprNode* root);

// Indented by 4 spaces a level. Errors stay in the stream for its owner to look at.
void expr_write(const ExprNode* root, std::FILE* file);

// On one line, without a line break at the end.
void expr_write_line(const ExprNode* root, std::FILE* file);

} // namespace pelmora
