#include "ui/shell.h"

#include "model/fatal.h"
#include "resources/resource.h"
#include "services/application.h"
#include "services/log_files.h"
#include "services/message.h"
#include "ui/engine_window.h"
#include "ui/main_window.h"
#include "ui/population_window.h"
#include "ui/window_names.h"

#include <cstdlib>
#include <exception>
#include <new>

namespace pelmora {
namespace {

// What differs between the window classes.
struct ClassDesign {
    const char* name;
    WNDPROC procedure;
    WORD menu;
    int extra_bytes;
};

// The pointer to a window's record, and a spare word.
constexpr int kRecordBytes = 16;

bool register_class(HINSTANCE instance, const ClassDesign& design) {
    WNDCLASSEXA window_class{};
    window_class.cbSize = sizeof window_class;
    window_class.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    window_class.lpfnWndProc = design.procedure;
    window_class.cbWndExtra = design.extra_bytes;
    window_class.hInstance = instance;
    window_class.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(IDI_LARGE));
    window_class.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    window_class.hbrBackground = reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_WINDOW} + 1);
    window_class.lpszMenuName = MAKEINTRESOURCEA(design.menu);
    window_class.lpszClassName = design.name;
    window_class.hIconSm = LoadIconA(instance, MAKEINTRESOURCEA(IDI_SMALL));
    return RegisterClassExA(&window_class) != 0;
}

// An uncaught std::bad_alloc, from deep in a library, ends the program as for a program node.
[[noreturn]] void end_after_exception() {
    const std::exception_ptr thrown = std::current_exception();
    if (thrown == nullptr) {
        std::abort();
    }
    try {
        std::rethrow_exception(thrown);
    } catch (const std::bad_alloc&) {
        fatal_out_of_memory();
    } catch (...) {
        std::abort();
    }
}

// Shows the main window; false when it could not be created.
bool InitInstance(HINSTANCE instance, int show) {
    HWND window = CreateMainWindow(instance);
    if (window == nullptr) {
        return false;
    }
    SetMainWindow(window);
    ShowWindow(window, show);
    UpdateWindow(window);
    return true;
}

int run_message_loop(HACCEL accelerators) {
    MSG message{};
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        // A shortcut goes only to the window of the key message.
        if (TranslateAcceleratorA(message.hwnd, accelerators, &message) == 0) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return static_cast<int>(message.wParam);
}

} // namespace

void RegisterWindowClasses(HINSTANCE instance) {
    const INITCOMMONCONTROLSEX controls{sizeof controls, ICC_BAR_CLASSES | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&controls);
    const WindowNames& names = window_names();
    // Without its class the main window cannot be created either, which ends the program.
    register_class(instance, {names.main_class, MainWindowProc, IDR_MAIN_MENU, 0});
    if (!register_class(instance,
                        {names.logo_class, LogoWindowProc, IDR_LOGO_MENU, kRecordBytes})) {
        ShowMessageF(MainWindow(), "Error registering LogoWindow class. GetLastError()=%d",
                     static_cast<int>(GetLastError()));
    }
    if (!register_class(instance,
                        {names.engine_class, EngineWindowProc, IDR_ENGINE_MENU, kRecordBytes})) {
        ShowMessageF(MainWindow(), "Error registering EngineWindow class. GetLastError()=%d",
                     static_cast<int>(GetLastError()));
    }
}

int PelmoraMain(HINSTANCE instance, int show) {
    std::set_terminate(end_after_exception);
    OpenLogFiles();
    SetAppInstance(instance);
    LoadWindowNames(instance);
    RegisterWindowClasses(instance);
    if (!InitInstance(instance, show)) {
        return 0;
    }
    return run_message_loop(LoadAcceleratorsA(instance, MAKEINTRESOURCEA(IDR_ACCELERATORS)));
}

} // namespace pelmora
