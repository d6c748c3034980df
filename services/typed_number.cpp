#include "services/typed_number.h"

#include <algorithm>
#include <limits>

namespace pelmora {
namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();

// Not isspace(), which depends on the locale.
bool is_blank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::int32_t saturated(std::int64_t number) {
    return static_cast<std::int32_t>(std::clamp(number, -kLargest, kLargest));
}

} // namespace

std::int32_t TypedNumber(const char* text) {
    while (is_blank(*text)) {
        ++text;
    }
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') {
        ++text;
    }
    std::int64_t number = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
        number = std::min(number * 10 + (*text - '0'), kLargest);
    }
    return saturated(negative ? -number : number);
}

std::int32_t SteppedNumber(std::int32_t number, std::int32_t steps) {
    return saturated(std::int64_t{number} - steps);
}

} // namespace pelmora
