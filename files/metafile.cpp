#include "files/metafile.h"

#include "files/file_dialog.h"
#include "files/pen_size.h"
#include "files/saved_file.h"
#include "resources/resource.h"
#include "services/settings_dialog.h"
#include "services/typed_number.h"

#include <cstdio>

namespace pelmora {

// So short a text is not allocated, so nothing is thrown.
// NOLINTBEGIN(cert-err58-cpp)
std::string metaPenSize = "1";
std::string metaMapCode = "LM";
// NOLINTEND(cert-err58-cpp)

namespace {

constexpr char kFilter[] = "Turtle Files\0*.PMT\0Text Files\0*.TXT\0All Files\0*.*\0";

// The program's name and the picture's.
constexpr char kDescription[] = "Pelmora\0MetaFile\0";

struct MapMode {
    const char* code;
    int button;
    int mode;
};
// The first is what an unknown code stands for.
constexpr MapMode kMapModes[] = {
    {"LM", IDC_LOW_METRIC, MM_LOMETRIC},   {"HM", IDC_HIGH_METRIC, MM_HIMETRIC},
    {"LE", IDC_LOW_ENGLISH, MM_LOENGLISH}, {"HE", IDC_HIGH_ENGLISH, MM_HIENGLISH},
    {"TX", IDC_TEXT_MODE, MM_TEXT},
};

int map_mode() {
    for (const MapMode& mode : kMapModes) {
        if (metaMapCode.compare(0, 2, mode.code) == 0) {
            return mode.mode;
        }
    }
    return kMapModes[0].mode;
}

// Completes a metafile. Its last pen is released only afterwards: before, that would be recorded.
HENHMETAFILE close_metafile(HDC metafile) {
    HGDIOBJ pen = GetCurrentObject(metafile, OBJ_PEN);
    HENHMETAFILE picture = CloseEnhMetaFile(metafile);
    DeleteObject(pen);
    return picture;
}

void show_settings(HWND dialog) {
    SetDlgItemTextA(dialog, IDC_PEN_SIZE, metaPenSize.c_str());
    for (const MapMode& mode : kMapModes) {
        CheckDlgButton(dialog, mode.button, metaMapCode == mode.code ? BST_CHECKED : BST_UNCHECKED);
    }
}

// False when the pen's width is missing.
bool take_settings(HWND dialog) {
    for (const MapMode& mode : kMapModes) {
        if (IsDlgButtonChecked(dialog, mode.button) == BST_CHECKED) {
            metaMapCode = mode.code;
            break;
        }
    }
    return take_pen_size(dialog, &metaPenSize);
}

} // namespace

void SaveTurtleMetafile(HWND owner, const SelectedTurtle& turtle) {
    const std::string name = AskSaveName(owner, kFilter, Overwrite::silently, ".txt");
    const bool metaDialogOk =
        !name.empty() && ask_settings(owner, IDD_METAFILE, MetafileMappingDlgProc, take_settings);
    if (metaDialogOk && IsWindow(owner)) {
        write_metafile(name, turtle);
    }
}

INT_PTR CALLBACK MetafileMappingDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        begin_answer(dialog, lparam);
        show_settings(dialog);
        return TRUE;
    }
    return message == WM_COMMAND ? answer_button(dialog, LOWORD(wparam)) : FALSE;
}

void write_metafile(const std::string& name, const SelectedTurtle& turtle) {
    DrawContext* ctx = turtle.drawContext;
    const RECT bounds = draw_measure(ctx, turtle.program);
    HDC metafile = CreateEnhMetaFileA(nullptr, name.c_str(), &bounds, kDescription);
    if (metafile == nullptr) {
        return;
    }
    const int mode = map_mode();
    if (SetMapMode(metafile, mode) == 0) {
        std::fprintf(stderr, "ERROR SetMapMode(%d) '%s' = %d\n", mode, metaMapCode.c_str(),
                     static_cast<int>(GetLastError()));
    }
    draw_reset(ctx);
    ctx->pen_width = TypedNumber(metaPenSize.c_str());
    draw_run(metafile, ctx, turtle.program, nullptr);
    HENHMETAFILE picture = close_metafile(metafile);
    if (picture == nullptr) {
        log_failed_save(name, static_cast<int>(GetLastError()));
        return;
    }
    DeleteEnhMetaFile(picture);
}

HENHMETAFILE record_copied_picture(const SelectedTurtle& turtle) {
    constexpr double kSide = 20320.0;
    DrawContext* ctx = turtle.drawContext;
    const RECT bounds = draw_measure(ctx, turtle.program);
    HDC metafile = CreateEnhMetaFileA(nullptr, nullptr, nullptr, kDescription);
    if (metafile == nullptr) {
        return nullptr;
    }
    if (SetMapMode(metafile, MM_LOMETRIC) == 0) {
        std::fprintf(stderr, "ERROR SetMapMode(MM_LOMETRIC) = %d\n",
                     static_cast<int>(GetLastError()));
    }
    draw_reset(ctx);
    ctx->scale_x = kSide / (static_cast<double>(bounds.right) - bounds.left);
    ctx->scale_y = kSide / (static_cast<double>(bounds.bottom) - bounds.top);
    ctx->pen_width = 0;
    draw_run(metafile, ctx, turtle.program, nullptr);
    return close_metafile(metafile);
}

} // namespace pelmora
