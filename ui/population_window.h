// The population window: its record, its life, and the pictures of its lifers.
//
// Part of what a command may do is open a dialog, and while one is open the window may be closed,
// which releases its record. A command that goes on after a dialog asks LogoIsOpen() first and
// touches nothing when the window is gone.
#pragma once

#include "evolve/population.h"
#include "platform/win32.h"
#include "turtle/draw.h"
#include "ui/gdi_owners.h"

#include <cstdint>
#include <memory>

namespace pelmora {

// The mark of a lifer that may breed; without it the lifer is retired.
inline constexpr std::uint16_t LIVE_FLAG = 0x100;

// The record of one population window, owned by the window. Its lifers are those of `current`.
struct LogoWindow {
    HWND hwnd = nullptr;
    std::uint16_t showGrid = 0; // 1: the grid; 0: the one lifer in zoomTree
    std::int16_t columns = 0;   // 0 until the first layout
    DrawContext drawContext{};
    ExprNode* zoomTree = nullptr; // borrowed from a lifer of one of the populations
    MemoryDevice offscreenDC;     // as large as a cell, whose picture is drawn on it
    Bitmap offscreenBitmap;
    std::int16_t lifeCount = 0;
    std::uint16_t busy = 0;                     // 1: no selection frame is painted
    std::int16_t selected = -1;                 // -1: none
    std::unique_ptr<std::uint16_t[]> lifeFlags; // LIVE_FLAG or 0
    std::unique_ptr<Bitmap[]> cellBitmaps;      // null: the cell has no picture
    std::unique_ptr<MemoryDevice[]> cellDCs;    // each holds its cell's bitmap
    PopulationOwner current;
    PopulationOwner previous; // the generation before, without programs until the first breeding

    LogoWindow() = default;
    ~LogoWindow();
    LogoWindow(const LogoWindow&) = delete;
    LogoWindow& operator=(const LogoWindow&) = delete;
};

// The frames of live and retired lifers, shared by all population windows; null before the first.
// They are kept to the end of the process, which takes them back.
HBRUSH LiveBrush();
HBRUSH RetiredBrush();

// A new hidden window with a random population. Null when that failed, which the user was told.
HWND CreateLogoWindow(HINSTANCE instance, const EvolveParams& params);

// The procedure of the population window's class.
LRESULT CALLBACK LogoWindowProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

// Makes the picture of one lifer and stores the score of its drawing.
void LogoMakePict(HWND window, LogoWindow* record, int index);

// The same for all lifers, in order.
void LogoMakePopPicts(HWND window, LogoWindow* record);

// Whether the window is still the one with this record: it may be gone after a dialog, and on
// Windows another one may have its handle by then.
bool LogoIsOpen(HWND window, const LogoWindow* record);

// The selected lifer, or null.
Lifer* LogoSelectedLifer(const LogoWindow* record);

// Marks a window as busy for as long as its populations or pictures are being rebuilt.
class BusyScope {
  public:
    BusyScope(HWND window, LogoWindow* record)
        : window_(window), record_(record), before_(record->busy) {
        record->busy = 1;
    }
    ~BusyScope() {
        if (LogoIsOpen(window_, record_)) {
            record_->busy = before_;
        }
    }
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;

  private:
    HWND window_;
    LogoWindow* record_;
    std::uint16_t before_; // a command may run while another one waits for its dialog
};

} // namespace pelmora
