// A window that logs its messages.
#pragma once

#include "tests/support/user_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace pelmora_test {

using Lines = std::vector<std::string>;

// The log: a line for each relevant message. Notifications of edit fields are left out, as the
// program does not use them.
extern Lines log_lines;
Lines take_log();

// Called by the windows' procedure after logging; a result other than 0 replaces DefWindowProcA.
extern std::function<LRESULT(HWND, UINT, WPARAM)> on_message;

// Shows a second window of the class beside the first.
HWND show_other();

// A fixture with a shown window of the class "Logging", with the population window's menu.
class Windows : public testing::Test {
  protected:
    Windows();
    ~Windows() override;

    HWND window_;
    Lines created_; // the log before it was shown
    Lines shown_;   // and after
};

} // namespace pelmora_test
