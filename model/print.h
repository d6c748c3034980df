// Writes turtle programs as text, in three layouts that parse_expr() reads back.
#pragma once

#include "model/expr.h"

#include <cstddef>
#include <cstdio>

namespace pelmora {

// Indented by 3 spaces a level, lines ending with LF, as new text that the caller releases with
// free(). Null when there is no memory for the first piece; when it runs out later, the children
// not yet written are left out.
char* expr_to_text(const ExprNode* root);

// Indented by 4 spaces a level, lines ending with CR LF on every system: the stream is binary. The
// caller checks the stream for errors.
void expr_write(const ExprNode* root, std::FILE* file);

// On one line, without a line break at the end.
void expr_write_line(const ExprNode* root, std::FILE* file);

// Writes `count` blanks. Not with a printf width, which is an int and slow.
void write_blanks(std::FILE* file, std::size_t count);

} // namespace pelmora
