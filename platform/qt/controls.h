// Controls: the children of a dialog.
#pragma once

#include "platform/qt/resource_reader.h"
#include "platform/qt/window.h"

#include <QLabel>
#include <QRect>

#include <memory>

namespace platform {

// A control and its widget, which belongs to the parent's widget. A plain control understands no
// messages: it is a label, a group box or an icon.
class Control : public Window {
  public:
    Control(HWND parent, int id, QWidget* widget);

    QWidget* widget() const override { return widget_; }
    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;
    void dismantle() override {} // the parent's widget takes this one along

    HWND parent() const { return parent_; }
    int id() const { return id_; }

    virtual QString text() const { return {}; }
    virtual void set_text(const QString&) {}

  private:
    HWND parent_;
    int id_;
    QPointer<QWidget> widget_;
};

// Makes the control that `item` describes, at `area` of the parent's widget. A class or a style
// that the layer does not know ends the program: see resource_fault().
std::shared_ptr<Control> make_control(const DialogItem& item, const QRect& area, HWND parent,
                                      QWidget* parent_widget);

// The control of a handle, or null.
Control* control_of(HWND handle);

} // namespace platform
