// The message loop of modal dialogs.
#pragma once

#include <functional>

namespace platform {

// Dispatches messages while `running` returns true. WM_QUIT ends the loop and is posted again for
// the outer loops. The code that ends the dialog must post WM_NULL, as the loop may be waiting.
void run_modal_loop(const std::function<bool()>& running);

} // namespace platform
