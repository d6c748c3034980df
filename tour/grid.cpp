#include "tour/grid.h"

#include <algorithm>

namespace tour {

namespace {

constexpr int kCells = 48;
constexpr int kPitch = 100;
constexpr int kFirst = 6;
constexpr int kSize = 88;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr std::uint32_t kBlack = 0xFF000000;
constexpr std::uint32_t kLive = 0xFF6060FF;
constexpr std::uint32_t kRetired = 0xFFFF6060;

RECT client_rect(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

RECT cell_rect(int index, int columns) {
    const int left = kFirst + kPitch * (index % columns);
    const int top = kFirst + kPitch * (index / columns);
    return {left, top, left + kSize, top + kSize};
}

} // namespace

Grid::Grid(HWND window) {
    const RECT client = client_rect(window);
    width_ = client.right;
    height_ = client.bottom;
    columns_ = std::max(1, width_ / kPitch);
    pixels_ = user::pixels(window, client);
    for (int i = 0; i <= kCells; ++i) {
        cells_.push_back(read_cell(i));
    }
}

Grid::Cell Grid::read_cell(int index) const {
    const RECT r = cell_rect(index, columns_);
    Cell cell;
    if (r.right + 4 > width_ || r.bottom + 4 > height_) {
        return cell;
    }
    const auto at = [this](int x, int y) {
        return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                       static_cast<std::size_t>(x)];
    };
    // Whether the frame rectangle enlarged by `by` pixels has one colour.
    const auto framed = [&](int by, std::uint32_t color) {
        for (int k = -by; k < kSize + by; ++k) {
            if (at(r.left + k, r.top - by) != color || at(r.left + k, r.bottom - 1 + by) != color ||
                at(r.left - by, r.top + k) != color || at(r.right - 1 + by, r.top + k) != color) {
                return false;
            }
        }
        return true;
    };
    if (framed(0, kLive) && framed(1, kLive)) {
        cell.frame = Frame::live;
    } else if (framed(0, kRetired) && framed(1, kRetired)) {
        cell.frame = Frame::retired;
    }
    cell.selected = framed(3, kBlack) && framed(4, kBlack);
    for (int y = r.top + 1; y < r.bottom - 1; ++y) {
        for (int x = r.left + 1; x < r.right - 1; ++x) {
            cell.picture.push_back(at(x, y));
        }
    }
    return cell;
}

Frame Grid::frame(int index) const {
    return cells_.at(static_cast<std::size_t>(index)).frame;
}

int Grid::count(Frame frame) const {
    return static_cast<int>(std::count_if(cells_.begin(), cells_.begin() + kCells,
                                          [frame](const Cell& c) { return c.frame == frame; }));
}

int Grid::selected() const {
    const auto found =
        std::find_if(cells_.begin(), cells_.end(), [](const Cell& cell) { return cell.selected; });
    return found != cells_.end() ? static_cast<int>(found - cells_.begin()) : -1;
}

int Grid::drawn() const {
    return static_cast<int>(std::count_if(cells_.begin(), cells_.end(), [](const Cell& cell) {
        return std::any_of(cell.picture.begin(), cell.picture.end(),
                           [](std::uint32_t pixel) { return pixel != kWhite; });
    }));
}

bool Grid::same_picture(int one, int other) const {
    return cells_.at(static_cast<std::size_t>(one)).picture ==
           cells_.at(static_cast<std::size_t>(other)).picture;
}

int Grid::changed_from(const Grid& before) const {
    int changed = 0;
    for (std::size_t i = 0; i < kCells; ++i) {
        changed += cells_[i].picture != before.cells_.at(i).picture ? 1 : 0;
    }
    return changed;
}

void click_cell(HWND window, int index, user::Button button, unsigned modifiers) {
    const RECT cell = cell_rect(index, std::max<int>(1, client_rect(window).right / kPitch));
    user::click(window, cell.left + kSize / 2, cell.top + kSize / 2, button, modifiers);
}

bool reaches_all_edges(HWND window) {
    constexpr int kNear = 40;
    const RECT c = client_rect(window);
    const RECT edges[] = {{0, 0, kNear, c.bottom},
                          {c.right - kNear, 0, c.right, c.bottom},
                          {0, 0, c.right, kNear},
                          {0, c.bottom - kNear, c.right, c.bottom}};
    return std::all_of(std::begin(edges), std::end(edges), [window](const RECT& edge) {
        const std::vector<std::uint32_t> pixels = user::pixels(window, edge);
        return std::any_of(pixels.begin(), pixels.end(),
                           [](std::uint32_t pixel) { return pixel != kWhite; });
    });
}

} // namespace tour
