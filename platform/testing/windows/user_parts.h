// What the parts of the user on Windows share.
#pragma once

#include "platform/testing/user.h"

#include <functional>
#include <string>

namespace user {

// Does something as soon as all before it is handled: a key or a click goes to whatever has the
// keyboard or lies under the mouse just then. Scripts do these one by one, before their next step.
void soon(std::function<void()> action);

// The newest visible dialog of this program, the system's included; null when there is none.
HWND newest_dialog();

// Brings a window to the front and gives it the keyboard, unless a dialog of its own has it.
void bring_up(HWND window);

// UTF-8 to the system's own texts.
std::wstring wide(const std::string& text);

} // namespace user
