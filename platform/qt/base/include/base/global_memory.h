// Blocks of global memory, which the clipboard takes over from the program.
#pragma once

#include "platform/win32.h"

#include <span>

namespace platform {

// The bytes of a block; empty for a handle that is none.
std::span<char> global_bytes(HGLOBAL memory);

} // namespace platform
