// Texts on their way to the program.
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace platform {

// Copies as much of a text as has room in `size` bytes along with a zero; the length copied.
inline std::size_t copy_text(const QByteArray& text, char* buffer, int size) {
    if (size <= 0) {
        return 0;
    }
    const auto length =
        std::min(static_cast<std::size_t>(text.size()), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.constData(), length);
    buffer[length] = '\0';
    return length;
}

} // namespace platform
