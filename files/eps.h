// Encapsulated PostScript: the turtle program as a PostScript program that draws the same picture.
#pragma once

#include "model/expr.h"
#include "platform/win32.h"
#include "turtle/draw.h"

#include <cstdint>
#include <cstdio>

namespace pelmora {

// Asks for a name and writes the document. `ctx` measures the drawing, up to its step limit, and is
// changed by that. The status line reports success; the user is not told of a failure.
void SaveTurtleEPS(HWND owner, DrawContext* ctx, const ExprNode* tree);

// Writes the whole document, dated now, to a binary stream. `bounds` is in turtle units, its top
// the smallest y. A null tree is written like a missing child.
void eps_write(std::FILE* file, const ExprNode* tree, const RECT& bounds, std::int32_t max_steps);

// Writes the body: what the nodes do, one line or block each, indented by depth, the root at depth
// 1.
void eps_write_expr(const ExprNode* tree, std::FILE* file);

} // namespace pelmora
