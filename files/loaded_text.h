// Reads whole files for the commands that load.
#pragma once

#include "model/expr.h"

#include <cstdlib>
#include <memory>
#include <string>

namespace pelmora {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

// A zero-terminated text with its length, as the file's bytes may hold zeros of their own.
struct LoadedText {
    std::unique_ptr<char[], FreeText> text; // null when it could not be read
    std::string failure;                    // then: what to tell the user
};

// Reads the file at `path` whole, with a zero behind its last byte. What is no regular file has no
// size and is refused as such: a pipe would wait for ever, a device never end.
LoadedText load_text(const std::string& path);

} // namespace pelmora
