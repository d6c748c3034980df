// Runs of a program, their value, and the two-pass picture that fills a target.
#pragma once

#include "model/expr.h"
#include "turtle/draw_context.h"

namespace pelmora {

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
