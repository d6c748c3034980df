// A turtle as a programmer would write it by hand: with everything that a measuring run keeps, and
// nothing besides. Headings are whole degrees, the scale is 1.
#pragma once

#include "turtle/draw_context.h"
#include "turtle/heading_table.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace pelmora_bench {

class BareTurtle {
  public:
    // Starts as a reset context does.
    explicit BareTurtle(const pelmora::DrawContext& ctx)
        : place_(static_cast<int>(ctx.heading) + pelmora::kFullTurn), pen_up_(ctx.pen_up),
          color_(pelmora::turtle_color(ctx)) {}

    void pen(int up) { pen_up_ = up; }

    void forward(double distance) {
        const pelmora::Direction d = pelmora::kDirections[static_cast<std::size_t>(place_)];
        x_ += d.cos * distance;
        y_ += d.sin * distance;
        min_x_ = std::min(min_x_, x_);
        max_x_ = std::max(max_x_, x_);
        min_y_ = std::min(min_y_, y_);
        max_y_ = std::max(max_y_, y_);
        distance_ += distance;
    }

    void turn(int degrees) {
        ++turns_;
        right_turns_ += degrees > 0 ? 1 : 0;
        place_ += degrees;
        if (static_cast<unsigned>(place_) > 2 * pelmora::kFullTurn) {
            const bool right = place_ > 0;
            place_ += right ? -pelmora::kFullTurn : pelmora::kFullTurn;
            ++(right ? circles_right_ : circles_left_);
        }
    }

    // Of red, green and blue: 0, 1, 2.
    void color(int which, int increment) {
        const int shift = 8 * which;
        const std::uint32_t component = std::uint32_t{255} << shift;
        const std::uint32_t sum = color_ + (static_cast<std::uint32_t>(increment) << shift);
        color_ = (color_ & ~component) | (sum & component);
        ++color_changes_;
    }

    // Puts down what a run of so many steps and repeats leaves in the context.
    void store(std::int32_t steps, std::int32_t repeats, std::int32_t repetitions,
               pelmora::DrawContext* ctx, RECT* bounds) const {
        ctx->x = x_;
        ctx->y = y_;
        ctx->heading = place_ - pelmora::kFullTurn;
        ctx->pen_up = pen_up_;
        ctx->red = static_cast<BYTE>(color_);
        ctx->green = static_cast<BYTE>(color_ >> 8U);
        ctx->blue = static_cast<BYTE>(color_ >> 16U);
        ctx->steps = steps;
        ctx->turns = turns_;
        ctx->right_turns = right_turns_;
        ctx->left_turns = turns_ - right_turns_;
        ctx->circles = circles_right_ + circles_left_;
        ctx->circles_right = circles_right_;
        ctx->circles_left = circles_left_;
        ctx->color_changes = color_changes_;
        ctx->repeats = repeats;
        ctx->repetitions = repetitions;
        ctx->distance = distance_;
        const auto rounded = [](double v) { return static_cast<LONG>(std::floor(v + 0.5)); };
        *bounds = {rounded(min_x_) - 2, rounded(min_y_) - 2, rounded(max_x_) + 2,
                   rounded(max_y_) + 2};
    }

  private:
    double x_ = 0, y_ = 0;
    double min_x_ = 0, min_y_ = 0, max_x_ = 0, max_y_ = 0;
    double distance_ = 0;
    int place_; // of the direction in its table
    int pen_up_;
    std::uint32_t color_; // red lowest
    int turns_ = 0, right_turns_ = 0, circles_right_ = 0, circles_left_ = 0;
    int color_changes_ = 0;
};

} // namespace pelmora_bench
