#include "platform/testing/qt/user_sight.h"

#include <QApplication>
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

constexpr std::chrono::seconds kPatience{10};

// Whether no other window of ours covers a part of the screen that this one has.
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

// Waits until what other windows have uncovered is on the screen again: the server tells of it
// before it tells of a window that is shown after that, in a corner where it covers nothing.
void await_uncovered(const QScreen* screen) {
    QWindow last;
    last.setFlags(Qt::ToolTip | Qt::BypassWindowManagerHint | Qt::WindowDoesNotAcceptFocus);
    last.setGeometry(QRect(screen->geometry().bottomRight(), QSize(1, 1)));
    last.show();
    const QDeadlineTimer longest(kPatience);
    while (!last.isExposed() && !longest.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

// Brings a window to the front, as one has to who wants to see it. The window manager takes its
// time.
void bring_into_view(QWidget* top, const QRect& part) {
    const QDeadlineTimer longest(kPatience);
    while (!in_view(top, part) && !longest.hasExpired()) {
        top->raise();
        QTest::qSleep(10);
        QGuiApplication::sync();
    }
    await_uncovered(top->screen());
}

} // namespace

QImage seen(const QWidget* widget, const QRect& area) {
    QWidget* top = widget->window();
    const QRect part = area.translated(widget->mapTo(top, QPoint(0, 0)));
    const QPoint origin = top->mapToGlobal(QPoint(0, 0));
    const bool own_screen = QGuiApplication::platformName() == "offscreen"; // each window has one
    const QRect shown = own_screen ? part : part & top->screen()->geometry().translated(-origin);
    const QDeadlineTimer longest(kPatience);
    QPixmap picture;
    do {
        if (!own_screen) {
            bring_into_view(top, shown.translated(origin));
        }
        // What the toolkit was told to paint it paints after all else.
        QCoreApplication::sendPostedEvents(top, QEvent::UpdateRequest);
        if (!shown.isEmpty()) {
            picture = top->screen()->grabWindow(top->winId(), shown.x(), shown.y(), shown.width(),
                                                shown.height());
        }
        // A window manager may have put another window in front meanwhile.
    } while (!own_screen && !in_view(top, shown.translated(origin)) && !longest.hasExpired());
    QImage image(area.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter(&image).drawPixmap(shown.topLeft() - part.topLeft(), picture);
    return image;
}

void resize_on_screen(QWidget* top, const QSize& size) {
    const auto fits = [screen = top->screen()->size()](const QSize& of_window) {
        return !of_window.isEmpty() && of_window.boundedTo(screen) == of_window;
    };
    const bool own_screen = QGuiApplication::platformName() == "offscreen";
    const bool seen_at_once = own_screen || !fits(top->size()) || !fits(size);
    top->resize(size);
    const QDeadlineTimer longest(kPatience);
    while (!seen_at_once && !longest.hasExpired() &&
           (top->size() != size || top->screen()->grabWindow(top->winId()).size() != size)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

bool save_seen(const QWidget* widget, const std::string& path) {
    return seen(widget, widget->rect())
        .convertToFormat(QImage::Format_RGB32)
        .save(QString::fromStdString(path), "PNG");
}

} // namespace user
