// Blocks of global memory. SetClipboardData passes their ownership to the clipboard.
#pragma once

#include "platform/win32.h"

#include <span>

namespace platform {

// The bytes of a block; empty for an invalid handle.
std::span<char> global_bytes(HGLOBAL memory);

} // namespace platform
