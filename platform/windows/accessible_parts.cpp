#include "platform/windows/accessible_parts.h"

#include "platform/accessible_cells.h"

#include <oleacc.h>

namespace platform {

namespace {

std::string counted(int count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

bool is_shown(HWND window, const RECT& area) {
    const RECT client = client_area(window);
    RECT shown{};
    return IntersectRect(&shown, &area, &client);
}

} // namespace

LONG role_of(const AccessibleContent& content) {
    switch (content.role()) {
    case AccessibleRole::table:
        return ROLE_SYSTEM_TABLE;
    case AccessibleRole::status:
        return ROLE_SYSTEM_STATUSBAR;
    case AccessibleRole::picture:
        break;
    }
    return ROLE_SYSTEM_GRAPHIC;
}

LONG cell_role_of(const AccessibleContent& content) {
    return content.role() == AccessibleRole::status ? ROLE_SYSTEM_ALERT : ROLE_SYSTEM_CELL;
}

std::string description_of(const AccessibleContent& content) {
    if (content.role() != AccessibleRole::table) {
        return {};
    }
    return counted(row_count(content), "row") + ", " + counted(content.columns(), "column");
}

LONG state_of(HWND window, const AccessibleCell& cell) {
    LONG state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (cell.selected) {
        state |= STATE_SYSTEM_SELECTED | (GetFocus() == window ? STATE_SYSTEM_FOCUSED : 0);
    }
    return state | (is_shown(window, cell.area) ? 0 : STATE_SYSTEM_OFFSCREEN) |
           (IsWindowEnabled(window) ? 0 : STATE_SYSTEM_UNAVAILABLE);
}

int neighbour(const AccessibleContent& content, int from, LONG direction) {
    const int columns = content.columns();
    const int column = from % columns;
    switch (direction) {
    case NAVDIR_UP:
        return from - columns;
    case NAVDIR_DOWN:
        return from + columns;
    case NAVDIR_LEFT:
        return column > 0 ? from - 1 : -1;
    case NAVDIR_RIGHT:
        return column + 1 < columns ? from + 1 : -1;
    case NAVDIR_PREVIOUS:
        return from - 1;
    case NAVDIR_NEXT:
        return from + 1;
    default:
        return -1;
    }
}

RECT client_area(HWND window) {
    RECT area{};
    GetClientRect(window, &area);
    return area;
}

POINT to_screen(HWND window, POINT point) {
    ClientToScreen(window, &point);
    LogicalToPhysicalPointForPerMonitorDPI(window, &point);
    return point;
}

POINT from_screen(HWND window, POINT point) {
    PhysicalToLogicalPointForPerMonitorDPI(window, &point);
    ScreenToClient(window, &point);
    return point;
}

} // namespace platform
