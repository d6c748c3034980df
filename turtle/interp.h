// The interpreter: runs a program tree on a turtle, drawing, measuring and scoring at once.
#pragma once

#include "model/node.h"
#include "turtle/draw_context.h"

namespace pelmora {

// Runs `node` and everything below it from the state in `ctx`, which receives the result. With
// `bounds` the path widens them and nothing is drawn; without, lines are drawn on `device` (null:
// none) while the pen is down. A colour change makes and selects a new pen on the device in both
// cases and releases the one it replaces. Faulty nodes are reported on the error log and skipped.
// Returns 1 when the program ran to its end, 0 when the step limit was exceeded.
int interp_logo(HDC device, DrawContext* ctx, const ExprNode* node, RECT* bounds);

} // namespace pelmora
