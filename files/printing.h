// Printing one turtle on one page, as large as the printable area allows.
#pragma once

#include "model/expr.h"
#include "platform/win32.h"
#include "turtle/draw.h"

namespace pelmora {

// What PrintAbortProc answers, for all windows.
extern BOOL printContinue;

// Asks for the pen's width and the printer, and prints. 0 when the first dialog was dismissed or
// the owner went, 1 otherwise. `ctx` is left as the drawing leaves it. Failures are not mentioned
// to the user.
int PrintTurtleTree(HWND owner, DrawContext* ctx, const ExprNode* tree);

// Asked by the printing system whether to go on.
BOOL CALLBACK PrintAbortProc(HDC printer, int error);

} // namespace pelmora
