#include "gdi/metafile_recorder.h"

#include <QGuiApplication>
#include <QScreen>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

namespace platform {

namespace {

// A screen of 96 dpi, which Windows assumes when the physical size is unknown.
ReferenceDevice screen_device() {
    constexpr double kMillimetersPerPixel = 25.4 / 96.0;
    const QSize size = QGuiApplication::primaryScreen()->size();
    return {size.width(), size.height(),
            static_cast<int>(std::lround(size.width() * kMillimetersPerPixel)),
            static_cast<int>(std::lround(size.height() * kMillimetersPerPixel))};
}

std::uint32_t bits(std::int64_t value) {
    return static_cast<std::uint32_t>(value);
}

// Converts a list of zero-terminated texts, which ends with an empty one, to UTF-16.
QByteArray stored_description(LPCSTR texts) {
    QByteArray stored;
    if (texts == nullptr) {
        return stored;
    }
    const char* end = texts;
    while (*end != '\0') {
        end += std::strlen(end) + 1;
    }
    const QString text = QString::fromUtf8(texts, end + 1 - texts);
    for (const QChar unit : text) {
        stored.append(static_cast<char>(unit.cell()));
        stored.append(static_cast<char>(unit.row()));
    }
    return stored;
}

} // namespace

// Appends `count` bytes and returns their address; null when memory ran out.
char* RecordBytes::room(std::size_t count) {
    // The size field of the header has 32 bits.
    constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();
    constexpr std::size_t kFirst = 4096;
    if (size_ + count > capacity_ && !failed_) {
        const std::size_t wanted = std::max({kFirst, capacity_ * 2, size_ + count});
        void* grown = size_ + count <= kMost ? std::realloc(block_.get(), wanted) : nullptr;
        failed_ = grown == nullptr;
        if (!failed_) {
            static_cast<void>(block_.release());
            block_.reset(static_cast<char*>(grown));
            capacity_ = wanted;
        }
    }
    if (failed_) {
        size_ = 0;
        return nullptr;
    }
    return block_.get() + std::exchange(size_, size_ + count);
}

void RecordBytes::put(std::uint32_t value) {
    if (char* place = room(sizeof value)) {
        qToLittleEndian(value, place);
    }
}

void RecordBytes::put(const QByteArray& bytes) {
    const auto count = static_cast<std::size_t>(bytes.size());
    if (char* place = room(count)) {
        std::memcpy(place, bytes.constData(), count);
    }
}

void RecordBytes::replace(std::size_t offset, std::uint32_t value) {
    if (offset + sizeof value <= size_) {
        qToLittleEndian(value, block_.get() + offset);
    }
}

MetafileRecorder::MetafileRecorder(const RECT* frame, LPCSTR description,
                                   std::unique_ptr<WholeFile> file)
    : device_(screen_device()), description_(stored_description(description)),
      file_(std::move(file)), has_frame_(frame != nullptr) {
    if (frame != nullptr) {
        frame_ = *frame;
    }
    put_header();
}

void MetafileRecorder::put_record(MetafileRecord type,
                                  std::initializer_list<std::uint32_t> values) {
    bytes_.put(static_cast<std::uint32_t>(type));
    bytes_.put(static_cast<std::uint32_t>(8 + 4 * values.size()));
    for (const std::uint32_t value : values) {
        bytes_.put(value);
    }
    ++records_;
}

// The number of a pen in the object table. A pen is recorded when it is first selected, under the
// lowest free number, as on Windows.
std::uint32_t MetafileRecorder::pen_number(const Pen* pen) {
    auto place = std::find(objects_.begin(), objects_.end(), pen);
    if (place != objects_.end()) {
        return static_cast<std::uint32_t>(place - objects_.begin()) + 1;
    }
    place = std::find(objects_.begin(), objects_.end(), nullptr);
    if (place == objects_.end()) {
        place = objects_.insert(place, pen);
    }
    *place = pen;
    const auto number = static_cast<std::uint32_t>(place - objects_.begin()) + 1;
    put_record(MetafileRecord::create_pen,
               {number, bits(PS_SOLID), bits(pen->width), 0, color_of(pen->color)});
    most_objects_ = std::max(most_objects_, objects_.size());
    return number;
}

void MetafileRecorder::select_pen(const GdiObject* pen) {
    put_record(
        MetafileRecord::select_object,
        {pen->stock ? kStockObject | bits(BLACK_PEN) : pen_number(static_cast<const Pen*>(pen))});
}

void MetafileRecorder::forget_pen(const GdiObject* pen) {
    const auto place = std::find(objects_.begin(), objects_.end(), pen);
    if (place != objects_.end()) {
        *place = nullptr;
        put_record(MetafileRecord::delete_object,
                   {static_cast<std::uint32_t>(place - objects_.begin()) + 1});
    }
}

int MetafileRecorder::set_map_mode(int mode) {
    if (mode < MM_TEXT || mode > MM_HIENGLISH) {
        return 0;
    }
    put_record(MetafileRecord::set_map_mode, {bits(mode)});
    return std::exchange(map_mode_, mode);
}

int MetafileRecorder::caps(int index) const {
    switch (index) {
    case HORZRES:
        return device_.pixels_x;
    case VERTRES:
        return device_.pixels_y;
    default:
        return 0;
    }
}

// Extends the bounds, in pixels of the reference device, to include a point.
void MetafileRecorder::include(int x, int y) {
    const MapScale scale = map_scale(map_mode_, device_);
    const auto pixel = [](double value) {
        constexpr double kLimit = 0x7FFFFFFE;
        return static_cast<LONG>(std::floor(std::clamp(value, -kLimit, kLimit) + 0.5));
    };
    const LONG px = pixel(x * scale.x * device_.pixels_x / (device_.millimeters_x * 100.0));
    const LONG py = pixel(y * scale.y * device_.pixels_y / (device_.millimeters_y * 100.0));
    if (bounds_.left > bounds_.right) {
        bounds_ = {px, py, px, py};
    }
    bounds_ = {std::min(bounds_.left, px), std::min(bounds_.top, py), std::max(bounds_.right, px),
               std::max(bounds_.bottom, py)};
}

void MetafileRecorder::move_to(int x, int y) {
    put_record(MetafileRecord::move_to, {bits(x), bits(y)});
    x_ = x;
    y_ = y;
}

void MetafileRecorder::line_to(int x, int y) {
    put_record(MetafileRecord::line_to, {bits(x), bits(y)});
    include(x_, y_);
    include(x, y);
    x_ = x;
    y_ = y;
}

// Fields left zero are set in complete_header() or unused: palettes, pixel formats, OpenGL.
void MetafileRecorder::put_header() {
    const auto padding = -description_.size() & 3;
    const auto bytes = kMetafileHeaderBytes + description_.size() + padding;
    bytes_.put(QByteArray(kMetafileHeaderBytes, '\0') + description_ + QByteArray(padding, '\0'));
    const std::pair<std::size_t, std::uint32_t> fields[] = {
        {0, static_cast<std::uint32_t>(MetafileRecord::header)},
        {4, bits(bytes)},
        {40, kMetafileSignature},
        {44, 0x00010000}, // version
        {60, bits(description_.size() / 2)},
        {64, description_.isEmpty() ? 0 : kMetafileHeaderBytes},
        {72, bits(device_.pixels_x)},
        {76, bits(device_.pixels_y)},
        {80, bits(device_.millimeters_x)},
        {84, bits(device_.millimeters_y)},
        {100, bits(device_.millimeters_x) * 1000},
        {104, bits(device_.millimeters_y) * 1000},
    };
    for (const auto& [offset, value] : fields) {
        bytes_.replace(offset, value);
    }
}

void MetafileRecorder::complete_header() {
    const auto hundredths = [](LONG pixel, int millimeters, int pixels) {
        return static_cast<LONG>(std::int64_t{pixel} * millimeters * 100 / pixels);
    };
    if (!has_frame_) {
        frame_ = {hundredths(bounds_.left, device_.millimeters_x, device_.pixels_x),
                  hundredths(bounds_.top, device_.millimeters_y, device_.pixels_y),
                  hundredths(bounds_.right, device_.millimeters_x, device_.pixels_x),
                  hundredths(bounds_.bottom, device_.millimeters_y, device_.pixels_y)};
    }
    std::size_t offset = 8;
    for (const RECT& rect : {bounds_, frame_}) {
        for (const LONG side : {rect.left, rect.top, rect.right, rect.bottom}) {
            bytes_.replace(offset, bits(side));
            offset += 4;
        }
    }
    bytes_.replace(48, static_cast<std::uint32_t>(bytes_.size()));
    bytes_.replace(52, records_);
    // Number 0 is the metafile.
    bytes_.replace(56, bits(1 + static_cast<std::int64_t>(most_objects_)));
}

QByteArray MetafileRecorder::close() {
    constexpr std::uint32_t kEndBytes = 20;
    put_record(MetafileRecord::end, {0, 0x10, kEndBytes});
    complete_header();
    if (bytes_.size() == 0) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return {};
    }
    if (file_ != nullptr) {
        std::fwrite(bytes_.data(), 1, bytes_.size(), file_->stream()); // commit() reports errors
        if (file_->commit() != 0) {
            SetLastError(ERROR_WRITE_FAULT);
            return {};
        }
    }
    try {
        return {bytes_.data(), static_cast<qsizetype>(bytes_.size())};
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return {};
    }
}

} // namespace platform

using namespace platform;

HDC CreateEnhMetaFileA(HDC, LPCSTR path, const RECT* frame, LPCSTR description) {
    std::unique_ptr<WholeFile> file;
    if (path != nullptr) {
        file = std::make_unique<WholeFile>(path);
        if (file->stream() == nullptr) {
            SetLastError(ERROR_PATH_NOT_FOUND);
            return nullptr;
        }
    }
    auto device = std::make_unique<DeviceContext>();
    device->output = std::make_unique<MetafileRecorder>(frame, description, std::move(file));
    return handle_of(device.release());
}

HENHMETAFILE CloseEnhMetaFile(HDC handle) {
    DeviceContext* device = device_context(handle);
    auto* recorder =
        device != nullptr ? dynamic_cast<MetafileRecorder*>(device->output.get()) : nullptr;
    if (recorder == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    QByteArray bytes = recorder->close();
    delete device;
    return bytes.isEmpty() ? nullptr : keep_metafile(std::move(bytes));
}
