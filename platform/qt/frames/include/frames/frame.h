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

// Shows the surface, below the child controls, and turns the pointer's events into messages.
class ClientArea : public QWidget {
  public:
    explicit ClientArea(Frame* frame);

    Controls& controls() { return controls_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    TopLevelWindow* owner() const; // null once the frame is orphaned
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

    // The frame has another size: tells the window's procedure, once the window was shown.
    void client_resized();

    // The window is on the screen: before the first time its procedure hears of no size.
    void shown();

  private:
    void erase_and_tell_size();

    const WindowClass& class_;
    std::vector<MenuItem> menu_;
    QPointer<Frame> frame_;
    bool was_shown_ = false;
};

// What a window manager's frame adds to a window: a guess until the first one has its frame.
QSize usual_frame();

class Frame : public QWidget {
  public:
    explicit Frame(TopLevelWindow* window);

    TopLevelWindow* owner() const { return window_; }
    QMenuBar* menu_bar() const { return menu_bar_; }
    ClientArea* client() const { return client_; }
    bool is_menu_bar(const QWidget* widget) const { return widget == menu_bar_; }

    // Gives the menu bar and the client area their places.
    void arrange();

    // Gives the window this size, its frame included. Until the frame is known, which a window
    // manager makes while the window appears, the size is a guess, and it is put right then unless
    // somebody else has changed it.
    void set_outer_size(QSize size);
    void learn_frame();
    bool frame_known() const { return frame_known_; }

    // The window is gone; the widget follows when none of its handlers can be running.
    void orphan();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    // The tab key moves among a dialog's controls only.
    bool focusNextPrevChild(bool) override { return false; }

  private:
    TopLevelWindow* window_; // null once orphaned
    QMenuBar* menu_bar_;
    ClientArea* client_;
    QSize outer_;          // the size that was asked for
    QSize guessed_;        // the frame that was taken off it
    bool resized_ = false; // by others since
    bool frame_known_ = false;
};

// True when the window's menu has an entry with this id and shows it greyed.
bool menu_entry_grayed(const Window& window, std::uint16_t id);

} // namespace platform
