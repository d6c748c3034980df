// Controls: the children of a dialog or of a window of a class.
#pragma once

#include "user/window.h"

#include <QButtonGroup>
#include <QLabel>
#include <QRect>

#include <memory>
#include <vector>

namespace platform {

// A control and its widget, which belongs to the parent's widget. A plain control understands no
// messages: it is a label, a group box or an icon.
class Control : public Window {
  public:
    Control(HWND parent, int id, QWidget* widget);

    QWidget* widget() const override { return widget_; }
    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;
    void dismantle() override;
    void open_menu() override;     // its parent's
    bool enabled() const override; // input for it waits as its parent's does

    HWND parent() const { return parent_; }
    int id() const { return id_; }

    virtual QString text() const { return {}; }
    virtual void set_text(const QString&) {}

    // Whether it is marked; only radio buttons ever are.
    virtual bool checked() const { return false; }
    virtual void set_checked(bool) {} // leaves the others of its group as they are

  private:
    HWND parent_;
    int id_;
    QPointer<QWidget> widget_;
};

// The controls of a window, in the order of their creation. It is a member of the widget that they
// are in: controls live as long as their widgets, which may still be in a handler when the window
// is dismantled, with an arrow held, say.
class Controls {
  public:
    explicit Controls(QWidget* holder) : holder_(holder) {}

    // Adds a control, whose widget is in the holder, and gives it to the registry of windows. Radio
    // buttons that follow each other are a group until one begins the next.
    void add(std::shared_ptr<Control> control, bool begins_group);

    QWidget* holder() const { return holder_; }

    // The control with this id that was not destroyed, or null.
    Control* find(int id) const;

    // Takes their handles away: their window is being destroyed.
    void forget() const;

    const std::vector<std::shared_ptr<Control>>& all() const { return all_; }

  private:
    QWidget* holder_;
    std::vector<std::shared_ptr<Control>> all_;
    QButtonGroup* radio_buttons_ = nullptr; // of the group that is being made
};

// The control of a handle, or null.
Control* control_of(HWND handle);

} // namespace platform
