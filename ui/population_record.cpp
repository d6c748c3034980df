#include "ui/population_record.h"

#include "ui/window_record.h"

namespace pelmora {

HBRUSH liveBrush;
HBRUSH retiredBrush;

LogoWindow::~LogoWindow() {
    if (offscreenDC != nullptr) {
        const DevicePen pen_guard(offscreenDC.get());
    }
    // Devices before the bitmaps that are selected into them.
    offscreenDC.reset();
    offscreenBitmap.reset();
    current.reset();
    previous.reset();
    cellDCs.reset();
    cellBitmaps.reset();
}

bool LogoIsOpen(HWND window, const LogoWindow* record) {
    return IsWindow(window) && attached_record<LogoWindow>(window) == record;
}

Lifer* LogoSelectedLifer(const LogoWindow* record) {
    return record->selected >= 0 ? &record->current->lifers[record->selected] : nullptr;
}

} // namespace pelmora
