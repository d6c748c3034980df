// Turtle programs as a programmer would write them by hand: plain nested loops, against which the
// interpreter is measured.
#pragma once

#include "turtle/draw.h"

#include <span>

namespace pelmora_bench {

struct HandWritten {
    const char* name;
    const char* program; // what the loop stands for, as text
    // A measuring run of it: takes a reset context and gives it back as draw_run() does.
    void (*measure)(pelmora::DrawContext* ctx, RECT* bounds);
};

std::span<const HandWritten> hand_written();

} // namespace pelmora_bench
