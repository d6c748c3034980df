// The record of a population window.
#pragma once

#include "evolve/generation.h"
#include "evolve/population.h"
#include "platform/accessible.h"
#include "platform/win32.h"
#include "services/gdi_owners.h"
#include "turtle/draw.h"

#include <cstdint>
#include <memory>

namespace pelmora {

// The record of one population window, owned by the window. Its lifers are those of `current`.
struct LogoWindow {
    HWND hwnd = nullptr;
    std::uint16_t showGrid = 0; // 1: the grid; 0: the one lifer in zoomTree
    std::int16_t columns = 0;   // 0 until the first layout
    DrawContext drawContext{};
    ExprNode* zoomTree = nullptr; // borrowed from a lifer of one of the populations
    OwnedDevice offscreenDC;      // cell-sized; pictures are drawn on it
    Bitmap offscreenBitmap;
    std::int16_t lifeCount = 0;
    std::uint16_t busy = 0;                     // 1: no selection frame is painted
    std::int16_t selected = -1;                 // -1: none
    std::unique_ptr<std::uint16_t[]> lifeFlags; // LIVE_FLAG or 0
    std::unique_ptr<Bitmap[]> cellBitmaps;      // null: the cell has no picture
    std::unique_ptr<OwnedDevice[]> cellDCs;     // each has its cell's bitmap selected
    PopulationOwner current;
    PopulationOwner previous; // the generation before, without programs until the first breeding
    std::shared_ptr<platform::AccessibleContent> cells; // what assistive technology is told of it

    LogoWindow() = default;
    ~LogoWindow();
    LogoWindow(const LogoWindow&) = delete;
    LogoWindow& operator=(const LogoWindow&) = delete;
};

// The frames of live and retired lifers, shared by all population windows; null before the first.
// They are never deleted: the system frees them with the process.
extern HBRUSH liveBrush;
extern HBRUSH retiredBrush;

// Whether the window still exists and has this record: a dialog may outlast the window, and Windows
// may reuse its handle.
bool LogoIsOpen(HWND window, const LogoWindow* record);

// The selected lifer, or null.
Lifer* LogoSelectedLifer(const LogoWindow* record);

// Marks a window as busy while its populations or pictures are rebuilt.
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
    std::uint16_t before_; // commands nest while a dialog is open
};

} // namespace pelmora
