#include "services/status.h"

#include "platform/accessible.h"
#include "services/application.h"

#include <cstdio>

namespace pelmora {
namespace {

constexpr LONG kSideMargin = 4;
constexpr LONG kBottomMargin = 2;
constexpr LONG kLineHeight = 17;

char status_text[256] = "Ready.";

class StatusLine : public platform::AccessibleContent {
  public:
    platform::AccessibleRole role() const override { return platform::AccessibleRole::status; }
    std::string name() const override { return status_text; }
    int cells() const override { return 1; }
    platform::AccessibleCell cell(int) const override {
        return {status_text, "", false, StatusRect(MainWindow())};
    }
};

} // namespace

void SetStatusText(const char* text) {
    if (text != nullptr) {
        std::snprintf(status_text, sizeof status_text, "%s", text);
    }
    // To Windows a null handle means all windows.
    if (IsWindow(MainWindow())) {
        const RECT line = StatusRect(MainWindow());
        InvalidateRect(MainWindow(), &line, TRUE);
        platform::tell_content_changed(MainWindow());
    }
}

void DescribeStatusLine(HWND window) {
    static const auto line = std::make_shared<StatusLine>();
    platform::describe(window, line);
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
