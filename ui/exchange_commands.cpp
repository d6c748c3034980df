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

#include <utility>

namespace pelmora {
namespace {

const ExprNode* selected_program(const LogoWindow* record) {
    return LogoSelectedLifer(record)->program;
}

// A copy of the program, for a command that opens dialogs: while another window's dialog keeps the
// command from going on, this window may be used again and the program be replaced.
ExprTree copied_program(const LogoWindow* record) {
    const ExprNode* program = selected_program(record);
    return ExprTree(program != nullptr ? expr_copy_tree(program) : nullptr);
}

// Replaces the selected turtle, if there is one by now.
void replace_selected(HWND window, LogoWindow* record, ExprTree tree) {
    if (LogoSelectedLifer(record) != nullptr) {
        LogoReplaceTurtle(window, record, tree.release());
    }
}

SelectedTurtle selected_turtle(HWND window, LogoWindow* record, const ExprNode* program) {
    return {&record->drawContext, program,
            [window, record](ExprNode* tree) { replace_selected(window, record, ExprTree(tree)); }};
}

} // namespace

void LogoEditTurtle(HWND, LogoWindow* record) {
    HWND editor = CreateEngineWindow(AppInstance(), copied_program(record));
    if (editor != nullptr) {
        ShowWindow(editor, SW_SHOW);
        UpdateWindow(editor);
    }
}

void LogoLoadTurtle(HWND window, LogoWindow* record) {
    ExprTree tree(LoadTurtleFile(window));
    if (tree != nullptr && IsWindow(window)) {
        replace_selected(window, record, std::move(tree));
    }
}

void LogoSaveTurtle(HWND window, LogoWindow* record) {
    SaveTurtleFile(window, copied_program(record).get());
}

void LogoSaveEPS(HWND window, LogoWindow* record) {
    SaveTurtleEPS(window, &record->drawContext, copied_program(record).get());
}

void LogoSaveMetafile(HWND window, LogoWindow* record) {
    const ExprTree program = copied_program(record);
    SaveTurtleMetafile(window, selected_turtle(window, record, program.get()));
}

void LogoCopyTurtle(HWND window, LogoWindow* record) {
    CopyTurtle(window, selected_turtle(window, record, selected_program(record)));
}

void LogoPasteTurtle(HWND window, LogoWindow* record) {
    PasteTurtle(window, selected_turtle(window, record, selected_program(record)));
}

void LogoPrintTurtle(HWND window, LogoWindow* record) {
    PrintTurtleTree(window, &record->drawContext, copied_program(record).get());
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
