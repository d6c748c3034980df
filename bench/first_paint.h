// Ends a program as soon as its first window is painted.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdlib>

namespace pelmora_bench {

// Install it on the application.
class EndAtFirstPaint : public QObject {
  public:
    using QObject::QObject;

    bool eventFilter(QObject* object, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(object);
        if (event->type() == QEvent::Paint && widget != nullptr && widget->isWindow()) {
            QTimer::singleShot(0, [] { std::_Exit(0); }); // once it is on the screen
        }
        return false;
    }
};

} // namespace pelmora_bench
