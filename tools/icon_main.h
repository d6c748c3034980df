// What the programs that make icons share.
#pragma once

#include "model/expr.h"

#include <functional>
#include <string>

namespace icon {

// Reads the turtle program, and writes what `content` makes of it. Returns the exit code; errors
// are lines on standard error.
int write_icon(const char* program_path, const char* icon_path,
               const std::function<std::string(const pelmora::ExprNode*)>& content);

} // namespace icon
