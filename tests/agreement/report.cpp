#include "tests/agreement/report.h"

#include "tests/support/metafile_text.h"

#include <algorithm>
#include <bit>
#include <cinttypes>
#include <fstream>
#include <type_traits>
#include <utility>

namespace pelmora_test {
namespace {

// Fowler, Noll and Vo's hash, on whole values: a single one that differs always shows.
template <class Values>
std::uint64_t hash_of(const Values& values) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (auto value : values) {
        hash = (hash ^ static_cast<std::make_unsigned_t<decltype(value)>>(value)) * 0x100000001B3U;
    }
    return hash;
}

std::string portable_pixmap(const Picture& picture) {
    std::string bytes =
        "P6 " + std::to_string(picture.width) + " " + std::to_string(picture.height) + " 255\n";
    for (const std::uint32_t pixel : picture.pixels) {
        for (const unsigned shift : {16U, 8U, 0U}) {
            bytes += static_cast<char>(pixel >> shift & 0xFFU);
        }
    }
    return bytes;
}

} // namespace

Picture Picture::part(const RECT& area) const {
    Picture result{area.right - area.left, area.bottom - area.top, {}};
    for (int y = area.top; y < area.bottom; ++y) {
        const auto row = pixels.begin() + std::ptrdiff_t{y} * width;
        result.pixels.insert(result.pixels.end(), row + area.left, row + area.right);
    }
    return result;
}

Report::Report(const std::string& path, int chosen)
    : file_(std::fopen(path.c_str(), "wb")), chosen_(chosen) {}

Report::~Report() {
    if (file_ != nullptr) {
        std::fclose(file_);
    }
}

void Report::number(int program, const std::string& kind, double value) {
    line(program, kind, std::bit_cast<std::uint64_t>(value));
}

void Report::picture(int program, const std::string& kind, const Picture& picture) {
    line(program, kind, hash_of(picture.pixels));
    if (program == chosen_) {
        save(program, kind + ".ppm", portable_pixmap(picture));
    }
}

void Report::file(int program, const std::string& kind, const std::string& bytes) {
    line(program, kind + " " + std::to_string(bytes.size()), hash_of(bytes));
    save(program, kind, bytes);
}

void Report::metafile(int program, const std::string& kind, std::string bytes) {
    if (program == chosen_) {
        std::string text;
        for (const std::string& record : metafile_lines(bytes)) {
            text += record + "\n";
        }
        save(program, kind + ".txt", text);
    }
    // In the header: bounds and frame; the screen in pixels, in millimetres, in micrometres.
    for (const auto& [first, end] : {std::pair(8, 40), {72, 88}, {100, 108}}) {
        if (bytes.size() >= 108) {
            std::fill(bytes.begin() + first, bytes.begin() + end, '\0');
        }
    }
    file(program, kind, bytes);
}

std::uint64_t Report::digest(int program) {
    const std::uint64_t digest = hash_of(values_);
    line(program, "all of the population", digest);
    values_.clear();
    return digest;
}

bool Report::complete() {
    return file_ != nullptr && std::fflush(file_) == 0 && std::ferror(file_) == 0;
}

void Report::line(int program, const std::string& kind, std::uint64_t value) {
    values_.push_back(value);
    if (file_ != nullptr) {
        std::fprintf(file_, "%d %s %016" PRIx64 "\n", program, kind.c_str(), value);
    }
}

void Report::save(int program, const std::string& kind, const std::string& bytes) const {
    if (program != chosen_) {
        return;
    }
    std::string name = std::to_string(program) + " " + kind;
    std::replace(name.begin(), name.end(), ' ', '-');
    std::ofstream(name, std::ios::binary) << bytes;
}

} // namespace pelmora_test
