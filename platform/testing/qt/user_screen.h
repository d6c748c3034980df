// What the simulated user sees.
#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

#include <string>

namespace user {

// The screen's pixels of a part of a widget; transparent outside the screen. Does not repaint: what
// has not reached the screen is missing.
QImage grab(const QWidget* widget, const QRect& area);

// Saves the screen's pixels of a window as a PNG file, with the window manager's frame if it has
// one. False when it cannot be written.
bool save_grab(const QWidget* window, const std::string& path);

// Resizes a window and waits until the screen shows the new size: the toolkit reports it before the
// window manager has applied it, and late reports of earlier sizes may follow. Does not wait when
// the old or the new size is empty or larger than the screen.
void resize_on_screen(QWidget* top, const QSize& size);

} // namespace user
