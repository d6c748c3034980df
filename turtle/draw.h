// A turtle's drawing context: its state, its placement on a device, its measures and their value;
// and the two-pass picture that fills a target.
#pragma once

#include "model/expr.h"
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

// The step limit of the windows.
inline constexpr std::int32_t kDefaultMaxSteps = 10240;

// Where a turtle looks and how it draws.
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
    std::int32_t steps;        // terminals started in this run
    // The measures of a run.
    std::int32_t turns, right_turns, left_turns;
    std::int32_t circles, circles_right, circles_left; // headings brought back by 360 degrees
    std::int32_t color_changes;
    std::int32_t repeats;     // REPEAT_n executed; saturates at the largest value
    std::int32_t repetitions; // the sum of their n; saturates likewise
    double distance;          // turtle units, pen up or down
    TurtleState home;         // in which a run starts
    std::int32_t max_steps;   // the step limit
    std::array<double, kScoreTerms> multipliers;
};

enum class FitMode {
    stretch, // each axis scaled on its own, so that the picture fills the target
    uniform, // one scale for both axes, the picture's corner at (0, 0)
};

// Starts a run afresh: home state, origin 0, scale 1, steps and measures 0. The limit, the home
// state and the multipliers stay.
void draw_reset(DrawContext* ctx);

// Runs a program once from the origin. With `bounds` it measures: nothing is drawn, and `bounds`
// becomes the rectangle, in device units, of the turtle's path with (0, 0), grown by 2 on every
// side. Without bounds it draws on `device`. Either may be null; a null tree is an empty program.
// Pens are made for the device in both cases and the last one stays selected: see DevicePen.
// Returns 1 when the program ran to its end, 0 when the step limit stopped it.
int draw_run(HDC device, DrawContext* ctx, const ExprNode* tree, RECT* bounds);

// The program's value, from the measures of its last run and the multipliers.
double draw_score(const DrawContext* ctx);

// Moves each side inward; negative amounts grow the rectangle.
void rect_inset(RECT* rect, int dx, int dy);

// The bounds of the program's drawing in turtle units, from a run that starts afresh. The context
// is left as that leaves it.
RECT draw_measure(DrawContext* ctx, const ExprNode* tree);

// Starts a run afresh so that a drawing with these bounds fills a target of `width` by `height`
// (positive) whose top is at `y_offset` (used by stretch only).
void draw_place(DrawContext* ctx, const RECT& bounds, int width, int height, FitMode mode,
                int y_offset);

// Draws the program to fill such a target: what a measuring run, and then a drawing run placed by
// its bounds, would show there. The context is left as the drawing run leaves it. The device is
// taken to be a surface: of pens and lines only those are sure to be made that can be seen there,
// so the pen that stays selected may be an earlier one, or the device's own.
void draw_fit(HDC device, DrawContext* ctx, const ExprNode* tree, int width, int height,
              FitMode mode, int y_offset);

// The colour as a device takes it.
inline COLORREF turtle_color(const TurtleState& turtle) {
    return RGB(static_cast<BYTE>(turtle.red), static_cast<BYTE>(turtle.green),
               static_cast<BYTE>(turtle.blue));
}

// Makes a solid pen, selects it into the device and releases the one that it replaces.
void pen_renew(HDC device, int width, COLORREF color);

// Takes back the pen that drawing leaves selected: at its end the device's stock pen is selected
// again, and what was selected is released.
class DevicePen {
  public:
    explicit DevicePen(HDC device) : device_(device) {}
    ~DevicePen();
    DevicePen(const DevicePen&) = delete;
    DevicePen& operator=(const DevicePen&) = delete;

  private:
    HDC device_;
};

} // namespace pelmora
