// Copies texts into buffers of the program.
#pragma once

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace platform {

// Copies a text, truncated to `size` bytes including its zero. Returns the length without the zero.
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
