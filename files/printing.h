// Printing one turtle on one page, as large as the printable area allows.
#pragma once

#include "model/expr.h"
#include "platform/win32.h"
#include "turtle/draw.h"

namespace pelmora {

// The result of PrintAbortProc, shared by all windows.
extern BOOL printContinue;

// Asks for the pen's width and the printer, and prints. 0 when the first dialog was dismissed or
// the owner was destroyed, 1 otherwise. `ctx` is changed by the drawing. The user is not told of
// failures.
int PrintTurtleTree(HWND owner, DrawContext* ctx, const ExprNode* tree);

// Called by the printing system; TRUE continues the printing.
BOOL CALLBACK PrintAbortProc(HDC printer, int error);

} // namespace pelmora
