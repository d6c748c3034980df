#include "ui/population_window.h"

#include "resources/resource.h"
#include "services/application.h"
#include "services/held_key.h"
#include "services/message.h"
#include "services/wait_cursor.h"
#include "ui/breeding_commands.h"
#include "ui/exchange_commands.h"
#include "ui/population_view.h"
#include "ui/window_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <new>

namespace pelmora {
namespace {

HBRUSH live_brush;
HBRUSH retired_brush;

void make_frame_brushes() {
    if (live_brush == nullptr) {
        live_brush = CreateSolidBrush(RGB(0x60, 0x60, 0xFF));
    }
    if (retired_brush == nullptr) {
        retired_brush = CreateSolidBrush(RGB(0xFF, 0x60, 0x60));
    }
}

// --- Creation and destruction --------------------------------------------------------------------

template <class T>
bool allocate(std::unique_ptr<T[]>& array, std::int16_t count) {
    array.reset(new (std::nothrow) T[static_cast<std::size_t>(count)]());
    return array != nullptr;
}

// A record with its arrays; null after the user was told that there is no memory for it.
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

void make_offscreen_surface(HDC screen, LogoWindow* record) {
    record->offscreenDC.reset(CreateCompatibleDC(screen));
    const RECT cell = LogoCellRect(record, 0);
    record->offscreenBitmap.reset(
        CreateCompatibleBitmap(screen, cell.right - cell.left, cell.bottom - cell.top));
    SelectObject(record->offscreenDC.get(), record->offscreenBitmap.get());
}

// A process may have but so many graphics objects, on Windows 10,000, and each cell takes two. This
// many stay free for pens, dialogs and printing.
constexpr std::size_t kSpareObjects = 200;

// False when there is nothing left to make it of; the cell then stays without a picture.
bool make_cell_surface(HDC screen, const RECT& cell, MemoryDevice* device, Bitmap* bitmap) {
    device->reset(CreateCompatibleDC(screen));
    bitmap->reset(CreateCompatibleBitmap(screen, cell.right - cell.left, cell.bottom - cell.top));
    if (*device == nullptr || *bitmap == nullptr) {
        device->reset();
        bitmap->reset();
        return false;
    }
    SelectObject(device->get(), bitmap->get());
    SetStretchBltMode(device->get(), HALFTONE);
    return true;
}

// Ends at the first cell for which nothing is left: each of the next ones would wait for a refusal.
void make_cell_surfaces(HDC screen, LogoWindow* record) {
    const RECT cell = LogoCellRect(record, 0);
    std::array<MemoryDevice, kSpareObjects> spare; // given back at the end
    for (MemoryDevice& device : spare) {
        device.reset(CreateCompatibleDC(screen));
    }
    int i = 0;
    while (i < record->lifeCount &&
           make_cell_surface(screen, cell, &record->cellDCs[i], &record->cellBitmaps[i])) {
        ++i;
    }
}

// False when the populations could not be made, which the user was told; the record then goes with
// its window, whether the user closed that meanwhile or not.
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
    {
        const WindowDevice screen(window);
        make_cell_surfaces(screen.get(), record);
    }
    pop_randomize(record->current.get());
    LogoMakePopPicts(window, record);
    pop_statistics(record->current.get());
    record->busy = 0;
    return true;
}

LogoWindow* attached_record(HWND window) {
    return reinterpret_cast<LogoWindow*>(GetWindowLongPtrA(window, 0));
}

void attach_record(HWND window, std::unique_ptr<LogoWindow> record) {
    record->hwnd = window;
    SetWindowLongPtrA(window, 0, reinterpret_cast<LONG_PTR>(record.release()));
}

std::unique_ptr<LogoWindow> detach_record(HWND window) {
    return std::unique_ptr<LogoWindow>(
        reinterpret_cast<LogoWindow*>(SetWindowLongPtrA(window, 0, 0)));
}

void LogoDestroy(HWND window) {
    detach_record(window).reset();
}

// Fills the record of a new window. False after the user was told of a failure.
bool set_up(HWND window, LogoWindow* record, const EvolveParams& params) {
    LogoInitDrawContext(&record->drawContext, params);
    record->showGrid = 1;
    {
        const WindowDevice screen(window);
        make_offscreen_surface(screen.get(), record);
    }
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

LogoWindow::~LogoWindow() {
    if (offscreenDC != nullptr) {
        const DevicePen take_back(offscreenDC.get());
    }
    // Devices before the bitmaps that they hold.
    offscreenDC.reset();
    offscreenBitmap.reset();
    current.reset();
    previous.reset();
    cellDCs.reset();
    cellBitmaps.reset();
}

HBRUSH LiveBrush() {
    return live_brush;
}

HBRUSH RetiredBrush() {
    return retired_brush;
}

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
            detach_record(window);
            DestroyWindow(window);
        }
        return nullptr;
    }
    LogoLayoutGrid(window, record);
    return window;
}

// --- Pictures ------------------------------------------------------------------------------------

void LogoMakePict(HWND, LogoWindow* record, int index) {
    Lifer& lifer = record->current->lifers[index];
    const RECT cell = LogoCellRect(record, index);
    const int width = cell.right - cell.left;
    const int height = cell.bottom - cell.top;
    const RECT picture{0, 0, width, height};
    HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    HDC offscreen = record->offscreenDC.get();
    HDC cell_device = record->cellDCs[index].get();

    FillRect(offscreen, &picture, white); // nothing more of it is copied
    draw_fit(offscreen, &record->drawContext, lifer.program, width, height, FitMode::stretch, 0);
    lifer.score = draw_score(&record->drawContext);
    if (!BitBlt(cell_device, 0, 0, width, height, offscreen, 0, 0, SRCCOPY)) {
        FillRect(cell_device, &picture, white);
    }
}

void LogoMakePopPicts(HWND window, LogoWindow* record) {
    for (int i = 0; i < record->lifeCount; ++i) {
        LogoMakePict(window, record, i);
    }
}

bool LogoIsOpen(HWND window, const LogoWindow* record) {
    return IsWindow(window) && attached_record(window) == record;
}

Lifer* LogoSelectedLifer(const LogoWindow* record) {
    return record->selected >= 0 ? &record->current->lifers[record->selected] : nullptr;
}

// --- The window procedure ------------------------------------------------------------------------

namespace {

struct LogoCommand {
    WORD id;
    void (*run)(HWND window, LogoWindow* record);
    const char* refusal; // shown when no lifer is selected; null: the command needs none
};

// To add a command, add its row; its menu entry and shortcut are resources.
constexpr LogoCommand kLogoCommands[] = {
    {IDM_EVOLVE, LogoEvolvePop, nullptr},
    {IDM_EVOLVE_FIVE, LogoEvolveFive, nullptr},
    {IDM_REVERT, LogoRevertPop, nullptr},
    {IDM_ALL_RETIRE, LogoAllRetire, nullptr},
    {IDM_ALL_LIVE, LogoAllLive, nullptr},
    {IDM_MUTATE, LogoMutateTurtle, "You must select a turtle to mutate."},
    {IDM_EDIT_TURTLE, LogoEditTurtle, "You must select a turtle to copy."},
    {IDM_LOAD_TURTLE, LogoLoadTurtle, "You must select a turtle to load into."},
    {IDM_SAVE_TURTLE, LogoSaveTurtle, "You must select a turtle to save."},
    {IDM_SAVE_EPS, LogoSaveEPS, "You must select a turtle to save."},
    {IDM_SAVE_METAFILE, LogoSaveMetafile, "You must select a turtle to save."},
    {IDM_COPY, LogoCopyTurtle, "You must select a turtle to copy."},
    {IDM_PASTE, LogoPasteTurtle, "You must select a turtle to paste onto."},
    {IDM_PRINT_TURTLE, LogoPrintTurtle, "You must select a turtle to print."},
    {IDM_SAVE_POPULATION, LogoSavePop, nullptr},
    {IDM_LOAD_POPULATION, LogoLoadPop, nullptr},
};

// False for a command that is not this window's.
bool run_command(HWND window, LogoWindow* record, WORD id) {
    const auto* command =
        std::find_if(std::begin(kLogoCommands), std::end(kLogoCommands),
                     [id](const LogoCommand& candidate) { return candidate.id == id; });
    if (command == std::end(kLogoCommands)) {
        return false;
    }
    if (command->refusal != nullptr && record->selected == -1) {
        ShowMessage(window, command->refusal);
    } else {
        command->run(window, record);
    }
    // A held key gives commands faster than they are done: the user sees each one's outcome, and no
    // more follow once the key is let go.
    if (IsWindow(window)) {
        UpdateWindow(window);
        DropHeldPresses();
    }
    return true;
}

} // namespace

LRESULT CALLBACK LogoWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    LogoWindow* record = attached_record(window);
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
        LogoLayoutGrid(window, record);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
        LogoMouse(window, record, message, wparam, {LOWORD(lparam), HIWORD(lparam)});
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
