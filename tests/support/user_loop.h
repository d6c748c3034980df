// The program's message loop in the hands of a test.
#pragma once

#include "platform/testing/user.h"

#include <functional>
#include <string>
#include <vector>

namespace pelmora_test {

// Runs the program's usual loop until the script is through, which ends with end_script().
void run(user::Script& script);
void end_script(const std::string& failure);

// Handles what is waiting.
void settle();

// Shows a window that only owns what a test opens; the caller's to destroy.
HWND show_owner();

// Gives a text to the clipboard, which the caller has opened; its zero is left out on demand.
void offer_text(const std::string& text, bool with_zero = true);

// Runs `action`, which opens alerts, and dismisses each; the texts that they showed, in order.
// Before it is dismissed, `look` is called with it.
std::vector<std::string> alerts_of(const std::function<void()>& action,
                                   const std::function<void(HWND)>& look = nullptr);

} // namespace pelmora_test
