// A window that notes its messages, in the hands of a test.
#pragma once

#include "tests/support/user_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace pelmora_test {

using Lines = std::vector<std::string>;

// What the windows were told, a line for each message that matters. What fields tell of their own
// text does not: the program asks them.
extern Lines log_lines;
Lines take_log();

// What a test wants the windows to do besides noting; an answer that is not 0 is theirs.
extern std::function<LRESULT(HWND, UINT, WPARAM)> on_message;

// Shows a second window of the class, beside the first.
HWND show_other();

// A shown window of the class "Logging", with the population window's menu.
class Windows : public testing::Test {
  protected:
    Windows();
    ~Windows() override;

    HWND window_;
    Lines created_; // what it was told before it was shown
    Lines shown_;   // and then
};

} // namespace pelmora_test
