// Controls: the children of a dialog or a top-level window.
#pragma once

#include "user/window.h"

#include <QButtonGroup>
#include <QLabel>
#include <QRect>

#include <memory>
#include <vector>

namespace platform {

// A control and its widget, which the parent's widget owns. This base class, used for labels, group
// boxes and icons, handles only key messages.
class Control : public Window {
  public:
    Control(HWND parent, int id, QWidget* widget);

    QWidget* widget() const override { return widget_; }
    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;
    void dismantle() override;
    void open_menu() override;     // its parent's
    bool enabled() const override; // its parent's

    HWND parent() const { return parent_; }
    int id() const { return id_; }

    virtual QString text() const { return {}; }
    virtual void set_text(const QString&) {}

    // Whether it is checked; only radio buttons can be.
    virtual bool checked() const { return false; }
    virtual void set_checked(bool) {} // does not change the others of its group

  private:
    HWND parent_;
    int id_;
    QPointer<QWidget> widget_;
};

// The controls of a window, in the order of their creation. Owned by the widget that contains them:
// controls must live as long as their widgets, which may still run a handler when the window is
// dismantled, such as while an arrow is held.
class Controls {
  public:
    explicit Controls(QWidget* holder) : holder_(holder) {}

    // Adds a control, whose widget is a child of the holder, and registers its handle. Consecutive
    // radio buttons form a group until a control with `begins_group`.
    void add(std::shared_ptr<Control> control, bool begins_group);

    QWidget* holder() const { return holder_; }

    // The control with this id; null when there is none or it was destroyed.
    Control* find(int id) const;

    // Invalidates the controls' handles; called when the window is destroyed.
    void forget() const;

    const std::vector<std::shared_ptr<Control>>& all() const { return all_; }

  private:
    QWidget* holder_;
    std::vector<std::shared_ptr<Control>> all_;
    QButtonGroup* radio_buttons_ = nullptr; // the current group
};

// The control of a handle, or null.
Control* control_of(HWND handle);

} // namespace platform
