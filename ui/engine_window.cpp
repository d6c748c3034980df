#include "ui/engine_window.h"

#include "files/eps.h"
#include "files/printing.h"
#include "resources/resource.h"
#include "services/application.h"
#include "services/gdi_owners.h"
#include "services/message.h"
#include "services/typed_number.h"
#include "ui/window_names.h"
#include "ui/window_record.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <new>
#include <string>
#include <utility>

namespace pelmora {
namespace {

// The band at the top of the client area that holds the controls, and the frame around them.
constexpr int kBandHeight = 40;
constexpr int kBandFrameHeight = 38;

// --- Creation and destruction --------------------------------------------------------------------

HWND create_window(HINSTANCE instance) {
    HWND window = CreateWindowExA(WS_EX_OVERLAPPEDWINDOW, window_names().engine_class,
                                  window_names().engine_title, WS_OVERLAPPEDWINDOW, 20, 20, 400,
                                  400, nullptr, nullptr, instance, nullptr);
    if (window == nullptr) {
        ShowMessageF(MainWindow(), "Error creating Engine window. GetLastError()=%d",
                     static_cast<int>(GetLastError()));
    }
    return window;
}

// What assistive technology is told of the drawing.
class Drawing : public platform::AccessibleContent {
  public:
    explicit Drawing(const EngineWindow* record) : record_(record) {} // which owns it

    platform::AccessibleRole role() const override { return platform::AccessibleRole::picture; }
    std::string name() const override {
        return "Turtle drawn up to " + std::to_string(record_->stepLimit) + " steps";
    }

  private:
    const EngineWindow* record_;
};

struct ControlDesign {
    const char* window_class;
    const char* text;
    DWORD style;
    int left;
    UINT_PTR id;
};

HWND create_control(HWND window, HINSTANCE instance, const ControlDesign& design) {
    return CreateWindowExA(0, design.window_class, design.text, WS_CHILD | design.style,
                           design.left, 8, 100, 21, window, reinterpret_cast<HMENU>(design.id),
                           instance, nullptr);
}

void EngineDestroy(HWND window) {
    detach_record<EngineWindow>(window).reset();
}

// --- The keyboard --------------------------------------------------------------------------------

// Tab moves the focus from the window itself to the limit, to the button and back.
void move_focus(HWND window, HWND from) {
    HWND round[] = {window, GetDlgItem(window, IDC_LIMIT), GetDlgItem(window, IDC_REDRAW)};
    constexpr std::size_t kPlaces = std::size(round);
    const auto here = static_cast<std::size_t>(std::find(round, round + kPlaces, from) - round);
    const std::size_t step = GetKeyState(VK_SHIFT) < 0 ? kPlaces - 1 : 1;
    SetFocus(round[(here + step) % kPlaces]);
}

// Handles the keys that controls ignore outside a dialog.
LRESULT CALLBACK ControlKeysProc(HWND control, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                 DWORD_PTR editor) {
    HWND window = reinterpret_cast<HWND>(editor);
    if (message == WM_KEYDOWN && wparam == VK_TAB) {
        move_focus(window, control);
        return 0;
    }
    if (message == WM_KEYDOWN && wparam == VK_RETURN) {
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(IDC_REDRAW, BN_CLICKED), 0);
        return 0;
    }
    if (message == WM_CHAR && (wparam == VK_TAB || wparam == VK_RETURN)) {
        return 0; // a field beeps at these
    }
    return DefSubclassProc(control, message, wparam, lparam);
}

// --- Painting and commands -----------------------------------------------------------------------

void draw_turtle(HWND window, EngineWindow* record, HDC device) {
    RECT client{};
    GetClientRect(window, &client);
    record->drawContext.max_steps = record->stepLimit;
    const int height = client.bottom - kBandHeight;
    if (client.right > 0 && height > 0) {
        const DevicePen pen_guard(device);
        draw_fit(device, &record->drawContext, record->tree.get(), client.right, height,
                 FitMode::stretch, kBandHeight);
    }
}

void EnginePaint(HWND window, EngineWindow* record) {
    const PaintScope paint(window);
    RECT band{};
    GetClientRect(window, &band);
    band.bottom = kBandFrameHeight;
    HBRUSH black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    FrameRect(paint.device(), &band, black);
    rect_inset(&band, 1, 1);
    FrameRect(paint.device(), &band, black);
    if (record->tree != nullptr) {
        draw_turtle(window, record, paint.device());
    }
}

void take_limit(HWND window, EngineWindow* record) {
    char text[32] = "";
    GetWindowTextA(record->limitEdit, text, sizeof text);
    record->stepLimit = TypedNumber(text);
    platform::tell_content_changed(window);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
}

// The window may be closed while the dialog of one of these commands is open: they work on copies.
void EnginePrint(HWND window, EngineWindow* record) {
    if (record->tree == nullptr) {
        ShowMessage(window, "FATAL, turtle expression is NULL!");
        return;
    }
    record->drawContext.max_steps = record->stepLimit;
    DrawContext context = record->drawContext;
    const ExprTree program(expr_copy_tree(record->tree.get()));
    PrintTurtleTree(window, &context, program.get());
}

void save_eps(HWND window, EngineWindow* record) {
    if (record->tree == nullptr) {
        ShowMessage(window, "You must select a turtle to save.");
        return;
    }
    DrawContext context = record->drawContext;
    const ExprTree program(expr_copy_tree(record->tree.get()));
    SaveTurtleEPS(window, &context, program.get());
}

// False for a command that is not this window's.
bool run_command(HWND window, EngineWindow* record, WORD command) {
    switch (command) {
    case IDC_REDRAW:
        take_limit(window, record);
        return true;
    case IDM_PRINT_TURTLE:
        EnginePrint(window, record);
        return true;
    case IDM_SAVE_EPS:
        save_eps(window, record);
        return true;
    case IDM_CLOSE_EDITOR:
        SendMessageA(window, WM_CLOSE, 0, 0);
        return true;
    default:
        return false;
    }
}

} // namespace

HWND CreateEngineWindow(HINSTANCE instance, ExprTree tree) {
    std::unique_ptr<EngineWindow> record(new (std::nothrow) EngineWindow);
    if (record == nullptr) {
        ShowMessage(MainWindow(), "Could not allocate memory for EngineWindow [1].");
        return nullptr;
    }
    record->tree = std::move(tree);
    record->drawContext.max_steps = kDefaultMaxSteps;
    HWND window = create_window(instance);
    if (window == nullptr) {
        return nullptr;
    }
    // Never shown: a screen reader takes the text before a field for its name.
    create_control(window, instance, {"STATIC", "Step limit", 0, 8, 0});
    record->limitEdit = create_control(
        window, instance, {"EDIT", "10240", WS_VISIBLE | WS_BORDER | ES_NUMBER, 8, IDC_LIMIT});
    HWND button = create_control(
        window, instance, {"BUTTON", "Redraw...", WS_VISIBLE | BS_DEFPUSHBUTTON, 120, IDC_REDRAW});
    for (HWND control : {record->limitEdit, button}) {
        SetWindowSubclass(control, ControlKeysProc, 0, reinterpret_cast<DWORD_PTR>(window));
    }
    record->drawing = std::make_shared<Drawing>(record.get());
    platform::describe(window, record->drawing);
    attach_record(window, std::move(record));
    return window;
}

LRESULT CALLBACK EngineWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    EngineWindow* record = attached_record<EngineWindow>(window);
    if (record == nullptr) { // still being created
        return DefWindowProcA(window, message, wparam, lparam);
    }
    switch (message) {
    case WM_COMMAND:
        if (run_command(window, record, LOWORD(wparam))) {
            return 0;
        }
        break;
    case WM_KEYDOWN:
        if (wparam == VK_TAB) {
            move_focus(window, window);
            return 0;
        }
        break;
    case WM_ERASEBKGND:
        return EraseWhite(window, wparam);
    case WM_PAINT:
        EnginePaint(window, record);
        return 0;
    case WM_CLOSE:
        DestroyWindow(window);
        return 0;
    case WM_DESTROY:
        EngineDestroy(window);
        return 0;
    case WM_SIZE: // the class redraws the whole window
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONUP:
    case WM_MOUSEMOVE:
    case WM_INITMENU:
    case WM_INITMENUPOPUP:
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

} // namespace pelmora
