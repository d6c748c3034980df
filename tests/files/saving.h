// Saving as the program's commands do it.
#pragma once

#include "files/saved_file.h"

#include <cstdio>
#include <string>

namespace pelmora_test {

// Saves a text; whether that succeeded.
inline bool save(const std::string& path, const std::string& text) {
    pelmora::SavedFile file(path);
    if (file.stream() == nullptr) {
        return false;
    }
    std::fputs(text.c_str(), file.stream());
    return file.commit();
}

} // namespace pelmora_test
