// What a window handle stands for.
#pragma once

#include "gdi/device_context.h"
#include "platform/win32.h"

#include <QPointer>
#include <QRegion>
#include <QWidget>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace platform {

class Controls;
class Window;

// A registered window class.
struct WindowClass {
    std::string name;
    UINT style;
    WNDPROC procedure;
    std::size_t extra_bytes;
    std::uint16_t menu;
    bool has_background;
    std::uint32_t background; // pixel
    HICON icon;
};

// A device context that draws on a window.
struct WindowDevice final : DeviceContext {
    Window* window = nullptr; // null once it is gone
};

// The class with this name, or null.
const WindowClass* find_window_class(const std::string& name);

// Anything with a window handle: a top-level window, a dialog or a control. It is kept by the
// registry of windows until it is destroyed; whoever may be in one of its calls at that moment
// holds it through a shared pointer.
class Window : public std::enable_shared_from_this<Window> {
  public:
    struct Update {
        QRegion region;
        bool erase = false;
    };

    Window();
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND handle() const { return handle_; }
    virtual QWidget* widget() const = 0;

    // Answers a message that was sent or dispatched to this window, unless its subclass does.
    virtual LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) = 0;

    // Takes the window off the screen and its widget apart; WM_DESTROY has been answered.
    virtual void dismantle() = 0;

    // Client area, in device pixels.
    virtual QSize client_size() const { return widget()->size(); }
    Surface& surface() { return surface_; }

    // Copies a part of the surface to the screen, soon.
    virtual void show_surface(const QRegion&) {}

    // Whether the window is painted by its procedure. Dialogs and controls paint themselves.
    virtual bool paints() const { return false; }

    // What waits to be painted.
    void invalidate(const QRegion& region, bool erase);
    bool wants_paint() const;
    Update take_update();

    // The controls in it; null for a window that cannot have any. Their handles go with the window.
    virtual Controls* controls() { return nullptr; }
    virtual void forget_children() {}

    // Opens the window's menu for the keyboard, if it has one.
    virtual void open_menu() {}

    // The dialogs that are open over it, which go with it.
    void own(HWND dialog) { dialogs_.push_back(dialog); }
    void disown(HWND dialog) { std::erase(dialogs_, dialog); }
    const std::vector<HWND>& dialogs() const { return dialogs_; }

    // The modal dialog's owner takes no input meanwhile. Counted, as dialogs may follow each other.
    virtual bool enabled() const { return blockers_ == 0; }
    void block() { ++blockers_; }
    void unblock() { --blockers_; }

    // Device contexts open on this window.
    void open(WindowDevice* device) { devices_.push_back(device); }
    void close(WindowDevice* device) { std::erase(devices_, device); }

    std::vector<std::byte>& extra() { return extra_; }

    // A procedure in front of the window's own; null for none.
    struct Subclass {
        SUBCLASSPROC procedure;
        UINT_PTR id;
        DWORD_PTR data;
    };
    Subclass subclass{};

  protected:
    // Gives the surface another size, keeping what it shows.
    void resize_surface(QSize size, std::uint32_t background) noexcept;

  private:
    HWND handle_;
    Surface surface_;
    Update update_;
    int blockers_ = 0;
    std::vector<WindowDevice*> devices_;
    std::vector<HWND> dialogs_;
    std::vector<std::byte> extra_; // the window's own bytes: SetWindowLongPtrA
};

// The window of a handle, or null when there is none (any more).
Window* window_of(HWND handle);

// Gives a window to the registry, which keeps it until it is destroyed.
void keep_window(std::shared_ptr<Window> window);

// Takes a window out of the registry. Its handle is not used again.
void forget_window(HWND handle);

// Windows that want WM_PAINT: the next one, or null.
Window* next_window_to_paint();

// The top-level window or control that a widget belongs to, or null.
Window* window_of_widget(const QWidget* widget);

// The desktop's handle: it has a rectangle and nothing else.
HWND desktop_handle();

// Sends a message; 0 when the window is gone.
LRESULT send_message(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace platform
