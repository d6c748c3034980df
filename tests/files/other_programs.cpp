#include "tests/files/other_programs.h"

#include "tests/files/folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace pelmora_test {

bool installed(const std::string& program) {
    return std::system(("command -v " + program + " >/dev/null 2>&1").c_str()) == 0;
}

std::string output_of(const std::string& command) {
    std::string text;
    std::FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return text;
    }
    char part[4096];
    for (std::size_t n; (n = std::fread(part, 1, sizeof part, pipe)) > 0;) {
        text.append(part, n);
    }
    EXPECT_EQ(::pclose(pipe), 0) << command;
    return text;
}

Pixels::Pixels(const std::string& path) : bytes_(content_of(path)) {
    int start = 0;
    EXPECT_EQ(std::sscanf(bytes_.c_str(), "P6 %d %d 255%n", &width_, &height_, &start), 2) << path;
    first_ = static_cast<std::size_t>(start) + 1;
    EXPECT_EQ(bytes_.size(), first_ + 3U * static_cast<unsigned>(width_ * height_)) << path;
}

COLORREF Pixels::at(double x, double y) const {
    const int column = std::clamp(static_cast<int>(x), 0, width_ - 1);
    const int row = std::clamp(static_cast<int>(y), 0, height_ - 1);
    const std::size_t place = first_ + 3 * static_cast<std::size_t>(row * width_ + column);
    const auto part = [&](std::size_t i) { return static_cast<BYTE>(bytes_.at(place + i)); };
    return RGB(part(0), part(1), part(2));
}

Pixels page_pixels(const std::string& pdf, int dots) {
    std::remove("page.ppm");
    output_of("pdftoppm -r " + std::to_string(dots) + " -singlefile " + pdf + " page");
    return Pixels("page.ppm");
}

} // namespace pelmora_test
