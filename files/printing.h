// Printing one turtle on one page, as large as the printable area allows.
#pragma once

#include "model/expr.h"
#include "platform/win32.h"
#include "turtle/draw.h"

#include <string>

namespace pelmora {

// For all windows and as long as the program runs.
extern std::string printPenWidth; // the pen's width in printer pixels as typed, at most 31 bytes
extern BOOL printContinue;        // what PrintAbortProc answers

// Asks for the pen's width and the printer, and prints. 0 when the first dialog was dismissed or
// the owner went, 1 otherwise. `ctx` is left as the drawing leaves it. Failures are not mentioned
// to the user.
int PrintTurtleTree(HWND owner, DrawContext* ctx, const ExprNode* tree);

// The procedure of the pen width dialog.
INT_PTR CALLBACK PrintPensizeDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

// Asked by the printing system whether to go on.
BOOL CALLBACK PrintAbortProc(HDC printer, int error);

} // namespace pelmora
