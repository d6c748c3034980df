// RAII owners of graphics objects and devices.
#pragma once

#include "platform/win32.h"

#include <memory>
#include <type_traits>

namespace pelmora {

template <class Handle>
struct GdiObjectRelease {
    using pointer = Handle;
    void operator()(Handle object) const { DeleteObject(object); }
};

struct DeviceRelease {
    using pointer = HDC;
    void operator()(HDC device) const { DeleteDC(device); }
};

// A memory device or a printer.
using OwnedDevice = std::unique_ptr<std::remove_pointer_t<HDC>, DeviceRelease>;

// A bitmap stays alive while a device has it selected: release the device first.
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, GdiObjectRelease<HBITMAP>>;

// A window's device, for drawing outside WM_PAINT.
class WindowDevice {
  public:
    explicit WindowDevice(HWND window) : window_(window), device_(GetDC(window)) {}
    ~WindowDevice() { ReleaseDC(window_, device_); }
    WindowDevice(const WindowDevice&) = delete;
    WindowDevice& operator=(const WindowDevice&) = delete;

    [[nodiscard]] HDC get() const { return device_; }

  private:
    HWND window_;
    HDC device_;
};

// BeginPaint() and EndPaint() for one WM_PAINT.
class PaintScope {
  public:
    explicit PaintScope(HWND window) : window_(window) { BeginPaint(window, &paint_); }
    ~PaintScope() { EndPaint(window_, &paint_); }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;

    [[nodiscard]] HDC device() const { return paint_.hdc; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
};

// Handles WM_ERASEBKGND of a window that shows drawings. The background is white whatever window
// colour the user chose: on a dark one, dark drawings would be invisible.
inline LRESULT EraseWhite(HWND window, WPARAM device) {
    RECT client{};
    GetClientRect(window, &client);
    FillRect(reinterpret_cast<HDC>(device), &client,
             static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    return 1;
}

} // namespace pelmora
