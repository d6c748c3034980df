// The lines in which platforms are compared.
#pragma once

#include "platform/win32.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace pelmora_test {

// The pixels of an area, row by row, as 0x..RRGGBB.
struct Picture {
    int width, height;
    std::vector<std::uint32_t> pixels;

    // The pixels of a part.
    Picture part(const RECT& area) const;
};

// Writes a line for each thing of a program: "12 single 640x480 6d5f…", the last being a hash of
// it.
class Report {
  public:
    // The things of the program `chosen` are saved besides, into the current folder; none when it
    // is negative.
    Report(const std::string& path, int chosen);
    ~Report();
    Report(const Report&) = delete;
    Report& operator=(const Report&) = delete;

    // `kind` names the thing, with its parameters.
    void number(int program, const std::string& kind, double value);
    void picture(int program, const std::string& kind, const Picture& picture);
    void file(int program, const std::string& kind, const std::string& bytes);

    // Without what depends on the size and the resolution of the screen.
    void metafile(int program, const std::string& kind, std::string bytes);

    // A hash of all lines since the last call, which becomes a line itself.
    std::uint64_t digest(int program);

    // False when a line could not be written.
    [[nodiscard]] bool complete();

  private:
    void line(int program, const std::string& kind, std::uint64_t value);
    void save(int program, const std::string& kind, const std::string& bytes) const;

    std::FILE* file_;
    int chosen_;
    std::vector<std::uint64_t> values_; // of the lines that the next digest is of
};

} // namespace pelmora_test
