#include "gdi/metafile.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace platform {

MapScale map_scale(int mode, const ReferenceDevice& device) {
    // As on Windows the width and the height of the screen are whole numbers of units.
    const auto english = [&device](double units_in_millimeter) {
        const auto scale = [units_in_millimeter](int millimeters) {
            return millimeters * 100.0 / std::round(millimeters * units_in_millimeter);
        };
        return MapScale{scale(device.millimeters_x), -scale(device.millimeters_y)};
    };
    switch (mode) {
    case MM_LOMETRIC:
        return {10.0, -10.0};
    case MM_HIMETRIC:
        return {1.0, -1.0};
    case MM_LOENGLISH:
        return english(100 / 25.4);
    case MM_HIENGLISH:
        return english(1000 / 25.4);
    default:
        return {device.millimeters_x * 100.0 / device.pixels_x,
                device.millimeters_y * 100.0 / device.pixels_y};
    }
}

namespace {

struct Metafile {
    QByteArray bytes;
};

// All closed metafiles, so that invalid and stale handles are recognised.
std::vector<std::unique_ptr<Metafile>>& metafiles() {
    static auto& closed = *new std::vector<std::unique_ptr<Metafile>>;
    return closed;
}

auto find_metafile(HENHMETAFILE handle) {
    return std::find_if(metafiles().begin(), metafiles().end(),
                        [handle](const std::unique_ptr<Metafile>& metafile) {
                            return reinterpret_cast<HENHMETAFILE>(metafile.get()) == handle;
                        });
}

} // namespace

HENHMETAFILE keep_metafile(QByteArray bytes) {
    metafiles().push_back(std::make_unique<Metafile>(Metafile{std::move(bytes)}));
    return reinterpret_cast<HENHMETAFILE>(metafiles().back().get());
}

QByteArray metafile_bytes(HENHMETAFILE handle) {
    const auto found = find_metafile(handle);
    return found != metafiles().end() ? (*found)->bytes : QByteArray();
}

} // namespace platform

using namespace platform;

BOOL DeleteEnhMetaFile(HENHMETAFILE handle) {
    const auto found = find_metafile(handle);
    if (found == metafiles().end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    metafiles().erase(found);
    return TRUE;
}
