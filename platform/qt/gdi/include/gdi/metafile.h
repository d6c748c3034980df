// Enhanced metafiles: declarations shared by recorder and player, and drawing as an image.
#pragma once

#include "platform/win32.h"

#include <QByteArray>
#include <QImage>

namespace platform {

// The reference device of a metafile; in recordings of this layer always the screen.
struct ReferenceDevice {
    int pixels_x, pixels_y;
    int millimeters_x, millimeters_y;
};

// The size of a logical unit of a map mode in 0.01 mm; positive to the right and downward.
struct MapScale {
    double x, y;
};
MapScale map_scale(int mode, const ReferenceDevice& device);

// The record types that this layer writes and draws.
enum class MetafileRecord : std::uint32_t {
    header = 1,
    end = 14,
    set_map_mode = 17,
    move_to = 27,
    select_object = 37,
    create_pen = 38,
    delete_object = 40,
    line_to = 54,
};

inline constexpr std::uint32_t kMetafileSignature = 0x464D4520; // " EMF"
inline constexpr std::uint32_t kMetafileHeaderBytes = 108;
inline constexpr std::uint32_t kStockObject = 0x80000000U; // flag of stock object numbers

// Creates a closed metafile with these bytes and returns its handle.
HENHMETAFILE keep_metafile(QByteArray bytes);

// The bytes of a closed metafile, as in a file. Empty for an invalid handle.
QByteArray metafile_bytes(HENHMETAFILE metafile);

// Draws a metafile on white. The frame fills the image, whose longer side has `longest` pixels.
// Null for invalid bytes, which may come from any program, and for a metafile without a frame.
// Skips records of other types than MetafileRecord.
QImage draw_metafile(const QByteArray& bytes, int longest);

} // namespace platform
