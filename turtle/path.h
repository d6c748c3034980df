// Consumers of a turtle's path: one measures it, one draws it. A third, in turtle/trace.h, keeps
// it.
#pragma once

#include "platform/win32.h"
#include "turtle/device_units.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace pelmora {

// A forward move: its end, and how it is drawn.
struct Move {
    double x, y;
    std::int32_t pen_up;
    int direction_index;   // in kDirections
    std::int16_t distance; // turtle units
    COLORREF color;
};

// Widens bounds. Rounding is monotonic, so only the extremes are rounded, at the end.
class MeasuredPath {
  public:
    explicit MeasuredPath(RECT* bounds) : bounds_(bounds) {}

    void go(const Move& move) {
        left_ = left_ < move.x ? left_ : move.x;
        right_ = right_ > move.x ? right_ : move.x;
        top_ = top_ < move.y ? top_ : move.y;
        bottom_ = bottom_ > move.y ? bottom_ : move.y;
    }

    // Without a move, the infinities saturate and widen nothing.
    void finish() const {
        bounds_->left = std::min<LONG>(bounds_->left, device_round(left_));
        bounds_->top = std::min<LONG>(bounds_->top, device_round(top_));
        bounds_->right = std::max<LONG>(bounds_->right, device_round(right_));
        bounds_->bottom = std::max<LONG>(bounds_->bottom, device_round(bottom_));
    }

  private:
    static constexpr double kInfinity = std::numeric_limits<double>::infinity();

    RECT* bounds_;
    double left_ = kInfinity;
    double top_ = kInfinity;
    double right_ = -kInfinity;
    double bottom_ = -kInfinity;
};

// Draws a separate line for every move with the pen down. Without a device nothing is drawn.
class DrawnPath {
  public:
    DrawnPath(HDC device, double x, double y)
        : device_(device), x_(device_round(x)), y_(device_round(y)) {}

    void go(const Move& move) {
        const int from_x = x_;
        const int from_y = y_;
        x_ = device_round(move.x);
        y_ = device_round(move.y);
        if (move.pen_up == 0 && device_ != nullptr) {
            MoveToEx(device_, from_x, from_y, nullptr);
            LineTo(device_, x_, y_);
        }
    }

    void finish() const {}

  private:
    HDC device_;
    int x_, y_;
};

} // namespace pelmora
