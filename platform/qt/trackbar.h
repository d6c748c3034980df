// The trackbar, answering and notifying as Windows' does.
#pragma once

#include "platform/qt/controls.h"

#include <QSlider>

#include <functional>

namespace platform {

// A slider whose keyboard follows Windows (up and page-up decrease) and that tells of every
// interaction with a code (TB_...), the last one always TB_ENDTRACK.
class TrackbarWidget : public QSlider {
  public:
    TrackbarWidget(QWidget* parent, std::function<void(WORD code)> notify, bool tooltips);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void tell(int action);
    void show_position();

    std::function<void(WORD code)> notify_;
    bool tooltips_;
    int wheel_ = 0; // turned and not yet a step, in eighths of a degree
};

class TrackbarControl : public Control {
  public:
    TrackbarControl(HWND parent, int id, std::uint32_t style, QWidget* parent_widget);

    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    void notify(WORD code);

    TrackbarWidget* slider_;
};

} // namespace platform
