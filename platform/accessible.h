// What a window that draws its content itself tells a screen reader and other assistive technology.
// The window describes its content; the platform translates (QAccessible on Linux, IAccessible on
// Windows). Nothing is asked while nobody listens.
#pragma once

#include "platform/win32.h"

#include <memory>
#include <string>

namespace platform {

// A window keeps its role: listeners remember the first that they were told.
enum class AccessibleRole {
    table,   // of cells
    picture, // has no cells
    status,  // one cell, with a text that is read out when it changes
};

struct AccessibleCell {
    std::string name;
    std::string description; // its state, in words
    bool selected;
    RECT area; // in the client area, or outside it when the cell is not visible
};

// The content of a window. The platform asks it from the message loop, at any time while the window
// lets it live. All texts are UTF-8.
class AccessibleContent {
  public:
    virtual ~AccessibleContent() = default;

    virtual AccessibleRole role() const = 0;
    virtual std::string name() const = 0;

    virtual int cells() const { return 0; }
    virtual int columns() const { return 1; } // of a table: cells in a row, at least 1
    virtual AccessibleCell cell(int /*index, of an existing cell*/) const { return {}; }
    virtual int selected() const { return -1; } // -1: none
};

// What a user may ask for through assistive technology. It is posted to the window as this message,
// with the action in wParam and the cell in lParam, unless the window waits for a dialog. The cell
// may be gone when the message arrives.
constexpr UINT kAccessibleAction = 0x8001; // one of those that are the program's own
enum class AccessibleAction : WPARAM { select, toggle, show_alone };

// Gives a window its description. The platform keeps no ownership: once the last owner has released
// the content, the window has none.
void describe(HWND window, const std::shared_ptr<AccessibleContent>& content);

// Tell listeners what changed. The selected cell is read out if the window has the keyboard.
void tell_selected(HWND window);
void tell_cell_changed(HWND window, int cell);
void tell_content_changed(HWND window); // its name, or the number or state of many cells

} // namespace platform
