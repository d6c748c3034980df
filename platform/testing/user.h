// A simulated user: presses keys, moves the mouse, answers dialogs and reads windows, through the
// same events as a real user. Nothing here calls the program's own functions.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace user {

// --- Looking -------------------------------------------------------------------------------------

// The newest visible window or dialog with this title; null for none.
HWND find_window(const std::string& title);
int count_windows(const std::string& title);

// A pixel of a window's client area, as 0x00BBGGRR.
COLORREF pixel(HWND window, int x, int y);

// The pixels of a part of a window's client area as 0xAARRGGBB, row by row.
std::vector<std::uint32_t> pixels(HWND window, const RECT& area);

// `control` is the id of a control in a dialog or a window.

// The text of a control.
std::string text(HWND window, int control);

// Whether a radio button is checked.
bool checked(HWND window, int control);

// The position of a slider.
int position(HWND dialog, int control);

// The entries of a window's menus, one line each: popups end with a colon, disabled entries are in
// brackets.
std::vector<std::string> menu_lines(HWND window);

// The title of the newest open file or print dialog; empty for none.
std::string system_dialog();

// The names that the open file dialog lists at this moment; it fills its list gradually.
std::vector<std::string> listed_files();

// The text of the message box over a file or print dialog; empty for none.
std::string question();

// The bytes that the clipboard offers in a format such as "image/x-emf"; empty for none.
std::string copied(const std::string& format);

// Saves a picture of the whole window, including its menu bar, as a PNG file; where windows have a
// frame, with the frame. False when the file cannot be written.
bool save_picture(HWND window, const std::string& path);
bool save_system_dialog_picture(const std::string& path);

// --- Acting: the program's loop handles the effects afterwards -----------------------------------

enum class Button { left, right };
enum Modifier : unsigned { none = 0, shift = 1, control = 2, alt = 4 };

// Presses a key with its modifiers, such as "Ctrl+E", "Alt+/", "Return", "Up", in the window or
// dialog, whichever control has the focus.
void press(HWND window, const std::string& keys);

// Presses a key and holds it for `repeats` further key-down events; let_go() releases it.
void hold(HWND window, const std::string& keys, int repeats);
void let_go(HWND window, const std::string& keys);

void click(HWND window, int x, int y, Button button = Button::left, unsigned modifiers = none);
void double_click(HWND window, int x, int y, unsigned modifiers = none);

// Opens a menu with the mouse and clicks an entry: "File", "New Population...". The names leave out
// mnemonics and shortcut labels. False when there is no such entry or it is disabled.
bool choose(HWND window, const std::string& menu, const std::string& entry);

// Clicks a control, near its bottom in the middle.
void click_control(HWND window, int control, Button button = Button::left);

// Clicks an arrow of an up-down control.
void click_arrow(HWND dialog, int control, bool up);
void hold_arrow(HWND dialog, int control, bool up); // does not release it

// Gives a control the focus, as a click would.
void focus(HWND window, int control);

// Replaces the text of an edit field, key by key.
void type(HWND window, int control, const std::string& text);

// Drags a slider's thumb to a position.
void drag(HWND dialog, int control, int to);

void resize(HWND window, int width, int height); // the client area
void close(HWND window);                         // by the frame's close box

// Types a name into the open file dialog and presses its default button. The dialog stays open when
// it refuses the name; see question().
void choose_file(const std::string& name);

// Presses the default button of the open file or print dialog.
void accept_system_dialog();

// Selects a filter of the open file dialog; the first is 0.
void choose_filter(int index);

// Makes the open print dialog print to a file and presses its default button. The file is PDF, or
// PostScript under Wine.
void print_to_file(const std::string& path);

// Presses a button of the message box of question() by its label ("Yes", "No", "OK"), or Return.
void answer(const std::string& button);
void answer_with_return();

// Presses Escape in the open file or print dialog.
void cancel_system_dialog();

// --- Scripts -------------------------------------------------------------------------------------

// The steps of a simulated user. Each step runs inside whatever message loop is running (including
// a modal dialog's), after all earlier events are handled and painted.
class Script {
  public:
    // `done` is called after the last step with "", or with a description of the step that timed
    // out.
    explicit Script(std::function<void(const std::string& failure)> done);
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // Adds a step that runs `action`.
    Script& then(const std::string& name, std::function<void()> action);

    // Adds a step that waits until `condition` holds; gives up after 60 seconds.
    Script& await(const std::string& name, std::function<bool()> condition);

    void start();

  private:
    struct State;
    std::shared_ptr<State> state_;
};

} // namespace user
