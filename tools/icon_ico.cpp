#include "tools/icon_canvas.h"
#include "tools/icon_files.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

namespace icon {
namespace {

void put(std::string* out, std::uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) {
        out->push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    }
}

// The bitmap of one size: a header whose height counts pixels and mask, the pixels with the bottom
// row first, and the mask for systems without partial transparency.
std::string bitmap(const pelmora::ExprNode* program, std::uint32_t size) {
    const std::vector<std::uint32_t> icon = pixels_of(program, static_cast<int>(size));
    std::string pixels;
    std::string mask;
    for (std::uint32_t y = size; y-- > 0;) {
        std::uint32_t hidden = 0;
        for (std::uint32_t x = 0; x < size; ++x) {
            const std::uint32_t pixel = icon[std::size_t{y} * size + x];
            put(&pixels, pixel, 4);
            hidden = hidden << 1U | (pixel >> 24U == 0 ? 1U : 0U);
            if (x % 8 == 7) {
                put(&mask, hidden & 0xFFU, 1);
            }
        }
        for (std::uint32_t filled = size / 8; filled % 4 != 0; ++filled) {
            put(&mask, 0, 1); // rows are whole 32-bit words
        }
    }
    std::string out;
    put(&out, 40, 4); // the size of this header
    put(&out, size, 4);
    put(&out, size * 2, 4);
    put(&out, 1, 2);  // plane
    put(&out, 32, 2); // bits a pixel
    put(&out, 0, 4);  // not compressed
    put(&out, static_cast<std::uint32_t>(pixels.size() + mask.size()), 4);
    out.append(16, '\0'); // resolution and palette
    return out + pixels + mask;
}

} // namespace

std::string ico_file(const pelmora::ExprNode* program) {
    constexpr std::uint32_t kSizes[] = {16, 24, 32, 48, 64}; // multiples of 8
    constexpr std::uint32_t kCount = std::size(kSizes);
    std::string directory;
    std::string pictures;
    put(&directory, 0, 2);
    put(&directory, 1, 2); // an icon
    put(&directory, kCount, 2);
    for (const std::uint32_t size : kSizes) {
        const std::string picture = bitmap(program, size);
        put(&directory, size, 1);
        put(&directory, size, 1);
        put(&directory, 0, 2);  // no palette
        put(&directory, 1, 2);  // plane
        put(&directory, 32, 2); // bits a pixel
        put(&directory, static_cast<std::uint32_t>(picture.size()), 4);
        put(&directory, static_cast<std::uint32_t>(6 + 16 * kCount + pictures.size()), 4);
        pictures += picture;
    }
    return directory + pictures;
}

} // namespace icon
