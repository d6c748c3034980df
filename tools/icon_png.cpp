#include "tools/icon_canvas.h"
#include "tools/icon_files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <png.h>

namespace icon {

std::string png_file(const pelmora::ExprNode* program, int size) {
    std::string rgba;
    for (const std::uint32_t pixel : pixels_of(program, size)) {
        for (const unsigned shift : {16U, 8U, 0U, 24U}) {
            rgba.push_back(static_cast<char>(pixel >> shift & 0xFFU));
        }
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = image.height = static_cast<png_uint_32>(size);
    image.format = PNG_FORMAT_RGBA;
    std::string out(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t length = out.size();
    const bool done =
        png_image_write_to_memory(&image, out.data(), &length, 0, rgba.data(), 0, nullptr) != 0;
    out.resize(done ? length : 0);
    return out;
}

} // namespace icon
