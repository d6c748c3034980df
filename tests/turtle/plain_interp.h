// The interpreter in its plainest form: a recursive walk that takes every step singly. Slow, and
// only for trees of modest depth and repetition; the true one is held against it.
#pragma once

#include "turtle/draw.h"

#include <string>

namespace pelmora_test {

struct PlainRun {
    int result;
    std::string lines; // for the error log
};
PlainRun plain_interp(HDC device, pelmora::DrawContext* ctx, const pelmora::ExprNode* node,
                      RECT* bounds);

} // namespace pelmora_test
