#include "tools/icon_canvas.h"
#include "tools/icon_files.h"

#include <iomanip>
#include <sstream>

namespace icon {
namespace {

constexpr int kSide = 512;
constexpr int kPenPercent = 7;

bool same(POINT a, POINT b) {
    return a.x == b.x && a.y == b.y;
}

// A colour value has red in its lowest byte.
void start_path(std::ostream& out, COLORREF color) {
    const unsigned rgb = (color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU);
    out << "<path stroke=\"#" << std::hex << std::setw(6) << std::setfill('0') << rgb << std::dec
        << "\" d=\"";
}

} // namespace

std::string svg_file(const pelmora::ExprNode* program) {
    const Canvas canvas = strokes_of(program, kSide, kPenPercent);
    std::ostringstream out;
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << kSide << "\" height=\"" << kSide
        << "\" viewBox=\"0 0 " << kSide << ' ' << kSide << "\">\n<g fill=\"none\" stroke-width=\""
        << canvas.pen_width << "\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    const Stroke* last = nullptr;
    for (const Stroke& stroke : canvas.strokes) {
        const bool same_path = last != nullptr && last->color == stroke.color;
        if (!same_path) {
            out << (last == nullptr ? "" : "\"/>\n");
            start_path(out, stroke.color);
        }
        if (!same_path || !same(last->to, stroke.from)) {
            out << 'M' << stroke.from.x << ',' << stroke.from.y << 'L';
        } else {
            out << ' ';
        }
        out << stroke.to.x << ',' << stroke.to.y;
        last = &stroke;
    }
    out << (last == nullptr ? "" : "\"/>\n") << "</g>\n</svg>\n";
    return out.str();
}

} // namespace icon
