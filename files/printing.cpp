#include "files/printing.h"

#include "files/pen_size.h"
#include "resources/resource.h"
#include "services/settings_dialog.h"
#include "services/typed_number.h"

#include <cstdio>
#include <memory>
#include <type_traits>

namespace pelmora {

// So short a text is not allocated, so nothing is thrown.
std::string printPenWidth = "0"; // NOLINT(cert-err58-cpp)
BOOL printContinue = TRUE;

namespace {

// A printer from the print dialog to the end of the job.
struct ReleasePrinter {
    using pointer = HDC;
    void operator()(HDC printer) const { DeleteDC(printer); }
};
using Printer = std::unique_ptr<std::remove_pointer_t<HDC>, ReleasePrinter>;

Printer ask_printer(HWND owner) {
    PRINTDLGA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    // One page, so nothing to choose from; and the printer makes the copies, where it can: the
    // dialog takes no number where it cannot.
    dialog.Flags = PD_RETURNDC | PD_NOPAGENUMS | PD_NOSELECTION | PD_HIDEPRINTTOFILE |
                   PD_USEDEVMODECOPIESANDCOLLATE;
    dialog.nFromPage = 1;
    dialog.nToPage = 1;
    dialog.nCopies = 1;
    const bool chosen = PrintDlgA(&dialog) != FALSE;
    // The dialog leaves the printer's settings to its caller.
    GlobalFree(dialog.hDevMode);
    GlobalFree(dialog.hDevNames);
    return Printer(chosen ? dialog.hDC : nullptr);
}

// As large as the printable area allows. Its corner is the device's origin.
void draw_page(HDC printer, DrawContext* ctx, const ExprNode* tree) {
    const auto printable = [printer](int size, int offset) {
        return GetDeviceCaps(printer, size) - 2 * GetDeviceCaps(printer, offset);
    };
    const int width = printable(PHYSICALWIDTH, PHYSICALOFFSETX);
    const int height = printable(PHYSICALHEIGHT, PHYSICALOFFSETY);
    const DevicePen take_back(printer);
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
    // SP_ERROR is negative: success alone is above 0.
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
    const bool printDialogOk = ask_settings(owner, IDD_PRINT, PrintPensizeDlgProc, [](HWND dialog) {
        return take_pen_size(dialog, &printPenWidth);
    });
    if (!printDialogOk || !IsWindow(owner)) {
        return 0;
    }
    const Printer printer = ask_printer(owner);
    if (printer != nullptr && IsWindow(owner)) {
        print_document(printer.get(), ctx, tree);
    }
    return 1;
}

INT_PTR CALLBACK PrintPensizeDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        begin_answer(dialog, lparam);
        SetDlgItemTextA(dialog, IDC_PEN_SIZE, printPenWidth.c_str());
        if (GetDlgCtrlID(reinterpret_cast<HWND>(wparam)) == IDC_PEN_SIZE) {
            return TRUE;
        }
        SetFocus(GetDlgItem(dialog, IDC_PEN_SIZE));
        return FALSE;
    }
    return message == WM_COMMAND ? answer_button(dialog, LOWORD(wparam)) : FALSE;
}

BOOL CALLBACK PrintAbortProc(HDC, int) {
    return printContinue;
}

} // namespace pelmora
