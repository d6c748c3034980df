#include "files/printing.h"

#include "dialogs/print_dialog.h"
#include "services/gdi_owners.h"
#include "services/typed_number.h"

#include <cstdio>
#include <utility>

namespace pelmora {

BOOL printContinue = TRUE;

namespace {

// Null when the user cancelled or the owner was destroyed.
OwnedDevice ask_printer(HWND owner) {
    PRINTDLGA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    // One page, so no page range. The printer makes the copies: the dialog offers none if it
    // cannot.
    dialog.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE |
                   PD_USEDEVMODECOPIESANDCOLLATE;
    dialog.nFromPage = 1;
    dialog.nToPage = 1;
    dialog.nCopies = 1;
    const bool chosen = PrintDlgA(&dialog) != FALSE;
    // The caller owns the printer settings that the dialog returns.
    GlobalFree(dialog.hDevMode);
    GlobalFree(dialog.hDevNames);
    OwnedDevice printer(chosen ? dialog.hDC : nullptr);
    return IsWindow(owner) ? std::move(printer) : nullptr;
}

// As large as the printable area allows. Its corner is the device's origin.
void draw_page(HDC printer, DrawContext* ctx, const ExprNode* tree) {
    const auto printable = [printer](int size, int offset) {
        return GetDeviceCaps(printer, size) - 2 * GetDeviceCaps(printer, offset);
    };
    const int width = printable(PHYSICALWIDTH, PHYSICALOFFSETX);
    const int height = printable(PHYSICALHEIGHT, PHYSICALOFFSETY);
    const DevicePen pen_guard(printer);
    draw_place(ctx, draw_measure(ctx, tree), width, height, FitMode::uniform, 0);
    ctx->pen_width = TypedNumber(printPenWidth.c_str());
    draw_run(printer, ctx, tree, nullptr);
}

void print_page(HDC printer, DrawContext* ctx, const ExprNode* tree) {
    if (StartPage(printer) <= 0) {
        return;
    }
    if (SetMapMode(printer, MM_TEXT) == 0) {
        std::fprintf(stderr, "ERROR PRINT SetMapMode(MM_TEXT) = %d\n",
                     static_cast<int>(GetLastError()));
    }
    draw_page(printer, ctx, tree);
    EndPage(printer);
}

void print_document(HDC printer, DrawContext* ctx, const ExprNode* tree) {
    // SP_ERROR is negative: only success is above 0.
    if (SetAbortProc(printer, PrintAbortProc) <= 0) {
        return;
    }
    printContinue = TRUE;
    Sleep(500);
    DOCINFOA document{};
    document.cbSize = sizeof document;
    document.lpszDocName = "Pelmora Print";
    if (StartDocA(printer, &document) > 0) {
        print_page(printer, ctx, tree);
        EndDoc(printer);
    }
}

} // namespace

int PrintTurtleTree(HWND owner, DrawContext* ctx, const ExprNode* tree) {
    const bool printDialogOk = AskPrintPenWidth(owner);
    if (!printDialogOk) {
        return 0;
    }
    const OwnedDevice printer = ask_printer(owner);
    if (printer != nullptr) {
        print_document(printer.get(), ctx, tree);
    }
    return 1;
}

BOOL CALLBACK PrintAbortProc(HDC, int) {
    return printContinue;
}

} // namespace pelmora
