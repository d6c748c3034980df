// The hands and eyes of a user: presses keys, moves the mouse, answers dialogs and looks at
// windows, through the same events that a real user's make. Nothing here calls the program's own
// functions.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace user {

// --- Looking -------------------------------------------------------------------------------------

// The newest visible window or dialog with this title; null when there is none.
HWND find_window(const std::string& title);
int count_windows(const std::string& title);

// A pixel of a window's client area, as 0x00BBGGRR.
COLORREF pixel(HWND window, int x, int y);

// All pixels of a part of a window's client area, to compare with later ones.
std::vector<std::uint32_t> pixels(HWND window, const RECT& area);

// The text that a control of a dialog shows.
std::string text(HWND dialog, int control);

// Where a slider stands.
int position(HWND dialog, int control);

// The entries of a window's menus, one line each, popups with a colon, greyed ones in brackets.
std::vector<std::string> menu_lines(HWND window);

// Saves a picture of the whole window, its menu bar included, as a PNG file. False when it cannot
// be written.
bool save_picture(HWND window, const std::string& path);

// --- Acting: what it causes is handled by the program's loop afterwards -------------------------

enum class Button { left, right };
enum Modifier : unsigned { none = 0, shift = 1, control = 2, alt = 4 };

// A key with its modifiers, such as "Ctrl+E", "Alt+/", "Return", "Up", to the window or dialog,
// wherever its focus is.
void press(HWND window, const std::string& keys);

void click(HWND window, int x, int y, Button button = Button::left, unsigned modifiers = none);
void double_click(HWND window, int x, int y, unsigned modifiers = none);

// Opens a menu with the mouse and clicks an entry: "File", "New Population...". Mnemonics and
// shortcut labels are not part of the names. False when there is no such entry or it is greyed.
bool choose(HWND window, const std::string& menu, const std::string& entry);

// Clicks a control of a dialog, near its bottom in the middle.
void click_control(HWND dialog, int control, Button button = Button::left);

// Clicks an arrow of an up-down control.
void click_arrow(HWND dialog, int control, bool up);
void hold_arrow(HWND dialog, int control, bool up); // and does not let go

// Puts the focus into a control, as a click there would.
void focus(HWND dialog, int control);

// Replaces what an edit field holds, key by key.
void type(HWND dialog, int control, const std::string& text);

// Drags a slider's thumb to a position.
void drag(HWND dialog, int control, int to);

void resize(HWND window, int width, int height); // the client area
void close(HWND window);                         // through the frame's close box

// --- Scripts -------------------------------------------------------------------------------------

// What a user does, step by step. Each step runs inside whatever message loop the program is in
// just then (a modal dialog's, too), once everything before it is handled and painted.
class Script {
  public:
    // `done` is called after the last step, or with what was waited for in vain.
    explicit Script(std::function<void(const std::string& failure)> done);
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // Runs `action` when all before it is done.
    Script& then(const std::string& name, std::function<void()> action);

    // Goes on when `condition` holds; gives up after a generous time.
    Script& await(const std::string& name, std::function<bool()> condition);

    void start();

  private:
    struct State;
    State* state_;
};

} // namespace user
