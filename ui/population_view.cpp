#include "ui/population_view.h"

#include <algorithm>

namespace pelmora {
namespace {

constexpr int kCellSize = 88;
constexpr int kCellPitch = 100;
constexpr int kFirstCell = 6; // left and top

RECT grown(RECT rect, int by) {
    rect_inset(&rect, -by, -by);
    return rect;
}

RECT client_rect(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
}

HBRUSH stock_brush(int brush) {
    return static_cast<HBRUSH>(GetStockObject(brush));
}

int column_count(const LogoWindow* record) {
    return std::max<int>(record->columns, 1);
}

// The column or row whose cells contain the coordinate; -1 in a gap.
int cell_place(LONG coordinate) {
    const LONG inside = coordinate - kFirstCell;
    return inside >= 0 && inside % kCellPitch < kCellSize ? inside / kCellPitch : -1;
}

} // namespace

// --- Geometry ------------------------------------------------------------------------------------

void LogoLayoutGrid(HWND window, LogoWindow* record) {
    record->columns =
        static_cast<std::int16_t>(std::max<LONG>(client_rect(window).right / kCellPitch, 1));
}

RECT LogoCellRect(const LogoWindow* record, int index) {
    const int columns = column_count(record);
    const int left = kFirstCell + kCellPitch * (index % columns);
    const int top = kFirstCell + kCellPitch * (index / columns);
    return {left, top, left + kCellSize, top + kCellSize};
}

int LogoHitTest(HWND, const LogoWindow* record, POINT point) {
    const int column = cell_place(point.x);
    const int row = cell_place(point.y);
    if (column < 0 || row < 0 || column >= column_count(record)) {
        return -1;
    }
    const int index = row * column_count(record) + column;
    return index < record->lifeCount ? index : -1;
}

void LogoInvalidateCell(const LogoWindow* record, int index) {
    const RECT area = grown(LogoCellRect(record, index), 4);
    InvalidateRect(record->hwnd, &area, FALSE);
}

// --- Painting ------------------------------------------------------------------------------------

namespace {

void frame_twice(HDC device, const RECT& outer, const RECT& inner, HBRUSH brush) {
    FrameRect(device, &outer, brush);
    FrameRect(device, &inner, brush);
}

void frame_selection(HDC device, const LogoWindow* record, int index, int brush) {
    const RECT cell = LogoCellRect(record, index);
    frame_twice(device, grown(cell, 4), grown(cell, 3), stock_brush(brush));
}

void paint_cell(HDC device, const LogoWindow* record, int index) {
    const RECT cell = LogoCellRect(record, index);
    if (record->cellBitmaps[index] == nullptr || !RectVisible(device, &cell)) {
        return;
    }
    BitBlt(device, cell.left, cell.top, kCellSize, kCellSize, record->cellDCs[index].get(), 0, 0,
           SRCCOPY);
    const bool live = (record->lifeFlags[index] & LIVE_FLAG) != 0;
    frame_twice(device, cell, grown(cell, 1), live ? liveBrush : retiredBrush);
}

void paint_grid(HDC device, const LogoWindow* record) {
    for (int i = 0; i < record->lifeCount; ++i) {
        paint_cell(device, record, i);
    }
    if (record->busy == 0 && record->selected >= 0) {
        LogoDrawSelection(device, record, record->selected);
    }
}

void paint_single_turtle(HDC device, const RECT& client, LogoWindow* record) {
    if (record->zoomTree == nullptr || client.right <= 0 || client.bottom <= 0) {
        return;
    }
    const DevicePen pen_guard(device);
    draw_fit(device, &record->drawContext, record->zoomTree, client.right, client.bottom,
             FitMode::stretch, 0);
}

} // namespace

void LogoDrawSelection(HDC device, const LogoWindow* record, int index) {
    frame_selection(device, record, index, BLACK_BRUSH);
}

void LogoEraseSelection(HDC device, const LogoWindow* record, int index) {
    frame_selection(device, record, index, WHITE_BRUSH);
}

void LogoPaint(HWND window, LogoWindow* record) {
    const PaintScope paint(window);
    if (record->showGrid != 0) {
        paint_grid(paint.device(), record);
    } else {
        paint_single_turtle(paint.device(), client_rect(window), record);
    }
}

} // namespace pelmora
