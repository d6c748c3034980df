#include "turtle/draw.h"

#include "turtle/device_units.h"
#include "turtle/interp.h"

#include <algorithm>

namespace pelmora {

void draw_reset(DrawContext* ctx) {
    static_cast<TurtleState&>(*ctx) = ctx->home;
    ctx->origin_x = ctx->origin_y = 0.0;
    ctx->scale_x = ctx->scale_y = 1.0;
    ctx->steps = 0;
    ctx->turns = ctx->right_turns = ctx->left_turns = 0;
    ctx->circles = ctx->circles_right = ctx->circles_left = 0;
    ctx->color_changes = 0;
    ctx->repeats = ctx->repetitions = 0;
    ctx->distance = 0.0;
}

int draw_run(HDC device, DrawContext* ctx, const ExprNode* tree, RECT* bounds) {
    if (bounds != nullptr) {
        *bounds = {0, 0, 0, 0};
    }
    ctx->x = ctx->origin_x;
    ctx->y = ctx->origin_y;
    if (device != nullptr) {
        pen_renew(device, ctx->pen_width, turtle_color(*ctx));
    }
    const int result = interp_logo(device, ctx, tree, bounds);
    if (bounds != nullptr) {
        rect_inset(bounds, -2, -2);
    }
    return result;
}

double draw_score(const DrawContext* ctx) {
    // Capped, and scaled so that the cap is worth 100.
    const auto term = [&](double measure, double cap, double factor, ScoreTerm multiplier) {
        return std::min(measure, cap) * factor * ctx->multipliers[multiplier];
    };
    const double a = term(ctx->distance, 50000.0, 0.002, FWDMULT);
    const double b = term(ctx->turns, 10000.0, 0.01, TURNMULT);
    const double c = term(ctx->circles, 500.0, 0.2, LOOPMULT);
    const double d = term(ctx->color_changes, 2000.0, 0.05, CLRMULT);
    const double e = term(ctx->repeats, 1000.0, 0.1, RPTMULT);
    const double f = term(ctx->repetitions, 50000.0, 0.002, REPMULT);
    return f + e + d + b + c + a; // in this order: scores are compared to the last bit
}

void rect_inset(RECT* rect, int dx, int dy) {
    const auto moved = [](LONG side, std::int64_t by) {
        return static_cast<LONG>(device_saturate(side + by));
    };
    rect->left = moved(rect->left, dx);
    rect->top = moved(rect->top, dy);
    rect->right = moved(rect->right, -std::int64_t{dx});
    rect->bottom = moved(rect->bottom, -std::int64_t{dy});
}

RECT draw_measure(DrawContext* ctx, const ExprNode* tree) {
    RECT bounds;
    draw_reset(ctx);
    draw_run(nullptr, ctx, tree, &bounds);
    return bounds;
}

DevicePen::~DevicePen() {
    DeleteObject(SelectObject(device_, GetStockObject(BLACK_PEN)));
}

} // namespace pelmora
