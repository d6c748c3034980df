// The alerts that the program shows, read and dismissed as a user does.
#pragma once

#include "platform/win32.h"

#include <functional>
#include <string>
#include <vector>

namespace pelmora_test {

// Runs `action`, which opens alerts, and dismisses each; the texts that they showed, in order.
// Before it is dismissed, `look` is called with it.
std::vector<std::string> alerts_of(const std::function<void()>& action,
                                   const std::function<void(HWND)>& look = nullptr);

} // namespace pelmora_test
