#include "tests/agreement/views.h"

#include "platform/user.h"
#include "ui/population_view.h"

#include <cstdlib>

namespace pelmora_test {
namespace {

using namespace pelmora;

// The editor's controls, which look different on each platform, and their frame end above.
constexpr LONG kEditorTop = 38;

// Of a client area, in pixels.
struct Size {
    int width, height;
};
constexpr Size kGrid{1010, 710};
constexpr Size kSingleViews[] = {{640, 480}, {1180, 700}, {150, 601}};
constexpr Size kEditors[] = {{392, 341}, {1100, 300}, {160, 700}};

std::string name_of(const Size& size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

bool has_size(HWND window, const Size& client) {
    RECT now{};
    GetClientRect(window, &now);
    return now.right == client.width && now.bottom == client.height;
}

// Handles what is waiting, until the window's client area has this size.
void settle(HWND window, const Size& client) {
    user::Script script([](const std::string& failure) {
        if (!failure.empty()) {
            std::fprintf(stderr, "%s\n", failure.c_str());
            std::exit(EXIT_FAILURE);
        }
        PostQuitMessage(0);
    });
    script.await("the size " + name_of(client), [&] { return has_size(window, client); });
    script.start();
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void resize(HWND window, const Size& size) {
    // A window manager may have its own idea of a new window's size, a little later.
    do {
        user::resize(window, size.width, size.height);
        settle(window, size);
    } while (!has_size(window, size));
}

Picture shown(HWND window, const RECT& area) {
    return {area.right - area.left, area.bottom - area.top, user::pixels(window, area)};
}

void redraw(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    UpdateWindow(window);
}

// Puts the cells' pictures where they are shown, but whole: their frames hide a part.
void uncover(HWND window, const LogoWindow* record) {
    const WindowDevice device(window);
    for (int i = 0; i < record->lifeCount; ++i) {
        const RECT cell = LogoCellRect(record, i);
        BitBlt(device.get(), cell.left, cell.top, cell.right - cell.left, cell.bottom - cell.top,
               record->cellDCs[i].get(), 0, 0, SRCCOPY);
    }
}

} // namespace

void report_cells(Report* report, int first, HWND window, const LogoWindow* record) {
    constexpr int kAround = 6; // frames and gaps
    const RECT whole{0, 0, kGrid.width, kGrid.height};
    resize(window, kGrid);
    const Picture framed = shown(window, whole);
    uncover(window, record);
    const Picture bare = shown(window, whole);
    for (int i = 0; i < record->lifeCount; ++i) {
        const RECT cell = LogoCellRect(record, i);
        report->picture(first + i, "cell", bare.part(cell));
        report->picture(first + i, "framed cell",
                        framed.part({cell.left - kAround, cell.top - kAround, cell.right + kAround,
                                     cell.bottom + kAround}));
    }
}

void report_single_views(Report* report, int first, HWND window, LogoWindow* record) {
    record->showGrid = 0;
    for (const Size& size : kSingleViews) {
        resize(window, size);
        for (int i = 0; i < record->lifeCount; ++i) {
            record->zoomTree = record->current->lifers[i].program;
            redraw(window);
            report->picture(first + i, "single " + name_of(size),
                            shown(window, {0, 0, size.width, size.height}));
        }
    }
    record->showGrid = 1;
}

void report_editors(Report* report, int first, HWND editor, const LogoWindow* record) {
    auto* engine = reinterpret_cast<EngineWindow*>(GetWindowLongPtrA(editor, 0));
    for (const Size& size : kEditors) {
        resize(editor, size);
        for (int i = 0; i < record->lifeCount; ++i) {
            engine->tree.reset(expr_copy_tree(record->current->lifers[i].program));
            redraw(editor);
            report->picture(first + i, "editor " + name_of(size),
                            shown(editor, {0, kEditorTop, size.width, size.height}));
        }
    }
}

} // namespace pelmora_test
