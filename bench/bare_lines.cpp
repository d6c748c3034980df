#include "bench/bare_lines.h"

#include "gdi/line.h"

#include <memory>

namespace pelmora_bench {
namespace {

// A device that keeps the lines it is told to draw.
class Recorder : public platform::DeviceOutput {
  public:
    explicit Recorder(std::vector<BareLine>* lines) : lines_(lines) {}

    void move_to(int x, int y) override {
        x_ = x;
        y_ = y;
    }
    void line_to(int x, int y) override {
        lines_->push_back({{{x_, y_}, {x, y}}, pixel_});
        move_to(x, y);
    }
    void select_pen(const platform::GdiObject* pen) override {
        pixel_ = static_cast<const platform::Pen*>(pen)->color;
    }
    int set_map_mode(int /*mode*/) override { return 0; }
    int caps(int /*index*/) const override { return 0; }

  private:
    std::vector<BareLine>* lines_;
    int x_ = 0, y_ = 0;
    std::uint32_t pixel_ = 0;
};

} // namespace

std::vector<BareLine> lines_of(const pelmora::ExprNode* program, pelmora::DrawContext* placed) {
    std::vector<BareLine> lines;
    platform::DeviceContext device;
    device.output = std::make_unique<Recorder>(&lines);
    const pelmora::DevicePen pen(platform::handle_of(&device));
    draw_run(platform::handle_of(&device), placed, program, nullptr);
    return lines;
}

std::vector<BareLine> seen(std::vector<BareLine> lines) {
    std::erase_if(lines, [](const BareLine& line) {
        return line.ends[0].x == line.ends[1].x && line.ends[0].y == line.ends[1].y;
    });
    return lines;
}

void walk(const std::vector<BareLine>& lines, const platform::PixelView& pixels,
          const platform::PixelRect& clip) {
    for (const BareLine& line : lines) {
        draw_lines(pixels, clip, line.ends, 2, line.pixel);
    }
}

} // namespace pelmora_bench
