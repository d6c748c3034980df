// Draws metafiles. Their bytes are untrusted.
#include "gdi/metafile.h"

#include <QLineF>
#include <QPainter>
#include <QPen>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>

namespace platform {

namespace {

// Reads numbers at byte offsets; 0 beyond the end.
class Fields {
  public:
    explicit Fields(const QByteArray& bytes, qsizetype start = 0) : bytes_(bytes), start_(start) {}

    std::uint32_t number(qsizetype offset) const {
        const qsizetype at = start_ + offset;
        return at + 4 <= bytes_.size() ? qFromLittleEndian<quint32>(bytes_.constData() + at) : 0U;
    }
    std::int32_t value(qsizetype offset) const { return static_cast<std::int32_t>(number(offset)); }

  private:
    const QByteArray& bytes_;
    qsizetype start_;
};

struct Header {
    QRectF frame; // hundredths of a millimetre
    ReferenceDevice device;
};

std::optional<Header> read_header(const QByteArray& bytes) {
    const Fields fields(bytes);
    if (bytes.size() < kMetafileHeaderBytes ||
        fields.number(0) != static_cast<std::uint32_t>(MetafileRecord::header) ||
        fields.number(40) != kMetafileSignature) {
        return std::nullopt;
    }
    const QPointF corner(fields.value(24), fields.value(28));
    const QPointF opposite(fields.value(32), fields.value(36));
    const Header header{QRectF(corner, opposite),
                        {fields.value(72), fields.value(76), fields.value(80), fields.value(84)}};
    const ReferenceDevice& device = header.device;
    const bool has_device = device.pixels_x > 0 && device.pixels_y > 0 &&
                            device.millimeters_x > 0 && device.millimeters_y > 0;
    if (!has_device || header.frame.width() <= 0 || header.frame.height() <= 0) {
        return std::nullopt;
    }
    return header;
}

QSize image_size(const QRectF& frame, int longest) {
    const double scale = longest / std::max(frame.width(), frame.height());
    return {std::max(1, static_cast<int>(std::lround(frame.width() * scale))),
            std::max(1, static_cast<int>(std::lround(frame.height() * scale)))};
}

// The part of a line inside an area, or none.
std::optional<QLineF> clipped(const QLineF& line, const QRectF& area) {
    double first = 0;
    double last = 1;
    // Clips to [lowest, highest] on one axis.
    const auto cut = [&](double from, double length, double lowest, double highest) {
        if (length == 0) {
            return from >= lowest && from <= highest;
        }
        const double one = (lowest - from) / length;
        const double other = (highest - from) / length;
        first = std::max(first, std::min(one, other));
        last = std::min(last, std::max(one, other));
        return first <= last;
    };
    if (!cut(line.x1(), line.dx(), area.left(), area.right()) ||
        !cut(line.y1(), line.dy(), area.top(), area.bottom())) {
        return std::nullopt;
    }
    return QLineF(line.pointAt(first), line.pointAt(last));
}

class Player {
  public:
    Player(const Header& header, QImage& image)
        : header_(header), painter_(&image), scale_x_(image.width() / header.frame.width()),
          scale_y_(image.height() / header.frame.height()) {
        painter_.setRenderHint(QPainter::Antialiasing);
        set_map_mode(MM_TEXT);
        select(kStockObject | BLACK_PEN);
    }

    void play(const Fields& record) {
        switch (static_cast<MetafileRecord>(record.number(0))) {
        case MetafileRecord::set_map_mode:
            return set_map_mode(record.value(8));
        case MetafileRecord::create_pen:
            pens_[record.number(8)] = {record.value(16), record.number(24)};
            return;
        case MetafileRecord::select_object:
            return select(record.number(8));
        case MetafileRecord::delete_object:
            pens_.erase(record.number(8));
            return;
        case MetafileRecord::move_to:
            at_ = place(record);
            return;
        case MetafileRecord::line_to: {
            const QPointF to = place(record);
            draw_line(at_, to);
            at_ = to;
            return;
        }
        default:
            return;
        }
    }

  private:
    struct PenDesign {
        std::int32_t width;
        COLORREF color;
    };

    void set_map_mode(int mode) { unit_ = map_scale(mode, header_.device); }

    void select(std::uint32_t object) {
        PenDesign design{0, RGB(0, 0, 0)};
        if (const auto pen = pens_.find(object); pen != pens_.end()) {
            design = pen->second;
        }
        // Wider pens look the same: the curve of the round ends is hardly visible.
        const double widest =
            4.0 * std::max(painter_.viewport().width(), painter_.viewport().height());
        const double width = std::min(design.width * unit_.x * scale_x_, widest);
        const QColor color(static_cast<int>(design.color & 0xFFU),
                           static_cast<int>(design.color >> 8U & 0xFFU),
                           static_cast<int>(design.color >> 16U & 0xFFU));
        painter_.setPen(
            QPen(color, std::max(1.0, width), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }

    QPointF place(const Fields& record) const {
        return {(record.value(8) * unit_.x - header_.frame.left()) * scale_x_,
                (record.value(12) * unit_.y - header_.frame.top()) * scale_y_};
    }

    // Clipped first, as the painter is slow on lines that reach far outside the image.
    void draw_line(const QPointF& from, const QPointF& to) {
        const double reach = painter_.pen().widthF() + 1;
        const QRectF near = QRectF(painter_.viewport()).adjusted(-reach, -reach, reach, reach);
        if (const std::optional<QLineF> part = clipped(QLineF(from, to), near)) {
            painter_.drawLine(*part);
        }
    }

    const Header& header_;
    QPainter painter_;
    double scale_x_, scale_y_; // pixels per 0.01 mm
    MapScale unit_{};
    std::map<std::uint32_t, PenDesign> pens_;
    QPointF at_;
};

} // namespace

QImage draw_metafile(const QByteArray& bytes, int longest) {
    const std::optional<Header> header = read_header(bytes);
    if (!header) {
        return {};
    }
    QImage image(image_size(header->frame, longest), QImage::Format_RGB32);
    if (image.isNull()) {
        return {};
    }
    image.fill(Qt::white);
    Player player(*header, image);
    for (qsizetype at = 0; at < bytes.size();) {
        const Fields record(bytes, at);
        const qsizetype size = record.number(4);
        if (size < 8 || size > bytes.size() - at) {
            return {};
        }
        if (record.number(0) == static_cast<std::uint32_t>(MetafileRecord::end)) {
            break;
        }
        player.play(record);
        at += size;
    }
    return image;
}

} // namespace platform
