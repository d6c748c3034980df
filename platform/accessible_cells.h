// The cells of a described table, for what tells assistive technology of them.
#pragma once

#include "platform/accessible.h"

#include <algorithm>

namespace platform {

inline int row_count(const AccessibleContent& content) {
    return (content.cells() + content.columns() - 1) / content.columns();
}

// The cell at a point of the client area; -1 for none. A client asks at each move of the mouse, and
// to describe a cell costs two texts. So the row is searched for by halves, and the others are not
// asked.
inline int cell_at(const AccessibleContent& content, POINT point) {
    const int columns = content.columns();
    int row = 0;
    for (int below = row_count(content); row < below;) {
        const int middle = row + (below - row) / 2;
        if (content.cell(middle * columns).area.bottom <= point.y) {
            row = middle + 1;
        } else {
            below = middle;
        }
    }
    const int first = row * columns;
    const int end = std::min(first + columns, content.cells());
    for (int i = first; i < end; ++i) {
        const RECT area = content.cell(i).area;
        if (point.x >= area.left && point.x < area.right && point.y >= area.top &&
            point.y < area.bottom) {
            return i;
        }
    }
    return -1;
}

} // namespace platform
