#include "platform/testing/qt/user_screen.h"

#include <QApplication>
#include <QBackingStore>
#include <QDeadlineTimer>
#include <QPainter>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <vector>

namespace user {

namespace {

constexpr std::chrono::seconds kTimeout{10};

// Whether programs can look at the screen, on which windows lie over each other. Elsewhere a
// program knows only what its own windows have painted.
bool screen_is_readable() {
    return QGuiApplication::platformName() == "xcb";
}

// Paints what is still to be painted, now: the toolkit handles update requests last.
void paint(const QWidget* top) {
    const QDeadlineTimer deadline(kTimeout);
    while (top->isVisible() && !top->windowHandle()->isExposed() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    QCoreApplication::sendPostedEvents(const_cast<QWidget*>(top), QEvent::UpdateRequest);
}

// Whether no other window of this process covers this part of the screen.
bool in_view(const QWidget* top, const QRect& part) {
    std::vector<QPoint> points = {part.topLeft(), part.topRight(), part.bottomLeft(),
                                  part.bottomRight()};
    for (const QWidget* other : QApplication::topLevelWidgets()) {
        const QRect common = other->frameGeometry() & part;
        if (other->isVisible() && !common.isEmpty()) {
            points.push_back(common.center());
        }
    }
    return std::all_of(points.begin(), points.end(), [top](const QPoint& point) {
        return QGuiApplication::topLevelAt(point) == top->windowHandle();
    });
}

// Waits until areas that other windows have uncovered are repainted. It shows a small window in a
// corner: the X server reports that exposure after the earlier ones.
void await_uncovered(const QScreen* screen) {
    QWindow last;
    last.setFlags(Qt::ToolTip | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    last.setGeometry(QRect(screen->geometry().bottomRight(), QSize(1, 1)));
    last.show();
    const QDeadlineTimer deadline(kTimeout);
    while (!last.isExposed() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

// Raises a window and waits until the window manager has done it.
void bring_into_view(QWidget* top, const QRect& part) {
    const QDeadlineTimer deadline(kTimeout);
    while (!in_view(top, part) && !deadline.hasExpired()) {
        top->raise();
        QTest::qSleep(10);
        QGuiApplication::sync();
    }
    await_uncovered(top->screen());
}

} // namespace

QImage window_image(const QWidget* top) {
    paint(top);
    if (screen_is_readable()) {
        return top->screen()->grabWindow(top->winId()).toImage();
    }
    const auto* painted = dynamic_cast<const QImage*>(top->backingStore()->paintDevice());
    return painted != nullptr ? painted->copy() : QImage();
}

QImage grab(const QWidget* widget, const QRect& area) {
    QWidget* top = widget->window();
    const QRect part = area.translated(widget->mapTo(top, QPoint(0, 0)));
    QImage image(area.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    if (!screen_is_readable()) {
        QPainter(&image).drawImage(-part.topLeft(), window_image(top));
        return image;
    }
    const QPoint origin = top->mapToGlobal(QPoint(0, 0));
    const QRect shown = part & top->screen()->geometry().translated(-origin);
    const QDeadlineTimer deadline(kTimeout);
    QPixmap picture;
    do {
        bring_into_view(top, shown.translated(origin));
        paint(top);
        if (!shown.isEmpty()) {
            picture = top->screen()->grabWindow(top->winId(), shown.x(), shown.y(), shown.width(),
                                                shown.height());
        }
        // Repeated when the window manager has raised another window meanwhile.
    } while (!in_view(top, shown.translated(origin)) && !deadline.hasExpired());
    QPainter(&image).drawPixmap(shown.topLeft() - part.topLeft(), picture);
    return image;
}

void resize_on_screen(QWidget* top, const QSize& size) {
    const auto fits = [screen = top->screen()->size()](const QSize& of_window) {
        return !of_window.isEmpty() && of_window.boundedTo(screen) == of_window;
    };
    const bool no_wait = !screen_is_readable() || !fits(top->size()) || !fits(size);
    top->resize(size);
    const QDeadlineTimer deadline(kTimeout);
    while (!no_wait && !deadline.hasExpired() &&
           (top->size() != size || top->screen()->grabWindow(top->winId()).size() != size)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

bool save_grab(const QWidget* window, const std::string& path) {
    QImage image = grab(window, window->rect());
    QScreen* screen = window->screen();
    const QRect shown = window->frameGeometry() & screen->geometry();
    if (screen_is_readable() && window->frameGeometry() != window->geometry()) {
        // The frame is the window manager's, so it is on the screen and not in the window.
        image =
            screen->grabWindow(0, shown.x(), shown.y(), shown.width(), shown.height()).toImage();
    }
    return image.convertToFormat(QImage::Format_RGB32).save(QString::fromStdString(path), "PNG");
}

} // namespace user
