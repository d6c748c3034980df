// A reference interpreter: a recursive walk, step by step. It is slow, and only for trees of modest
// depth and repetition.
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
