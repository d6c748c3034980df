// The objects behind window handles.
#pragma once

#include "gdi/device_context.h"
#include "platform/accessible.h"
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
struct WindowContext final : DeviceContext {
    Window* window = nullptr; // null once destroyed
};

// The class with this name, or null.
const WindowClass* find_window_class(const std::string& name);

// Anything with a window handle: a top-level window, a dialog or a control. The registry of windows
// owns it until it is destroyed. Code that calls a window procedure keeps a shared pointer, as the
// procedure may destroy the window.
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

    // Handles a message that was sent or dispatched to this window and not handled by its subclass.
    virtual LRESULT receive(UINT message, WPARAM wparam, LPARAM lparam) = 0;

    // Hides the window and releases its widget; called after WM_DESTROY.
    virtual void dismantle() = 0;

    // Client area, in device pixels.
    virtual QSize client_size() const { return widget()->size(); }
    Surface& surface() { return surface_; }

    // Schedules a part of the surface to be shown on the screen.
    virtual void show_surface(const QRegion&) {}

    // Whether the window procedure paints the window. Dialogs and controls paint themselves.
    virtual bool paints() const { return false; }

    // The invalid region and whether it is to be erased.
    void invalidate(const QRegion& region, bool erase);
    bool wants_paint() const;
    Update take_update();

    // Its controls; null for a window that cannot have any. forget_children() invalidates their
    // handles.
    virtual Controls* controls() { return nullptr; }
    virtual void forget_children() {}

    // Opens the window's menu for keyboard navigation, if it has one.
    virtual void open_menu() {}

    // The open dialogs that it owns; they are destroyed with it.
    void own(HWND dialog) { dialogs_.push_back(dialog); }
    void disown(HWND dialog) { std::erase(dialogs_, dialog); }
    const std::vector<HWND>& dialogs() const { return dialogs_; }

    // A modal dialog blocks its owner's input. Counted, as an owner may have several dialogs.
    virtual bool enabled() const { return blockers_ == 0; }
    void block() { ++blockers_; }
    void unblock() { --blockers_; }

    // Registers the device contexts of this window.
    void open(WindowContext* device) { devices_.push_back(device); }
    void close(WindowContext* device) { std::erase(devices_, device); }

    std::vector<std::byte>& extra() { return extra_; }

    // What it tells assistive technology of its content; null for none.
    std::weak_ptr<AccessibleContent> content;

    // The procedure set by SetWindowSubclass; null for none.
    struct Subclass {
        SUBCLASSPROC procedure;
        UINT_PTR id;
        DWORD_PTR data;
    };
    Subclass subclass{};

  protected:
    // Resizes the surface and keeps its content.
    void resize_surface(QSize size, std::uint32_t background) noexcept;

  private:
    HWND handle_;
    Surface surface_;
    Update update_;
    int blockers_ = 0;
    std::vector<WindowContext*> devices_;
    std::vector<HWND> dialogs_;
    std::vector<std::byte> extra_; // of SetWindowLongPtrA
};

// The window of a handle; null when there is none or it was destroyed.
Window* window_of(HWND handle);

// Adds a window to the registry, which owns it until it is destroyed.
void keep_window(std::shared_ptr<Window> window);

// Removes a window from the registry. Its handle is never reused.
void forget_window(HWND handle);

// The next window that needs WM_PAINT, or null.
Window* next_window_to_paint();

// The top-level window or control that a widget belongs to, or null.
Window* window_of_widget(const QWidget* widget);

// The desktop's handle, which only GetWindowRect accepts.
HWND desktop_handle();

// Sends a message; 0 when the window does not exist.
LRESULT send_message(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace platform
