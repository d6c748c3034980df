// What the simulated user sees.
#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

#include <string>

namespace user {

// What the screen shows of a part of a widget; transparent where that is beyond the screen. Nothing
// is painted anew for it: what nobody has brought to the screen is not seen.
QImage seen(const QWidget* widget, const QRect& area);

// Saves what the screen shows of a widget as a PNG file. False when it cannot be written.
bool save_seen(const QWidget* widget, const std::string& path);

// Gives a window another size and waits until the screen shows it. A window manager is slower than
// the toolkit says, and what it said of earlier sizes comes in between. No wait where the window is
// larger than the screen or has no size.
void resize_on_screen(QWidget* top, const QSize& size);

} // namespace user
