// Runs the program's message loop in tests.
#pragma once

#include "platform/testing/user.h"

#include <functional>
#include <string>
#include <vector>

namespace pelmora_test {

// Runs the program's message loop until the script ends; the script's `done` must be end_script().
void run(user::Script& script);
void end_script(const std::string& failure);

// Handles all pending messages and painting.
void settle();

// Shows a window that owns the dialogs of a test. The caller destroys it.
HWND show_owner();

// Sets the text of the clipboard, which the caller has opened, with or without its terminating
// zero.
void offer_text(const std::string& text, bool with_zero = true);

// Runs `action`, which opens alerts, dismisses them and returns their texts in order. Calls `look`
// with each alert before dismissing it.
std::vector<std::string> alerts_of(const std::function<void()>& action,
                                   const std::function<void(HWND)>& look = nullptr);

} // namespace pelmora_test
