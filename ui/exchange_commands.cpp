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
#include "ui/population_pictures.h"

#include <memory>

namespace pelmora {
namespace {

const ExprNode* selected_program(const LogoWindow* record) {
    return LogoSelectedLifer(record)->program;
}

// A copy of the program, for a command that opens dialogs: while another window's modal loop delays
// the command, the user may replace the program.
ExprTree copied_program(const LogoWindow* record) {
    const ExprNode* program = selected_program(record);
    return ExprTree(program != nullptr ? expr_copy_tree(program) : nullptr);
}

// The population that the window shows after a dialog, during which breeding may replace it. Null
// when the window is gone.
PopulationGetter shown_population(HWND window, const LogoWindow* record) {
    return
        [window, record] { return LogoIsOpen(window, record) ? record->current.get() : nullptr; };
}

SelectedTurtle selected_turtle(HWND window, LogoWindow* record, const ExprNode* program) {
    return {&record->drawContext, program,
            [window, record](ExprNode* tree) { LogoReplaceTurtle(window, record, tree); }};
}

} // namespace

void LogoEditTurtle(HWND, LogoWindow* record) {
    HWND editor = CreateEngineWindow(AppInstance(), copied_program(record));
    if (editor != nullptr) {
        ShowWindow(editor, SW_SHOW);
        UpdateWindow(editor);
    }
}

AfterDialogs LogoLoadTurtle(HWND window, LogoWindow* record) {
    const int target = record->selected; // the selection may change during the dialog
    const auto tree = std::make_shared<ExprTree>(LoadTurtleFile(window));
    return [=] {
        if (*tree != nullptr) {
            LogoReplaceLifer(window, record, target, tree->release());
        }
    };
}

void LogoSaveTurtle(HWND window, LogoWindow* record) {
    SaveTurtleFile(window, copied_program(record).get());
}

void LogoSaveEPS(HWND window, LogoWindow* record) {
    DrawContext context = record->drawContext; // outlives the window
    SaveTurtleEPS(window, &context, copied_program(record).get());
}

void LogoSaveMetafile(HWND window, LogoWindow* record) {
    const ExprTree program = copied_program(record);
    DrawContext context = record->drawContext; // outlives the window
    SaveTurtleMetafile(window, {&context, program.get(), nullptr});
}

void LogoCopyTurtle(HWND window, LogoWindow* record) {
    CopyTurtle(window, selected_turtle(window, record, selected_program(record)));
}

void LogoPasteTurtle(HWND window, LogoWindow* record) {
    PasteTurtle(window, selected_turtle(window, record, selected_program(record)));
}

void LogoPrintTurtle(HWND window, LogoWindow* record) {
    DrawContext context = record->drawContext; // outlives the window
    PrintTurtleTree(window, &context, copied_program(record).get());
}

void LogoSavePop(HWND window, LogoWindow* record) {
    SavePopulationFile(window, shown_population(window, record));
}

AfterDialogs LogoLoadPop(HWND window, LogoWindow* record) {
    const auto busy = std::make_shared<BusyScope>(window, record);
    LoadPopulationFile(window, shown_population(window, record), [record](const ExprNode* old) {
        if (record->zoomTree == old) {
            LogoZoomSelected(record);
        }
    });
    return [=, busy = busy] {
        const WaitCursor wait;
        LogoMakePopPicts(window, record);
        pop_statistics(record->current.get());
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
        platform::tell_content_changed(window);
    };
}

} // namespace pelmora
