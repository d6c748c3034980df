#include "gdi/text.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGuiApplication>

#include <algorithm>

namespace platform {

namespace {

QRect rectangle(const PixelRect& r) {
    return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

QRegion region(const std::vector<PixelRect>& parts) {
    QRegion all;
    for (const PixelRect& part : parts) {
        all += rectangle(part);
    }
    return all;
}

} // namespace

QFont shrunk_to_fit(QFont font, const std::function<bool(const QFont&)>& fits) {
    constexpr int kSmallest = 8; // pixels
    for (int pixels = QFontInfo(font).pixelSize(); !fits(font) && pixels > kSmallest;) {
        font.setPixelSize(--pixels);
    }
    return font;
}

QFont shrunk_to_height(const QFont& font, int height) {
    return shrunk_to_fit(
        font, [height](const QFont& tried) { return QFontMetrics(tried).height() <= height; });
}

void TextLayer::add(const QString& text, const PixelRect& area,
                    const std::vector<PixelRect>& clip) {
    const Text added{text, rectangle(area), region(clip) & rectangle(area)};
    // The same text drawn again is the same text: a window may be painted without being erased.
    const auto same = std::find_if(texts_.begin(), texts_.end(), [&](const Text& other) {
        return other.text == added.text && other.area == added.area;
    });
    if (same != texts_.end()) {
        same->visible += added.visible;
    } else {
        texts_.push_back(added);
    }
}

void TextLayer::hide(const PixelRect& area) {
    for (Text& text : texts_) {
        text.visible -= rectangle(area);
    }
    std::erase_if(texts_, [](const Text& text) { return text.visible.isEmpty(); });
}

void TextLayer::draw(QPainter& painter) const {
    painter.setPen(Qt::black);
    for (const Text& text : texts_) {
        painter.setClipRegion(text.visible);
        painter.setFont(shrunk_to_height(QGuiApplication::font(), text.area.height()));
        painter.drawText(text.area, Qt::TextSingleLine | Qt::AlignLeft | Qt::AlignBottom,
                         text.text);
    }
}

} // namespace platform
