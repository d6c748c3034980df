// Programs that others wrote, and what they make of our files.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora_test {

// Whether a program is there to be run.
bool installed(const std::string& program);

// Runs a shell command, which is to succeed, and gives what it prints.
std::string output_of(const std::string& command);

// The pixels that a program made of a page. Places are counted from the top left corner; those
// beyond an edge are at it.
class Pixels {
  public:
    // Reads a portable pixmap; a damaged one fails the test.
    explicit Pixels(const std::string& path);

    int width() const { return width_; }
    int height() const { return height_; }
    COLORREF at(double x, double y) const;

  private:
    std::string bytes_;
    int width_ = 0;
    int height_ = 0;
    std::size_t first_ = 0;
};

// The first page of a PDF file, with `dots` pixels an inch; by pdftoppm.
Pixels page_pixels(const std::string& pdf, int dots);

} // namespace pelmora_test
