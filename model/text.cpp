#include "model/text.h"

#include <cstdlib>
#include <cstring>

namespace pelmora {

char* StrDup(const char* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const std::size_t bytes = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(std::malloc(bytes));
    if (copy != nullptr) {
        std::memcpy(copy, text, bytes);
    }
    return copy;
}

char* StrJoin(const char* first, const char* second) {
    const std::size_t first_length = first == nullptr ? 0 : std::strlen(first);
    const std::size_t second_length = second == nullptr ? 0 : std::strlen(second);
    auto* joined = static_cast<char*>(std::malloc(first_length + second_length + 2));
    if (joined == nullptr) {
        return nullptr;
    }
    if (first != nullptr) {
        std::memcpy(joined, first, first_length);
    }
    if (second != nullptr) {
        std::memcpy(joined + first_length, second, second_length);
    }
    joined[first_length + second_length] = '\0';
    return joined;
}

} // namespace pelmora
