#include "files/metafile.h"

#include "dialogs/metafile_dialog.h"
#include "files/file_dialog.h"
#include "files/saved_file.h"
#include "services/typed_number.h"

#include <cstdio>

namespace pelmora {

namespace {

constexpr char kFilter[] = "Turtle Files\0*.PMT\0Text Files\0*.TXT\0All Files\0*.*\0";

// The names of the program and of the picture.
constexpr char kDescription[] = "Pelmora\0MetaFile\0";

// Completes a metafile. Its last pen is deleted afterwards, as a deletion before would be recorded.
HENHMETAFILE close_metafile(HDC metafile) {
    HGDIOBJ pen = GetCurrentObject(metafile, OBJ_PEN);
    HENHMETAFILE picture = CloseEnhMetaFile(metafile);
    DeleteObject(pen);
    return picture;
}

} // namespace

void SaveTurtleMetafile(HWND owner, const SelectedTurtle& turtle) {
    const std::string name = AskSaveName(owner, kFilter, Overwrite::silently, ".txt");
    const bool metaDialogOk = !name.empty() && AskMetafileSettings(owner);
    if (metaDialogOk) {
        write_metafile(name, turtle);
    }
}

void write_metafile(const std::string& name, const SelectedTurtle& turtle) {
    DrawContext* ctx = turtle.drawContext;
    const RECT bounds = draw_measure(ctx, turtle.program);
    HDC metafile = CreateEnhMetaFileA(nullptr, name.c_str(), &bounds, kDescription);
    if (metafile == nullptr) {
        return;
    }
    const int mode = MetafileMapMode();
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
