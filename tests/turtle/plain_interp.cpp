#include "tests/turtle/plain_interp.h"

#include "turtle/heading_table.h"

#include <algorithm>
#include <cmath>

namespace pelmora_test {
namespace {

using namespace pelmora;

struct Plain {
    HDC device;
    DrawContext& c;
    RECT* bounds;
    // Uses the table, as a C library may differ in the last bit. The table has its own test.
    bool whole = std::abs(c.heading) <= 360 && c.heading == std::trunc(c.heading) &&
                 !(c.heading == 0 && std::signbit(c.heading));
    std::string lines{};
    int line_count = 0;

    void line(const std::string& text) {
        if (line_count++ < 10240) {
            lines += "ERROR INTERPLOGO: " + text + "!\n";
        }
    }

    static int rounded(double v) { return static_cast<int>(std::floor(v + 0.5)); }

    static void add(std::int32_t& counter, int n) {
        counter =
            static_cast<std::int32_t>(std::min<std::int64_t>(INT32_MAX, std::int64_t{n} + counter));
    }

    void forward(int d) {
        const double a = c.heading * 0.002777777777777778 * 6.283185307;
        const auto [cosine, sine] = whole ? kDirections[static_cast<std::size_t>(c.heading + 360)]
                                          : Direction{std::cos(a), std::sin(a)};
        const double x0 = c.x, y0 = c.y;
        c.x = x0 + cosine * d * c.scale_x;
        c.y = y0 + sine * d * c.scale_y;
        const LONG ix = rounded(c.x), iy = rounded(c.y);
        if (bounds != nullptr) {
            *bounds = {std::min(bounds->left, ix), std::min(bounds->top, iy),
                       std::max(bounds->right, ix), std::max(bounds->bottom, iy)};
        } else if (c.pen_up == 0 && device != nullptr) {
            MoveToEx(device, rounded(x0), rounded(y0), nullptr);
            LineTo(device, static_cast<int>(ix), static_cast<int>(iy));
        }
        c.distance += d;
    }

    void turn(int t) {
        ++c.turns;
        ++(t < 0 ? c.left_turns : c.right_turns);
        c.heading += t;
        while (c.heading > 360) {
            c.heading -= 360;
            ++c.circles, ++c.circles_right;
        }
        while (c.heading < -360) {
            c.heading += 360;
            ++c.circles, ++c.circles_left;
        }
    }

    void color(std::int32_t& part, int k) {
        part = (part + k) % 256;
        ++c.color_changes;
        if (device != nullptr) {
            const auto value = static_cast<COLORREF>(c.red + 256 * c.green + 65536 * c.blue);
            DeleteObject(SelectObject(device, CreatePen(PS_SOLID, c.pen_width, value)));
        }
    }

    bool terminal(const Instruction* in) {
        if (++c.steps > c.max_steps) {
            return false;
        }
        std::int32_t* parts[] = {&c.red, &c.green, &c.blue};
        const OpFamily family = in == nullptr ? OpFamily::block : in->family;
        if (family == OpFamily::pen) {
            c.pen_up = in->parameter;
        } else if (family == OpFamily::forward) {
            forward(in->parameter);
        } else if (family == OpFamily::turn) {
            turn(in->parameter);
        } else if (family >= OpFamily::red && family <= OpFamily::blue) {
            color(*parts[static_cast<int>(family) - static_cast<int>(OpFamily::red)],
                  in->parameter);
        }
        return true;
    }

    bool child(const ExprNode& node, int i) {
        if (node.children[i] == nullptr) {
            line("CHILD[" + std::to_string(i) + "] is NULL");
            return true;
        }
        return run(*node.children[i]);
    }

    bool branch(const ExprNode& node, int state) {
        if (node.count < 2) {
            line("NUM CHILDREN is " + std::to_string(node.count));
        } else if (node.children == nullptr) {
            line("CHILDREN is NULL");
        } else {
            return child(node, (c.pen_up == 1) == (state == 1) ? 0 : 1);
        }
        return true;
    }

    bool run(const ExprNode& node) {
        const Instruction* in = op_instruction(node.op);
        if (node.kind != FUNCTION) {
            return node.kind != TERMINAL || terminal(in);
        }
        if (in != nullptr && in->family == OpFamily::branch) {
            return branch(node, in->parameter);
        }
        int passes = 1;
        if (in != nullptr && in->family == OpFamily::repeat) {
            passes = in->parameter;
            add(c.repeats, 1);
            add(c.repetitions, passes);
        }
        for (int pass = 0; pass < passes; ++pass) {
            for (int i = 0; i < node.count; ++i) {
                if (!child(node, i)) {
                    return false;
                }
            }
        }
        return true;
    }
};

} // namespace

PlainRun plain_interp(HDC device, DrawContext* ctx, const ExprNode* node, RECT* bounds) {
    Plain plain{device, *ctx, bounds};
    const bool ended = node == nullptr || plain.run(*node);
    return {ended ? 1 : 0, plain.lines};
}

} // namespace pelmora_test
