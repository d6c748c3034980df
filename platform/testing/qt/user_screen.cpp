#include "platform/testing/qt/user_screen.h"

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

constexpr std::chrono::seconds kTimeout{10};

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

QImage grab(const QWidget* widget, const QRect& area) {
    QWidget* top = widget->window();
    const QRect part = area.translated(widget->mapTo(top, QPoint(0, 0)));
    const QPoint origin = top->mapToGlobal(QPoint(0, 0));
    const bool own_screen = QGuiApplication::platformName() == "offscreen"; // one for each window
    const QRect shown = own_screen ? part : part & top->screen()->geometry().translated(-origin);
    const QDeadlineTimer deadline(kTimeout);
    QPixmap picture;
    do {
        if (!own_screen) {
            bring_into_view(top, shown.translated(origin));
        }
        // Paint now: the toolkit handles update requests last.
        QCoreApplication::sendPostedEvents(top, QEvent::UpdateRequest);
        if (!shown.isEmpty()) {
            picture = top->screen()->grabWindow(top->winId(), shown.x(), shown.y(), shown.width(),
                                                shown.height());
        }
        // Repeated when the window manager has raised another window meanwhile.
    } while (!own_screen && !in_view(top, shown.translated(origin)) && !deadline.hasExpired());
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
    const bool no_wait = own_screen || !fits(top->size()) || !fits(size);
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
    if (window->frameGeometry() != window->geometry()) {
        // The frame is the window manager's, so it is on the screen and not in the window.
        image =
            screen->grabWindow(0, shown.x(), shown.y(), shown.width(), shown.height()).toImage();
    }
    return image.convertToFormat(QImage::Format_RGB32).save(QString::fromStdString(path), "PNG");
}

} // namespace user
