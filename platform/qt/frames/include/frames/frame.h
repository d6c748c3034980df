// Top-level windows of registered classes: a frame with a menu bar and a client area that shows the
// window's surface.
#pragma once

#include "controls/controls.h"
#include "resources/resource_reader.h"
#include "user/window.h"

#include <QMenuBar>
#include <QWidget>

#include <vector>

namespace platform {

class Frame;
class TopLevelWindow;

// Shows the surface below the child controls and translates mouse events into messages.
class ClientArea : public QWidget {
  public:
    explicit ClientArea(Frame* frame);

    Controls& controls() { return controls_; }
    TopLevelWindow* owner() const; // null once the frame is orphaned

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    void post_button(const QMouseEvent& event, UINT left, UINT right);

    Frame* frame_;
    Controls controls_;
};

class TopLevelWindow final : public Window {
  public:
    TopLevelWindow(const WindowClass& window_class, const QString& title);
    ~TopLevelWindow() override;

    QWidget* widget() const override;
    LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) override;
    void dismantle() override;
    Controls* controls() override;
    void forget_children() override;
    void open_menu() override;
    QSize client_size() const override;
    void show_surface(const QRegion& region) override;

    const WindowClass& window_class() const { return class_; }
    QMenuBar* menu_bar() const;
    const std::vector<MenuItem>& menu() const { return menu_; }

    bool paints() const override { return true; }

    // Called when the frame's size has changed. Sends WM_SIZE once the window was shown.
    void client_resized();

    // Called when the window is shown. The first call sends the first WM_SIZE.
    void shown();

  private:
    void erase_and_tell_size();

    const WindowClass& class_;
    std::vector<MenuItem> menu_;
    QPointer<Frame> frame_;
    bool was_shown_ = false;
};

// The size that a window manager's frame adds; a guess until the first window has its frame.
QSize usual_frame();

class Frame : public QWidget {
  public:
    explicit Frame(TopLevelWindow* window);

    TopLevelWindow* owner() const { return window_; }
    QMenuBar* menu_bar() const { return menu_bar_; }
    ClientArea* client() const { return client_; }
    bool is_menu_bar(const QWidget* widget) const { return widget == menu_bar_; }

    // Lays out the menu bar and the client area.
    void arrange();

    // Sets the size including the window manager's frame. The frame's size is a guess until the
    // window manager has made it; learn_frame() then corrects the size, unless the window was
    // resized meanwhile.
    void set_outer_size(QSize size);
    void learn_frame();
    bool frame_known() const { return frame_known_; }

    // Called when the window is destroyed. The widget is deleted later, when no handler of it can
    // be running.
    void orphan();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    // Tab moves the focus in dialogs only.
    bool focusNextPrevChild(bool) override { return false; }

  private:
    TopLevelWindow* window_; // null once orphaned
    QMenuBar* menu_bar_;
    ClientArea* client_;
    QSize outer_;          // requested, including the frame
    QSize guessed_;        // the assumed size of the frame
    bool resized_ = false; // by the user or the window manager since
    bool frame_known_ = false;
};

// True when the window's menu has an entry with this id and the entry is disabled.
bool menu_entry_grayed(const Window& window, std::uint16_t id);

} // namespace platform
