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

// Reads the file at `path` whole, with a zero behind its last byte. What is no regular file has no
// size and is refused as such: a pipe would wait for ever, a device never end.
LoadedText load_text(const std::string& path);

} // namespace pelmora
