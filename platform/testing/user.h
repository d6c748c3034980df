// The hands and eyes of a user: presses keys, moves the mouse, answers dialogs and looks at
// windows, through the same events that a real user's make. Nothing here calls the program's own
// functions.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <functional>
#include <memory>
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

// Controls are those of a dialog or of a window.

// The text that a control shows.
std::string text(HWND window, int control);

// Whether a radio button is marked.
bool checked(HWND window, int control);

// Where a slider stands.
int position(HWND dialog, int control);

// The entries of a window's menus, one line each, popups with a colon, greyed ones in brackets.
std::vector<std::string> menu_lines(HWND window);

// The title of the file or print dialog that is open, the newest of them; empty when there is none.
std::string system_dialog();

// The names that the open file dialog lists just now; it finds them little by little.
std::vector<std::string> listed_files();

// What a file or print dialog asks or tells in a box of its own; empty when it does not.
std::string question();

// The bytes that the clipboard offers in a format such as "image/x-emf"; empty when it does not.
std::string copied(const std::string& format);

// Saves a picture of the whole window, its menu bar included, as a PNG file. False when it cannot
// be written.
bool save_picture(HWND window, const std::string& path);
bool save_system_dialog_picture(const std::string& path);

// --- Acting: what it causes is handled by the program's loop afterwards -------------------------

enum class Button { left, right };
enum Modifier : unsigned { none = 0, shift = 1, control = 2, alt = 4 };

// A key with its modifiers, such as "Ctrl+E", "Alt+/", "Return", "Up", to the window or dialog,
// wherever its focus is.
void press(HWND window, const std::string& keys);

// The same, held until it has sent so many presses more, and then let go.
void hold(HWND window, const std::string& keys, int repeats);
void let_go(HWND window, const std::string& keys);

void click(HWND window, int x, int y, Button button = Button::left, unsigned modifiers = none);
void double_click(HWND window, int x, int y, unsigned modifiers = none);

// Opens a menu with the mouse and clicks an entry: "File", "New Population...". Mnemonics and
// shortcut labels are not part of the names. False when there is no such entry or it is greyed.
bool choose(HWND window, const std::string& menu, const std::string& entry);

// Clicks a control, near its bottom in the middle.
void click_control(HWND window, int control, Button button = Button::left);

// Clicks an arrow of an up-down control.
void click_arrow(HWND dialog, int control, bool up);
void hold_arrow(HWND dialog, int control, bool up); // and does not let go

// Puts the focus into a control, as a click there would.
void focus(HWND window, int control);

// Replaces what an edit field holds, key by key.
void type(HWND window, int control, const std::string& text);

// Drags a slider's thumb to a position.
void drag(HWND dialog, int control, int to);

void resize(HWND window, int width, int height); // the client area
void close(HWND window);                         // through the frame's close box

// Types a name into the open file dialog and presses its button. It stays open when it refuses the
// name: see question().
void choose_file(const std::string& name);

// Presses the button of the open file or print dialog.
void accept_system_dialog();

// Picks a filter of the open file dialog, the first being 0.
void choose_filter(int index);

// Tells the open print dialog to print into a file and presses its button. The file is what the
// printer makes: PDF, or PostScript under Wine.
void print_to_file(const std::string& path);

// Presses a button of what question() says, by its label: "Yes", "No", "OK"; or Return.
void answer(const std::string& button);
void answer_with_return();

// Presses Escape in the open file or print dialog.
void cancel_system_dialog();

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
    std::shared_ptr<State> state_;
};

} // namespace user
