// Text on windows.
#pragma once

#include "gdi/line.h"

#include <QFont>
#include <QPainter>
#include <QRect>
#include <QRegion>
#include <QString>

#include <functional>
#include <vector>

namespace platform {

// The font, made smaller until it fits or cannot be read any more.
QFont shrunk_to_fit(QFont font, const std::function<bool(const QFont&)>& fits);

// The font, made smaller until a line of it is no higher than `height`. Areas that the program
// states in pixels do not grow with the desktop's font.
QFont shrunk_to_height(const QFont& font, int height);

// The texts that lie on a surface. They are kept apart from its pixels, which a dense screen shows
// enlarged: text is drawn at the screen's resolution.
class TextLayer {
  public:
    // Adds one line at the bottom left of `area`, of which only `clip` is visible.
    void add(const QString& text, const PixelRect& area, const std::vector<PixelRect>& clip);

    // Called when pixels are drawn over an area: they hide the text below them.
    void cover(const PixelRect& area) {
        if (!texts_.empty()) {
            hide(area);
        }
    }

    void draw(QPainter& painter) const;

  private:
    struct Text {
        QString text;
        QRect area;
        QRegion visible;
    };

    void hide(const PixelRect& area);

    std::vector<Text> texts_;
};

} // namespace platform
