// What the cells of a population window show, read off its pixels.
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

    // Of the cell at an index; none for a cell that is not there or out of view.
    Frame frame(int index) const;
    int count(Frame frame) const; // of the first 48 cells

    int selected() const; // -1: none
    int drawn() const;    // cells whose picture is not white all over

    bool same_picture(int one, int other) const; // of one cell and another

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

// Whether a drawing in the window comes near each of its four edges.
bool reaches_all_edges(HWND window);

} // namespace tour
