#include "turtle/draw.h"
#include "turtle/trace.h"

namespace pelmora {
namespace {

void place(DrawContext* ctx, const RECT& bounds, int width, int height, FitMode mode,
           int y_offset) {
    const double sx = width / (static_cast<double>(bounds.right) - bounds.left);
    const double sy = height / (static_cast<double>(bounds.bottom) - bounds.top);
    if (mode == FitMode::uniform) {
        const double s = sx < sy ? sx : sy;
        ctx->scale_x = s;
        ctx->scale_y = -s;
        ctx->origin_x = -(bounds.left * s);
        ctx->origin_y = bounds.bottom * s;
        return;
    }
    // Single precision at every operation: the pixels of the cells depend on it.
    const auto scale_x = static_cast<float>(sx);
    const auto scale_y = static_cast<float>(sy);
    ctx->scale_x = scale_x;
    ctx->scale_y = -scale_y;
    ctx->origin_x = -(static_cast<float>(bounds.left) * scale_x);
    ctx->origin_y = static_cast<float>(bounds.bottom) * scale_y + static_cast<float>(y_offset);
}

} // namespace

void draw_place(DrawContext* ctx, const RECT& bounds, int width, int height, FitMode mode,
                int y_offset) {
    draw_reset(ctx);
    place(ctx, bounds, width, height, mode, y_offset);
}

void draw_fit(HDC device, DrawContext* ctx, const ExprNode* tree, int width, int height,
              FitMode mode, int y_offset) {
    RECT bounds{};
    Trace trace;
    draw_reset(ctx);
    ctx->x = ctx->y = 0;
    const bool thin = ctx->pen_width == 0 || ctx->pen_width == 1; // wider pens show points, too
    if (device != nullptr && thin && interp_trace(ctx, tree, &bounds, &trace)) {
        // Except for the position, the context is already that of a second run.
        rect_inset(&bounds, -2, -2);
        place(ctx, bounds, width, height, mode, y_offset);
        trace_draw(device, ctx, trace);
    } else {
        draw_place(ctx, draw_measure(ctx, tree), width, height, mode, y_offset);
        draw_run(device, ctx, tree, nullptr);
    }
}

} // namespace pelmora
