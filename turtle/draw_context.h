// A turtle's drawing context: its state, its placement on a device and its measures.
#pragma once

#include "platform/win32.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace pelmora {

// Which measure a multiplier weighs.
enum ScoreTerm : std::size_t {
    FWDMULT,
    TURNMULT,
    LOOPMULT,
    CLRMULT,
    RPTMULT,
    REPMULT,
    kScoreTerms
};

// The step limit of the windows, which the user of an editor may change.
inline constexpr std::int32_t kDefaultMaxSteps = 10240;

// A turtle's heading and pen.
struct TurtleState {
    double heading;                // degrees, -360 to 360; 0 along +x, 90 along +y
    std::int32_t pen_up;           // 0 or 1
    std::int32_t pen_width;        // device units; 0 is the thinnest pen
    std::int32_t red, green, blue; // 0 to 255
};

// Everything that a run needs besides the program and the device. Units are device units unless
// said otherwise.
struct DrawContext : TurtleState {
    double x, y;               // the turtle's position
    double origin_x, origin_y; // where a run starts
    double scale_x, scale_y;   // device units per turtle unit; scale_y < 0: turtle y grows upward
    std::int32_t steps;        // terminals started, the one that the limit refused included
    // The measures of a run.
    std::int32_t turns, right_turns, left_turns;
    std::int32_t circles, circles_right, circles_left; // wraps of the heading by 360 degrees
    std::int32_t color_changes;
    std::int32_t repeats;     // REPEAT_n executed; saturates at the largest value
    std::int32_t repetitions; // the sum of their n; saturates likewise
    double distance;          // turtle units, pen up or down
    TurtleState home;         // the state at the start of a run
    std::int32_t max_steps;   // the step limit
    std::array<double, kScoreTerms> multipliers;
};

// The colour for a device.
inline COLORREF turtle_color(const TurtleState& turtle) {
    return RGB(static_cast<BYTE>(turtle.red), static_cast<BYTE>(turtle.green),
               static_cast<BYTE>(turtle.blue));
}

// Makes a solid pen, selects it into the device and releases the one that it replaces.
inline void pen_renew(HDC device, int width, COLORREF color) {
    DeleteObject(SelectObject(device, CreatePen(PS_SOLID, width, color)));
}

} // namespace pelmora
