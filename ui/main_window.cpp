#include "ui/main_window.h"

#include "dialogs/about_dialog.h"
#include "resources/resource.h"
#include "services/gdi_owners.h"
#include "services/status.h"
#include "ui/new_population.h"
#include "ui/window_names.h"

namespace pelmora {
namespace {

void PaintStatus(HWND window) {
    const PaintScope paint(window);
    if (*StatusText() != '\0') {
        RECT line = StatusRect(window);
        DrawTextA(paint.device(), StatusText(), -1, &line, DT_SINGLELINE | DT_BOTTOM | DT_NOPREFIX);
    }
}

// False for a command that is not this window's.
bool run_command(HWND window, WORD command) {
    switch (command) {
    case IDM_ABOUT:
        ShowAboutBox(window);
        return true;
    case IDM_EXIT:
        DestroyWindow(window);
        return true;
    case IDM_NEW_POPULATION:
        NewPopulation();
        return true;
    default:
        return false;
    }
}

} // namespace

LRESULT CALLBACK MainWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_COMMAND:
        if (run_command(window, LOWORD(wparam))) {
            return 0;
        }
        break;
    case WM_PAINT:
        PaintStatus(window);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_MOUSEMOVE:
        return 0;
    case WM_LBUTTONUP:
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
        return 0;
    case WM_RBUTTONUP:
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

HWND CreateMainWindow(HINSTANCE instance) {
    constexpr int kLeft = 10;
    constexpr int kTop = 10;
    constexpr int kWidth = 480;
    constexpr int kHeight = 75;
    HWND window = CreateWindowExA(WS_EX_OVERLAPPEDWINDOW, window_names().main_class,
                                  window_names().main_title, WS_OVERLAPPEDWINDOW, kLeft, kTop,
                                  kWidth, kHeight, nullptr, nullptr, instance, nullptr);
    DescribeStatusLine(window);
    return window;
}

} // namespace pelmora
