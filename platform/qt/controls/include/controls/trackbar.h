// The trackbar, answering and notifying as Windows' does.
#pragma once

#include "controls/controls.h"
#include "user/keys.h"

#include <QBasicTimer>
#include <QLabel>
#include <QSlider>
#include <QStyleOptionSlider>

#include <functional>

namespace platform {

// A slider whose keyboard follows Windows (up and page-up decrease) and that tells of every
// interaction with a code (TB_...), the last one always TB_ENDTRACK, also when the keyboard or the
// dialog goes while a key or the mouse is held.
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
    void tell(int action);
    void end_tracking();
    void show_position();

    std::function<void(WORD code)> notify_;
    bool tooltips_;
    QPointer<QLabel> value_; // at the thumb while it moves
    QBasicTimer value_timer_;
    bool tracking_ = false; // told of a move, and not yet of its end
    int held_key_ = 0;
    LastRelease last_release_;
    QBasicTimer release_timer_; // runs while the release may prove to be none
    QBasicTimer page_timer_;    // runs while the groove is held
    SliderAction page_ = SliderNoAction;
    int pointer_ = 0; // where the groove is held
    int grip_ = 0;    // where the thumb is held, from its left
    int wheel_ = 0;   // turned and not yet a step, in eighths of a degree
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
