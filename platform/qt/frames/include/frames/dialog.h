// Modal dialogs, built from dialog templates.
#pragma once

#include "controls/controls.h"
#include "resources/resource_reader.h"
#include "user/window.h"

#include <QDialog>

namespace platform {

class DialogWindow;

// Escape and the close box only post the command IDCANCEL.
class DialogWidget : public QDialog {
  public:
    DialogWidget(QWidget* owner, HWND dialog) : QDialog(owner), dialog_(dialog), controls_(this) {}

    void reject() override;

    Controls& controls() { return controls_; }

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    HWND dialog_;
    Controls controls_;
};

class DialogWindow final : public Window {
  public:
    DialogWindow(HWND owner, DLGPROC procedure, const DialogTemplate& design);
    ~DialogWindow() override;

    QWidget* widget() const override { return widget_; }
    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;
    void dismantle() override;
    Controls* controls() override;
    void forget_children() override;

    // Shows the dialog and runs a message loop until it ends. Returns the result given to
    // EndDialog; -1 when the dialog was destroyed instead or the program quits.
    INT_PTR run(LPARAM parameter);
    void end(INT_PTR result);

  private:
    void add_controls(const DialogTemplate& design);
    QWidget* first_tab_stop() const;
    void leave_screen();

    HWND owner_;
    DLGPROC procedure_;
    QPointer<DialogWidget> widget_;
    bool running_ = false;
    bool ended_ = false;
    INT_PTR result_ = -1;
};

} // namespace platform
