// The state of a population window's cells, read from its pixels.
#pragma once

#include "platform/testing/user.h"

#include <cstdint>
#include <vector>

namespace tour {

enum class Frame { none, live, retired };

class Grid {
  public:
    Grid() = default;
    explicit Grid(HWND window);

    int columns() const { return columns_; }

    // The frame of a cell; none for a cell that does not exist or is not visible.
    Frame frame(int index) const;
    int count(Frame frame) const; // of the first 48 cells

    int selected() const; // -1: none
    int drawn() const;    // cells with a picture that is not all white

    bool same_picture(int one, int other) const; // of two cells

    // How many of the first 48 pictures differ.
    int changed_from(const Grid& before) const;

  private:
    struct Cell {
        Frame frame = Frame::none;
        bool selected = false;
        std::vector<std::uint32_t> picture;
    };
    Cell read_cell(int index) const;

    int width_ = 0, height_ = 0, columns_ = 0;
    std::vector<std::uint32_t> pixels_;
    std::vector<Cell> cells_;
};

void click_cell(HWND window, int index, user::Button button = user::Button::left,
                unsigned modifiers = user::none);

// Whether the drawing in the window comes within 40 pixels of each edge.
bool reaches_all_edges(HWND window);

} // namespace tour
