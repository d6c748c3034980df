// Enhanced metafiles: what recording and drawing share, and drawing them where a program wants
// pixels.
#pragma once

#include "platform/win32.h"

#include <QByteArray>
#include <QImage>

namespace platform {

// The device that a metafile was recorded for: here always the screen.
struct ReferenceDevice {
    int pixels_x, pixels_y;
    int millimeters_x, millimeters_y;
};

// Hundredths of a millimetre, rightward and downward, for a logical unit of a map mode.
struct MapScale {
    double x, y;
};
MapScale map_scale(int mode, const ReferenceDevice& device);

// The kinds of records that are written and drawn.
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
inline constexpr std::uint32_t kStockObject = 0x80000000U; // with the number of a stock object

// The handle of a closed metafile with these bytes.
HENHMETAFILE keep_metafile(QByteArray bytes);

// The bytes of a closed metafile: a file's content. Empty for a handle that is none.
QByteArray metafile_bytes(HENHMETAFILE metafile);

// The picture of a metafile as an image whose longer side has `longest` pixels, on white, with the
// frame filling it. Bytes that are no metafile, and one without a frame, give a null image: they
// may come from anywhere. Records of kinds that this layer does not write are passed over.
QImage draw_metafile(const QByteArray& bytes, int longest);

} // namespace platform
