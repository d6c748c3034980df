#include "tests/turtle/recording_device.h"

#include <cstdint>
#include <utility>

namespace {

std::string record;
std::intptr_t pens = 0;
HGDIOBJ selected = nullptr;

void note(const char* what, const std::string& value) {
    record += std::string(what) + " " + value + "\n";
}

std::string number_of(HGDIOBJ pen) {
    return std::to_string(reinterpret_cast<std::intptr_t>(pen));
}

std::string point(int x, int y) {
    return std::to_string(x) + "," + std::to_string(y);
}

} // namespace

HDC pelmora_test::recording_device() {
    return reinterpret_cast<HDC>(&record);
}

std::string pelmora_test::take_record() {
    pens = 0;
    selected = nullptr;
    return std::exchange(record, {});
}

extern "C" {

HGDIOBJ GetStockObject(int object) {
    note("stock", std::to_string(object));
    return nullptr;
}

HPEN CreatePen(int style, int width, COLORREF color) {
    note(style == PS_SOLID ? "pen" : "other pen", point(width, static_cast<int>(color)));
    return reinterpret_cast<HPEN>(++pens);
}

HGDIOBJ SelectObject(HDC, HGDIOBJ object) {
    note("select", number_of(object));
    return std::exchange(selected, object);
}

BOOL DeleteObject(HGDIOBJ object) {
    note("delete", number_of(object));
    return TRUE;
}

BOOL MoveToEx(HDC, int x, int y, POINT*) {
    note("move", point(x, y));
    return TRUE;
}

BOOL LineTo(HDC, int x, int y) {
    note("line", point(x, y));
    return TRUE;
}

BOOL Polyline(HDC device, const POINT* points, int count) {
    MoveToEx(device, points[0].x, points[0].y, nullptr);
    for (int i = 1; i < count; ++i) {
        LineTo(device, points[i].x, points[i].y);
    }
    return TRUE;
}

} // extern "C"
