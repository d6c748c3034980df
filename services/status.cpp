#include "services/status.h"

#include "services/application.h"

#include <cstdio>

namespace pelmora {
namespace {

constexpr LONG kSideMargin = 4;
constexpr LONG kBottomMargin = 2;
constexpr LONG kLineHeight = 17;

char status_text[256] = "Ready.";

} // namespace

void SetStatusText(const char* text) {
    if (text != nullptr) {
        std::snprintf(status_text, sizeof status_text, "%s", text);
    }
    // To Windows a null handle means all windows.
    if (IsWindow(MainWindow())) {
        const RECT line = StatusRect(MainWindow());
        InvalidateRect(MainWindow(), &line, TRUE);
    }
}

const char* StatusText() {
    return status_text;
}

RECT StatusRect(HWND window) {
    RECT line{};
    GetClientRect(window, &line);
    line.left += kSideMargin;
    line.right -= kSideMargin;
    line.bottom -= kBottomMargin;
    line.top = line.bottom - kLineHeight;
    return line;
}

} // namespace pelmora
