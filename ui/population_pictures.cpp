#include "ui/population_pictures.h"

#include "ui/population_view.h"

#include <array>
#include <cstddef>

namespace pelmora {
namespace {

// Windows limits a process to 10,000 graphics objects, and each cell takes two. This many stay free
// for pens, dialogs and printing.
constexpr std::size_t kSpareObjects = 200;

// False when no graphics objects are left; there is then neither device nor bitmap.
bool make_surface(HDC screen, const RECT& cell, OwnedDevice* device, Bitmap* bitmap) {
    device->reset(CreateCompatibleDC(screen));
    bitmap->reset(CreateCompatibleBitmap(screen, cell.right - cell.left, cell.bottom - cell.top));
    if (*device == nullptr || *bitmap == nullptr) {
        device->reset();
        bitmap->reset();
        return false;
    }
    SelectObject(device->get(), bitmap->get());
    return true;
}

} // namespace

void LogoMakeOffscreenSurface(HWND window, LogoWindow* record) {
    const WindowDevice screen(window);
    make_surface(screen.get(), LogoCellRect(record, 0), &record->offscreenDC,
                 &record->offscreenBitmap);
}

void LogoMakeCellSurfaces(HWND window, LogoWindow* record) {
    const WindowDevice screen(window);
    const RECT cell = LogoCellRect(record, 0);
    std::array<OwnedDevice, kSpareObjects> spare; // released at the end
    for (OwnedDevice& device : spare) {
        device.reset(CreateCompatibleDC(screen.get()));
    }
    // Stops at the first failure: each further cell would only cost the time to fail again.
    for (int i = 0; i < record->lifeCount; ++i) {
        OwnedDevice& device = record->cellDCs[i];
        if (!make_surface(screen.get(), cell, &device, &record->cellBitmaps[i])) {
            return;
        }
        SetStretchBltMode(device.get(), HALFTONE);
    }
}

void LogoMakePict(HWND, LogoWindow* record, int index) {
    Lifer& lifer = record->current->lifers[index];
    const RECT cell = LogoCellRect(record, index);
    const int width = cell.right - cell.left;
    const int height = cell.bottom - cell.top;
    const RECT picture{0, 0, width, height};
    HBRUSH white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    HDC offscreen = record->offscreenDC.get();
    HDC cell_device = record->cellDCs[index].get();

    FillRect(offscreen, &picture, white); // only this part is copied
    draw_fit(offscreen, &record->drawContext, lifer.program, width, height, FitMode::stretch, 0);
    lifer.score = draw_score(&record->drawContext);
    if (!BitBlt(cell_device, 0, 0, width, height, offscreen, 0, 0, SRCCOPY)) {
        FillRect(cell_device, &picture, white);
    }
}

void LogoMakePopPicts(HWND window, LogoWindow* record) {
    for (int i = 0; i < record->lifeCount; ++i) {
        LogoMakePict(window, record, i);
    }
}

} // namespace pelmora
