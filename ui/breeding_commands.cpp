#include "ui/breeding_commands.h"

#include "evolve/grow.h"
#include "services/message.h"
#include "services/wait_cursor.h"
#include "ui/population_cells.h"
#include "ui/population_pictures.h"
#include "ui/population_view.h"

#include <algorithm>
#include <utility>

namespace pelmora {
namespace {

void set_all_flags(LogoWindow* record, std::uint16_t flags) {
    std::fill_n(record->lifeFlags.get(), record->lifeCount, flags);
}

// Scores without pictures, for generations that are not shown.
void measure_population(DrawContext* ctx, Population* pop) {
    for (int i = 0; i < pop->size; ++i) {
        draw_measure(ctx, pop->lifers[i].program);
        pop->lifers[i].score = draw_score(ctx);
    }
}

// Shows a lifer in the single-turtle view; null: none.
void zoom(LogoWindow* record, const Lifer* lifer) {
    record->zoomTree = lifer != nullptr ? lifer->program : nullptr;
    if (record->showGrid == 0) { // the view shows another drawing
        RedrawWindow(record->hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
        platform::tell_content_changed(record->hwnd);
    }
}

void show_population(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
    platform::tell_content_changed(window);
}

bool is_zoomed(const LogoWindow* record, int index) {
    return record->zoomTree == record->current->lifers[index].program;
}

// Updates picture and view after a lifer's program changed. `zoomed`: the single-turtle view shows
// that lifer.
void show_new_program(HWND window, LogoWindow* record, int index, bool zoomed) {
    if (zoomed) {
        zoom(record, &record->current->lifers[index]);
    }
    LogoMakePict(window, record, index);
    LogoInvalidateCell(record, index);
    LogoTellChanged(window, record, index);
}

} // namespace

void LogoMarkRetiredForBreeding(LogoWindow* record) {
    pop_zero_retired(record->current.get(), record->lifeFlags.get());
    set_all_flags(record, LIVE_FLAG);
}

void LogoEvolvePop(HWND window, LogoWindow* record) {
    LogoEvolveGenerations(window, record, 1);
}

void LogoEvolveFive(HWND window, LogoWindow* record) {
    LogoEvolveGenerations(window, record, 5);
}

void LogoEvolveGenerations(HWND window, LogoWindow* record, int generations) {
    const BusyScope busy(window, record);
    const WaitCursor wait;
    bool zoom_lost = false;
    pop_weigh_parents(record->current.get(), record->lifeFlags.get());
    set_all_flags(record, LIVE_FLAG); // only now: pop_weigh_parents() reads them
    for (int g = 1; g <= generations; ++g) {
        zoom_lost = LogoReleasePrograms(record, record->previous.get()) || zoom_lost;
        pop_next_generation(&record->current, &record->previous, [&](Population* pop) {
            if (g < generations) {
                measure_population(&record->drawContext, pop);
            } else {
                LogoMakePopPicts(window, record);
            }
        });
    }
    if (zoom_lost) {
        LogoZoomSelected(record);
    }
    show_population(window);
}

void LogoRevertPop(HWND window, LogoWindow* record) {
    if (record->previous->lifers[0].program == nullptr) {
        ShowMessage(window, "You must evolve the population before you can revert it.");
        return;
    }
    const BusyScope busy(window, record);
    const WaitCursor wait;
    LogoMarkRetiredForBreeding(record);
    std::swap(record->current, record->previous);
    LogoMakePopPicts(window, record);
    pop_statistics(record->current.get());
    show_population(window);
}

void LogoAllLive(HWND window, LogoWindow* record) {
    set_all_flags(record, LIVE_FLAG);
    show_population(window);
}

void LogoAllRetire(HWND window, LogoWindow* record) {
    set_all_flags(record, 0);
    show_population(window);
}

void LogoMutateTurtle(HWND window, LogoWindow* record) {
    const Population& pop = *record->current;
    const bool zoomed = is_zoomed(record, record->selected);
    expr_mutate(LogoSelectedLifer(record)->program, pop.MAX_DEPTH, pop.MAX_CHILD, pop.PFNODE,
                pop.PCOLOR);
    show_new_program(window, record, record->selected, zoomed);
}

bool LogoReplaceTurtle(HWND window, LogoWindow* record, ExprNode* tree) {
    LogoReplaceLifer(window, record, record->selected, tree);
    return true;
}

void LogoReplaceLifer(HWND window, LogoWindow* record, int index, ExprNode* tree) {
    Lifer* lifer = &record->current->lifers[index];
    const bool zoomed = is_zoomed(record, index);
    expr_free_tree(lifer->program);
    lifer_set_program(lifer, tree);
    show_new_program(window, record, index, zoomed);
}

bool LogoReleasePrograms(LogoWindow* record, Population* pop) {
    const bool zoomed = record->zoomTree != nullptr &&
                        std::any_of(pop->lifers, pop->lifers + pop->size, [&](const Lifer& lifer) {
                            return lifer.program == record->zoomTree;
                        });
    if (zoomed) {
        record->zoomTree = nullptr;
    }
    pop_free_programs(pop);
    return zoomed;
}

void LogoZoomSelected(LogoWindow* record) {
    zoom(record, LogoSelectedLifer(record));
}

} // namespace pelmora
