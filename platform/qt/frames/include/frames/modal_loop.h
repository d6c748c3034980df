// The message loop of modal dialogs.
#pragma once

#include <functional>

namespace platform {

// Handles messages while `goes_on` says so, or until the program is to end, of which the loops
// further out hear next. Whoever ends the dialog posts WM_NULL, as the loop may be asleep.
void run_modal_loop(const std::function<bool()>& goes_on);

} // namespace platform
