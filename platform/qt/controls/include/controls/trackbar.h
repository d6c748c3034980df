// A trackbar with the messages and notifications of Windows.
#pragma once

#include "controls/controls.h"
#include "user/keys.h"

#include <QBasicTimer>
#include <QLabel>
#include <QSlider>
#include <QStyleOptionSlider>

#include <functional>

namespace platform {

// A slider with the keys of Windows (up and page-up decrease). It reports every interaction with
// TB_... codes, of which the last is always TB_ENDTRACK, also when the focus or the dialog is lost
// while a key or the mouse is held.
class TrackbarWidget : public QSlider {
  public:
    TrackbarWidget(QWidget* parent, std::function<void(WORD code)> notify, bool tooltips);

  protected:
    void initStyleOption(QStyleOptionSlider* option) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

  private:
    void draw_ticks(QPainter& painter, int bottom) const;
    QRect part(QStyle::SubControl which) const;
    int position_at(int thumb_left) const;
    void page_toward_pointer();
    void report(int action);
    void end_tracking();
    void show_position();

    std::function<void(WORD code)> notify_;
    bool tooltips_;
    QPointer<QLabel> value_; // at the thumb while it moves
    QBasicTimer value_timer_;
    bool tracking_ = false; // a move was reported and not yet its end
    int held_key_ = 0;
    LastRelease last_release_;
    QBasicTimer release_timer_; // runs while a release may be part of auto-repeat
    QBasicTimer page_timer_;    // runs while the groove is held
    SliderAction page_ = SliderNoAction;
    int pointer_ = 0; // where the groove is held
    int grip_ = 0;    // where the thumb is held, from its left
    int wheel_ = 0;   // rotation below one step, in 1/8 degree
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
