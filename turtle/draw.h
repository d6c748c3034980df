// Running a program, scoring it, and drawing it to fill a target.
#pragma once

#include "model/expr.h"
#include "turtle/draw_context.h"

namespace pelmora {

enum class FitMode {
    stretch, // each axis scaled on its own, so that the picture fills the target
    uniform, // one scale for both axes, the picture's corner at (0, 0)
};

// Resets the context for a run: home state, origin 0, scale 1, steps and measures 0. The limit, the
// home state and the multipliers stay.
void draw_reset(DrawContext* ctx);

// Runs a program once from the origin. With `bounds` it measures: nothing is drawn, and `bounds`
// becomes the rectangle, in device units, of the turtle's path with (0, 0), grown by 2 on every
// side. Without bounds it draws on `device`. Either may be null; a null tree is an empty program.
// Pens are made for the device in both cases and the last one stays selected: see DevicePen.
// Returns 1 when the program ran to its end, 0 when the step limit stopped it.
int draw_run(HDC device, DrawContext* ctx, const ExprNode* tree, RECT* bounds);

// The program's score, from the measures of its last run and the multipliers.
double draw_score(const DrawContext* ctx);

// Moves each side inward; negative amounts grow the rectangle.
void rect_inset(RECT* rect, int dx, int dy);

// The bounds of the program's drawing in turtle units, from a run after draw_reset(), which leaves
// its state in the context.
RECT draw_measure(DrawContext* ctx, const ExprNode* tree);

// Resets the context so that a drawing with these bounds fills a target of `width` by `height`
// (positive) whose top is at `y_offset` (used by stretch only).
void draw_place(DrawContext* ctx, const RECT& bounds, int width, int height, FitMode mode,
                int y_offset);

// Draws the program to fill such a target. Picture and context become those of a measuring run,
// then a drawing run placed by its bounds. The device must be a raster surface: invisible lines and
// their pens may be left out, so the pen that stays selected may be an earlier one or the device's
// own.
void draw_fit(HDC device, DrawContext* ctx, const ExprNode* tree, int width, int height,
              FitMode mode, int y_offset);

// Scope guard: at its end selects the stock pen and releases the pen that drawing left selected.
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
