#include "ui/population_input.h"

#include "ui/population_cells.h"
#include "ui/population_view.h"

#include <algorithm>

namespace pelmora {
namespace {

// --- What can be done ----------------------------------------------------------------------------

// In the grid; -1 selects none.
void select_lifer(HWND window, LogoWindow* record, int index) {
    if (index == record->selected) {
        return;
    }
    const WindowDevice device(window);
    if (record->selected >= 0) {
        LogoEraseSelection(device.get(), record, record->selected);
    }
    record->selected = static_cast<std::int16_t>(index);
    if (index >= 0) {
        LogoDrawSelection(device.get(), record, index);
    }
    platform::tell_selected(window);
}

void toggle_mark(HWND window, LogoWindow* record, int index) {
    record->lifeFlags[index] ^= LIVE_FLAG;
    LogoInvalidateCell(record, index);
    LogoTellChanged(window, record, index);
}

void redraw_all(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    platform::tell_content_changed(window);
}

void show_grid(HWND window, LogoWindow* record) {
    record->showGrid = 1;
    redraw_all(window);
}

void show_alone(HWND window, LogoWindow* record, int index) {
    record->zoomTree = record->current->lifers[index].program;
    record->showGrid = 0;
    redraw_all(window);
}

} // namespace

// --- The mouse -----------------------------------------------------------------------------------

void LogoMouse(HWND window, LogoWindow* record, UINT message, WPARAM flags, POINT point) {
    const int hit = LogoHitTest(window, record, point);
    const bool grid = record->showGrid != 0;
    if (grid) {
        select_lifer(window, record, hit);
    }
    if (!grid && message == WM_LBUTTONDOWN) {
        show_grid(window, record);
    } else if (hit == -1) {
        return;
    } else if (grid && message == WM_RBUTTONDOWN) {
        show_alone(window, record, hit);
    } else if (record->selected != -1 && (flags & MK_SHIFT) != 0) {
        toggle_mark(window, record, hit);
    }
}

// --- The keyboard --------------------------------------------------------------------------------

namespace {

// Where a key moves the selection; the same lifer where there is no other in that direction, -1 for
// any other key.
int moved(const LogoWindow* record, WPARAM key) {
    const int from = record->selected;
    const int last = record->lifeCount - 1;
    const int row = std::max<int>(record->columns, 1);
    switch (key) {
    case VK_LEFT:
        return std::max(from - 1, 0);
    case VK_RIGHT:
        return std::min(from + 1, last);
    case VK_UP:
        return from < row ? std::max(from, 0) : from - row;
    case VK_DOWN:
        return from < 0 ? 0 : from + row <= last ? from + row : from;
    case VK_HOME:
        return 0;
    case VK_END:
        return last;
    default:
        return -1;
    }
}

bool key_in_grid(HWND window, LogoWindow* record, WPARAM key) {
    const int to = moved(record, key);
    if (to >= 0) {
        select_lifer(window, record, record->selected < 0 ? 0 : to);
        return true;
    }
    if (key == VK_RETURN && record->selected >= 0) {
        show_alone(window, record, record->selected);
        return true;
    }
    return false;
}

bool key_in_single_view(HWND window, LogoWindow* record, WPARAM key) {
    if (key == VK_RETURN || key == VK_ESCAPE) {
        show_grid(window, record);
        return true;
    }
    const bool sideways = key == VK_LEFT || key == VK_RIGHT;
    if (!sideways || record->selected < 0) {
        return false;
    }
    const int to = moved(record, key);
    if (to != record->selected) {
        record->selected = static_cast<std::int16_t>(to); // its frame is not shown now
        show_alone(window, record, to);
    }
    return true;
}

} // namespace

bool LogoKey(HWND window, LogoWindow* record, WPARAM key, bool held) {
    if (held && (key == VK_SPACE || key == VK_RETURN || key == VK_ESCAPE)) {
        return true; // it would flicker, and end by chance
    }
    if (key == VK_SPACE && record->selected >= 0) {
        toggle_mark(window, record, record->selected);
        return true;
    }
    return record->showGrid != 0 ? key_in_grid(window, record, key)
                                 : key_in_single_view(window, record, key);
}

// --- Assistive technology ------------------------------------------------------------------------

void LogoAct(HWND window, LogoWindow* record, platform::AccessibleAction action, LPARAM cell) {
    const bool grid = record->showGrid != 0;
    // The cell may be one of what was shown before.
    const bool shown = cell >= 0 && cell < (grid ? record->lifeCount : 1);
    const int lifer = shown ? LogoLiferOfCell(record, static_cast<int>(cell)) : -1;
    if (lifer < 0) {
        return;
    }
    if (grid) {
        select_lifer(window, record, lifer);
    }
    if (action == platform::AccessibleAction::toggle) {
        toggle_mark(window, record, lifer);
    } else if (action == platform::AccessibleAction::show_alone) {
        grid ? show_alone(window, record, lifer) : show_grid(window, record);
    }
}

} // namespace pelmora
