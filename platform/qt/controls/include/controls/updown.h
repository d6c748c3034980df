// The up-down control: two arrows that notify the dialog of proposed steps.
#pragma once

#include "controls/controls.h"

#include <QElapsedTimer>
#include <QToolButton>

#include <functional>

namespace platform {

// Two arrow buttons, one above the other, with auto-repeat and growing steps.
class UpDownWidget : public QWidget {
  public:
    // `step` gets the signed step, positive for up.
    UpDownWidget(QWidget* parent, std::function<void(int)> step);

    // Makes the up and down keys of a field act as the arrows.
    void follow_keys_of(QWidget* field);

    // Names the arrows for screen readers, by the name of the field that they change.
    void name_after(const QString& field);

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QToolButton* add_arrow(Qt::ArrowType arrow, int sign);

    std::function<void(int)> step_;
    QElapsedTimer held_;
    QToolButton* up_;
    QToolButton* down_;
};

class UpDownControl : public Control {
  public:
    UpDownControl(HWND parent, int id, std::uint32_t style, QWidget* parent_widget);

    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;

  private:
    void step(int amount);

    UpDownWidget* arrows_;
    bool arrow_keys_;
    HWND buddy_ = nullptr;
    int position_ = 0;
};

} // namespace platform
