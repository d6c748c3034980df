// Numbers as users type them into dialogs.
#pragma once

#include <cstdint>

namespace pelmora {

// The decimal integer at the beginning of `text`: blanks, a sign if any, digits; the rest is
// ignored, and without digits it is 0. Saturates at 2147483647 of either sign.
std::int32_t TypedNumber(const char* text);

// The number that is `steps` below `number`, saturating likewise.
std::int32_t SteppedNumber(std::int32_t number, std::int32_t steps);

} // namespace pelmora
