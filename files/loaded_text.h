// Reads whole files for the commands that load.
#pragma once

#include "model/text.h"

#include <string>

namespace pelmora {

// A zero-terminated text, which ends at the file's first zero if it holds one.
struct LoadedText {
    OwnedText text;      // null when it could not be read
    std::string failure; // then: what to tell the user
};

// Reads the whole file at `path` and appends a zero. A file that is not regular has no size and is
// refused: reading a pipe may block for ever, and a device may never end.
LoadedText load_text(const std::string& path);

} // namespace pelmora
