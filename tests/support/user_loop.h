// The program's message loop in the hands of a test.
#pragma once

#include "platform/user.h"

#include <string>

namespace pelmora_test {

// Runs the program's usual loop until the script is through, which ends with end_script().
void run(user::Script& script);
void end_script(const std::string& failure);

// Handles what is waiting.
void settle();

} // namespace pelmora_test
