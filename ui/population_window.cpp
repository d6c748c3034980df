#include "ui/population_window.h"

#include "resources/resource.h"
#include "services/application.h"
#include "services/held_key.h"
#include "services/message.h"
#include "services/wait_cursor.h"
#include "ui/breeding_commands.h"
#include "ui/exchange_commands.h"
#include "ui/population_cells.h"
#include "ui/population_input.h"
#include "ui/population_pictures.h"
#include "ui/population_view.h"
#include "ui/window_names.h"
#include "ui/window_record.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <memory>
#include <new>

namespace pelmora {
namespace {

void make_frame_brushes() {
    if (liveBrush == nullptr) {
        liveBrush = CreateSolidBrush(RGB(0x60, 0x60, 0xFF));
    }
    if (retiredBrush == nullptr) {
        retiredBrush = CreateSolidBrush(RGB(0xFF, 0x60, 0x60));
    }
}

// --- Creation and destruction --------------------------------------------------------------------

template <class T>
bool allocate(std::unique_ptr<T[]>& array, std::int16_t count) {
    array.reset(new (std::nothrow) T[static_cast<std::size_t>(count)]());
    return array != nullptr;
}

// A record with its arrays. Null when there is no memory for it; the user is told.
std::unique_ptr<LogoWindow> new_record(const EvolveParams& params) {
    std::unique_ptr<LogoWindow> record(new (std::nothrow) LogoWindow);
    if (record == nullptr) {
        ShowMessage(MainWindow(), "Could not allocate memory for LogoWindow [1].");
        return nullptr;
    }
    record->lifeCount = static_cast<std::int16_t>(params.size);
    if (!allocate(record->lifeFlags, record->lifeCount) ||
        !allocate(record->cellBitmaps, record->lifeCount) ||
        !allocate(record->cellDCs, record->lifeCount)) {
        record.reset(); // the alert may stay open for long, and memory is scarce
        ShowMessage(MainWindow(), "Could not allocate memory for LogoWindow [2].");
    }
    return record;
}

RECT DefaultLogoWindowRect() {
    RECT area{};
    if (!SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) {
        return {10, 10, 1004, 748};
    }
    rect_inset(&area, 5, 5);
    return area;
}

HWND create_window(HINSTANCE instance) {
    const RECT place = DefaultLogoWindowRect();
    HWND window = CreateWindowExA(WS_EX_OVERLAPPEDWINDOW, window_names().logo_class,
                                  window_names().logo_title, WS_OVERLAPPEDWINDOW, place.left,
                                  place.top, place.right - place.left, place.bottom - place.top,
                                  nullptr, nullptr, instance, nullptr);
    if (window == nullptr) {
        ShowMessageF(MainWindow(), "Error creating Pelmora window. GetLastError()=%d",
                     static_cast<int>(GetLastError()));
    }
    return window;
}

void LogoInitDrawContext(DrawContext* ctx, const EvolveParams& params) {
    *ctx = {};
    ctx->max_steps = kDefaultMaxSteps;
    ctx->multipliers = {params.FWDMULT, params.TURNMULT, params.LOOPMULT,
                        params.CLRMULT, params.RPTMULT,  params.REPMULT};
}

// False when the populations could not be made: the user is told, and may have closed the window,
// which destroys the record.
bool LogoInitPopulations(HWND window, LogoWindow* record, const EvolveParams& params) {
    record->busy = 1;
    record->current.reset(pop_create(params));
    record->previous.reset(pop_create(params));
    if (record->current == nullptr || record->previous == nullptr) {
        ShowMessage(window, "Not enough memory to allocate populations.");
        return false;
    }
    const WaitCursor wait;
    std::fill_n(record->lifeFlags.get(), record->lifeCount, LIVE_FLAG);
    LogoMakeCellSurfaces(window, record);
    pop_randomize(record->current.get());
    LogoMakePopPicts(window, record);
    pop_statistics(record->current.get());
    record->busy = 0;
    return true;
}

void LogoDestroy(HWND window) {
    detach_record<LogoWindow>(window).reset();
}

// Fills the record of a new window. False on failure; the user is told.
bool set_up(HWND window, LogoWindow* record, const EvolveParams& params) {
    LogoInitDrawContext(&record->drawContext, params);
    record->showGrid = 1;
    LogoMakeOffscreenSurface(window, record);
    make_frame_brushes();
    if (LogoInitPopulations(window, record, params)) {
        return true;
    }
    if (IsWindow(window)) {
        ShowMessage(window, "Could not initialize populations.");
    }
    return false;
}

} // namespace

HWND CreateLogoWindow(HINSTANCE instance, const EvolveParams& params) {
    std::unique_ptr<LogoWindow> owned = new_record(params);
    if (owned == nullptr) {
        return nullptr;
    }
    HWND window = create_window(instance);
    if (window == nullptr) {
        return nullptr;
    }
    LogoWindow* record = owned.get();
    attach_record(window, std::move(owned));
    if (!set_up(window, record, params)) {
        if (IsWindow(window)) {
            detach_record<LogoWindow>(window);
            DestroyWindow(window);
        }
        return nullptr;
    }
    LogoLayoutGrid(window, record);
    record->cells = std::make_shared<PopulationCells>(record);
    platform::describe(window, record->cells);
    return window;
}

// --- The window procedure ------------------------------------------------------------------------

namespace {

// Adapts a command that has nothing left to do after its dialogs.
template <void (*run)(HWND, LogoWindow*)>
AfterDialogs complete(HWND window, LogoWindow* record) {
    run(window, record);
    return nullptr;
}

struct LogoCommand {
    WORD id;
    AfterDialogs (*run)(HWND window, LogoWindow* record);
    const char* refusal; // shown when no lifer is selected; null: the command needs none
};

// To add a command, add its row; its menu entry and shortcut are resources.
constexpr LogoCommand kLogoCommands[] = {
    {IDM_EVOLVE, complete<LogoEvolvePop>, nullptr},
    {IDM_EVOLVE_FIVE, complete<LogoEvolveFive>, nullptr},
    {IDM_REVERT, complete<LogoRevertPop>, nullptr},
    {IDM_ALL_RETIRE, complete<LogoAllRetire>, nullptr},
    {IDM_ALL_LIVE, complete<LogoAllLive>, nullptr},
    {IDM_MUTATE, complete<LogoMutateTurtle>, "You must select a turtle to mutate."},
    {IDM_EDIT_TURTLE, complete<LogoEditTurtle>, "You must select a turtle to copy."},
    {IDM_LOAD_TURTLE, LogoLoadTurtle, "You must select a turtle to load into."},
    {IDM_SAVE_TURTLE, complete<LogoSaveTurtle>, "You must select a turtle to save."},
    {IDM_SAVE_EPS, complete<LogoSaveEPS>, "You must select a turtle to save."},
    {IDM_SAVE_METAFILE, complete<LogoSaveMetafile>, "You must select a turtle to save."},
    {IDM_COPY, complete<LogoCopyTurtle>, "You must select a turtle to copy."},
    {IDM_PASTE, complete<LogoPasteTurtle>, "You must select a turtle to paste onto."},
    {IDM_PRINT_TURTLE, complete<LogoPrintTurtle>, "You must select a turtle to print."},
    {IDM_SAVE_POPULATION, complete<LogoSavePop>, nullptr},
    {IDM_LOAD_POPULATION, LogoLoadPop, nullptr},
};

// A held key sends presses faster than they are handled. The result of each is painted, and none
// follow once the key is released.
void keep_up_with_keys(HWND window) {
    UpdateWindow(window);
    DropRepeatedPresses();
}

// False for a command that is not this window's.
bool run_command(HWND window, LogoWindow* record, WORD id) {
    const auto* command =
        std::find_if(std::begin(kLogoCommands), std::end(kLogoCommands),
                     [id](const LogoCommand& candidate) { return candidate.id == id; });
    if (command == std::end(kLogoCommands)) {
        return false;
    }
    AfterDialogs rest;
    if (command->refusal != nullptr && record->selected == -1) {
        ShowMessage(window, command->refusal);
    } else {
        rest = command->run(window, record);
    }
    if (!LogoIsOpen(window, record)) {
        return true;
    }
    if (rest != nullptr) {
        rest();
        rest = nullptr; // its end may clear the busy mark
    }
    keep_up_with_keys(window);
    return true;
}

void lay_out(HWND window, LogoWindow* record) {
    const std::int16_t before = record->columns;
    LogoLayoutGrid(window, record);
    if (record->columns != before && record->showGrid != 0) { // else nothing is told differently
        platform::tell_content_changed(window);
    }
}

} // namespace

LRESULT CALLBACK LogoWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    LogoWindow* record = attached_record<LogoWindow>(window);
    if (record == nullptr) { // still being created
        return DefWindowProcA(window, message, wparam, lparam);
    }
    switch (message) {
    case WM_COMMAND:
        if (run_command(window, record, LOWORD(wparam))) {
            return 0;
        }
        break;
    case WM_ERASEBKGND:
        return EraseWhite(window, wparam);
    case WM_PAINT:
        LogoPaint(window, record);
        return 0;
    case WM_SIZE:
        lay_out(window, record);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
        LogoMouse(window, record, message, wparam, {LOWORD(lparam), HIWORD(lparam)});
        return 0;
    case WM_KEYDOWN:
        if (LogoKey(window, record, wparam, (HIWORD(lparam) & KF_REPEAT) != 0)) {
            keep_up_with_keys(window);
            return 0;
        }
        break;
    case platform::kAccessibleAction:
        LogoAct(window, record, static_cast<platform::AccessibleAction>(wparam), lparam);
        return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_INITMENU:
    case WM_INITMENUPOPUP:
        return 0;
    case WM_CLOSE:
        DestroyWindow(window);
        return 0;
    case WM_DESTROY:
        LogoDestroy(window);
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

} // namespace pelmora
