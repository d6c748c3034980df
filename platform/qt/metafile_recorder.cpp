#include "platform/qt/metafile_recorder.h"

#include <QGuiApplication>
#include <QSaveFile>
#include <QScreen>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace platform {

namespace {

// The metafiles being recorded: nearly always none or one.
std::vector<MetafileRecorder*>& recorders() {
    static std::vector<MetafileRecorder*> open;
    return open;
}

// As Windows takes a screen without a known size to be.
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

// Texts with a zero after each, and one more.
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

MetafileRecorder::MetafileRecorder(const RECT* frame, LPCSTR description,
                                   std::unique_ptr<QFileDevice> file)
    : device_(screen_device()), description_(stored_description(description)),
      file_(std::move(file)), has_frame_(frame != nullptr) {
    if (frame != nullptr) {
        frame_ = *frame;
    }
    const auto padded = (description_.size() + 3) / 4 * 4;
    bytes_ = QByteArray(kMetafileHeaderBytes + padded, '\0');
    recorders().push_back(this);
}

MetafileRecorder::~MetafileRecorder() {
    std::erase(recorders(), this);
}

void MetafileRecorder::put(std::uint32_t value) {
    const quint32 stored = qToLittleEndian(value);
    bytes_.append(reinterpret_cast<const char*>(&stored), sizeof stored);
}

void MetafileRecorder::put_record(MetafileRecord type,
                                  std::initializer_list<std::uint32_t> values) {
    put(static_cast<std::uint32_t>(type));
    put(static_cast<std::uint32_t>(8 + 4 * values.size()));
    for (const std::uint32_t value : values) {
        put(value);
    }
    ++records_;
}

// The number under which a pen is in the table; it is recorded when it is first selected. The
// lowest free number is taken, as Windows does.
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

// Widens the bounds by a point, in pixels of the reference device.
void MetafileRecorder::include(int x, int y) {
    const MapScale scale = map_scale(map_mode_, device_);
    const auto pixel = [](double value) {
        constexpr double kLimit = 0x7FFFFFFF;
        return static_cast<LONG>(std::lround(std::clamp(value, -kLimit, kLimit)));
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

void MetafileRecorder::write_header() {
    const auto hundredths = [](LONG pixel, int millimeters, int pixels) {
        return static_cast<LONG>(std::int64_t{pixel} * millimeters * 100 / pixels);
    };
    if (!has_frame_) {
        frame_ = {hundredths(bounds_.left, device_.millimeters_x, device_.pixels_x),
                  hundredths(bounds_.top, device_.millimeters_y, device_.pixels_y),
                  hundredths(bounds_.right, device_.millimeters_x, device_.pixels_x),
                  hundredths(bounds_.bottom, device_.millimeters_y, device_.pixels_y)};
    }
    const QByteArray records = std::exchange(bytes_, {});
    const auto first =
        static_cast<std::uint32_t>(kMetafileHeaderBytes + (description_.size() + 3) / 4 * 4);
    put(static_cast<std::uint32_t>(MetafileRecord::header));
    put(first);
    for (const RECT& rect : {bounds_, frame_}) {
        for (const LONG side : {rect.left, rect.top, rect.right, rect.bottom}) {
            put(bits(side));
        }
    }
    put(kMetafileSignature);
    put(0x00010000); // version
    put(static_cast<std::uint32_t>(records.size()));
    put(records_);
    put(static_cast<std::uint32_t>(most_objects_ + 1)); // number 0 is the metafile itself
    put(static_cast<std::uint32_t>(description_.size() / 2));
    put(description_.isEmpty() ? 0 : kMetafileHeaderBytes);
    put(0); // palette entries
    put(bits(device_.pixels_x));
    put(bits(device_.pixels_y));
    put(bits(device_.millimeters_x));
    put(bits(device_.millimeters_y));
    for (int i = 0; i < 3; ++i) {
        put(0); // no pixel format, no OpenGL
    }
    put(bits(device_.millimeters_x * 1000));
    put(bits(device_.millimeters_y * 1000));
    bytes_ += description_;
    bytes_ += QByteArray(first - bytes_.size(), '\0');
    bytes_ += records.mid(first);
}

bool MetafileRecorder::write_file() {
    if (file_ == nullptr) {
        return true;
    }
    const bool written = file_->write(bytes_) == bytes_.size() && file_->flush();
    if (auto* replaced = dynamic_cast<QSaveFile*>(file_.get())) {
        return replaced->commit() && written;
    }
    file_->close();
    return written && file_->error() == QFileDevice::NoError;
}

QByteArray MetafileRecorder::close() {
    constexpr std::uint32_t kEndBytes = 20;
    put_record(MetafileRecord::end, {0, 0x10, kEndBytes});
    write_header();
    return write_file() ? bytes_ : QByteArray();
}

void forget_recorded_pen(const GdiObject* pen) {
    for (MetafileRecorder* recorder : recorders()) {
        recorder->forget_pen(pen);
    }
}

} // namespace platform
