// Shared by the source files of the simulated user on Windows.
#pragma once

#include "platform/testing/user.h"

#include <functional>
#include <string>

namespace user {

// Queues an action until all earlier events are handled: input goes to whichever window has the
// focus or is under the mouse when it is sent. Scripts run queued actions one by one before their
// next step.
void queue_action(std::function<void()> action);

// The newest visible dialog of this process, including the system's; null for none.
HWND newest_dialog();

// Makes a window the foreground window, unless a modal dialog has disabled it.
void bring_up(HWND window);

// UTF-8 to UTF-16.
std::wstring wide(const std::string& text);

} // namespace user
