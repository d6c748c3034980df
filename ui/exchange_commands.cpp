#include "ui/exchange_commands.h"

#include "files/clipboard.h"
#include "files/eps.h"
#include "files/metafile.h"
#include "files/population_file.h"
#include "files/printing.h"
#include "files/turtle_file.h"
#include "services/application.h"
#include "services/wait_cursor.h"
#include "ui/breeding_commands.h"
#include "ui/engine_window.h"

namespace pelmora {
namespace {

const ExprNode* selected_program(const LogoWindow* record) {
    return LogoSelectedLifer(record)->program;
}

SelectedTurtle selected_turtle(HWND window, LogoWindow* record) {
    return {&record->drawContext, selected_program(record),
            [window, record](ExprNode* tree) { LogoReplaceTurtle(window, record, tree); }};
}

} // namespace

void LogoEditTurtle(HWND, LogoWindow* record) {
    const ExprNode* program = selected_program(record);
    ExprTree copy(program != nullptr ? expr_copy_tree(program) : nullptr);
    HWND editor = CreateEngineWindow(AppInstance(), std::move(copy));
    if (editor != nullptr) {
        ShowWindow(editor, SW_SHOW);
        UpdateWindow(editor);
    }
}

void LogoLoadTurtle(HWND window, LogoWindow* record) {
    ExprTree tree(LoadTurtleFile(window));
    if (tree != nullptr && IsWindow(window)) {
        LogoReplaceTurtle(window, record, tree.release());
    }
}

void LogoSaveTurtle(HWND window, LogoWindow* record) {
    SaveTurtleFile(window, selected_program(record));
}

void LogoSaveEPS(HWND window, LogoWindow* record) {
    SaveTurtleEPS(window, &record->drawContext, selected_program(record));
}

void LogoSaveMetafile(HWND window, LogoWindow* record) {
    SaveTurtleMetafile(window, selected_turtle(window, record));
}

void LogoCopyTurtle(HWND window, LogoWindow* record) {
    CopyTurtle(window, selected_turtle(window, record));
}

void LogoPasteTurtle(HWND window, LogoWindow* record) {
    PasteTurtle(window, selected_turtle(window, record));
}

void LogoPrintTurtle(HWND window, LogoWindow* record) {
    PrintTurtleTree(window, &record->drawContext, selected_program(record));
}

void LogoSavePop(HWND window, LogoWindow* record) {
    SavePopulationFile(window, record->current.get());
}

void LogoLoadPop(HWND window, LogoWindow* record) {
    const BusyScope busy(window, record);
    LoadPopulationFile(window, record->current.get(), [record](const ExprNode* old) {
        if (record->zoomTree == old) {
            LogoZoomSelected(record);
        }
    });
    if (!IsWindow(window)) {
        return;
    }
    const WaitCursor wait;
    LogoMakePopPicts(window, record);
    pop_statistics(record->current.get());
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
}

} // namespace pelmora
