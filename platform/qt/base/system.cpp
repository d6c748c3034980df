// Errors and system parameters.
#include "platform/win32.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

DWORD last_error = ERROR_SUCCESS;

} // namespace

DWORD GetLastError() {
    return last_error;
}

void SetLastError(DWORD error) {
    last_error = error;
}

BOOL SystemParametersInfoA(UINT action, UINT, void* data, UINT) {
    if (action != SPI_GETWORKAREA) {
        return FALSE;
    }
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    *static_cast<RECT*>(data) = {area.left(), area.top(), area.left() + area.width(),
                                 area.top() + area.height()};
    return TRUE;
}
