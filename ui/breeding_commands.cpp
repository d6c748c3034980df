#include "ui/breeding_commands.h"

#include "evolve/breed.h"
#include "services/message.h"
#include "services/wait_cursor.h"
#include "ui/population_view.h"

#include <algorithm>
#include <utility>

namespace pelmora {
namespace {

bool is_live(const LogoWindow* record, int index) {
    return (record->lifeFlags[index] & LIVE_FLAG) != 0;
}

void set_all_flags(LogoWindow* record, std::uint16_t flags) {
    std::fill_n(record->lifeFlags.get(), record->lifeCount, flags);
}

void zero_retired_scores(LogoWindow* record) {
    for (int i = 0; i < record->lifeCount; ++i) {
        if (!is_live(record, i)) {
            record->current->lifers[i].score = 0.0;
        }
    }
}

// Equal scores give every lifer the same chance, the retired ones too, unless they are left out
// here. When all are retired there is nobody else to breed from.
void leave_retired_out(LogoWindow* record) {
    const std::uint16_t* flags = record->lifeFlags.get();
    if (std::none_of(flags, flags + record->lifeCount,
                     [](std::uint16_t flag) { return (flag & LIVE_FLAG) != 0; })) {
        return;
    }
    for (int i = 0; i < record->lifeCount; ++i) {
        if (!is_live(record, i)) {
            record->current->lifers[i].fitness = 0.0;
        }
    }
    pop_sum_fitness(record->current.get());
}

// Turns marks and scores into the fitness by which parents are chosen. The marks are cleared last:
// when the scores are equal, they alone tell who was retired.
void weigh_marked_parents(LogoWindow* record) {
    zero_retired_scores(record);
    pop_statistics(record->current.get());
    if (record->current->slope == 0.0) {
        leave_retired_out(record);
    }
    LogoMarkRetiredForBreeding(record);
}

// Scores without pictures, for generations that nobody sees.
void measure_population(LogoWindow* record) {
    DrawContext* ctx = &record->drawContext;
    for (int i = 0; i < record->lifeCount; ++i) {
        Lifer& lifer = record->current->lifers[i];
        draw_measure(ctx, lifer.program);
        lifer.score = draw_score(ctx);
    }
}

// Breeds `current`, whose fitness is known, into `previous` and lets the two change roles. The
// result is that of LogoReleasePrograms().
bool breed_one_generation(LogoWindow* record) {
    const bool zoom_lost = LogoReleasePrograms(record, record->previous.get());
    pop_breed(record->current.get(), record->previous.get());
    std::swap(record->current, record->previous);
    return zoom_lost;
}

// Lets the single-turtle view show a lifer; null: none.
void zoom(LogoWindow* record, const Lifer* lifer) {
    record->zoomTree = lifer != nullptr ? lifer->program : nullptr;
    if (record->showGrid == 0) { // another drawing takes the place of the one in view
        RedrawWindow(record->hwnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    }
}

void invalidate_all(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
}

bool is_zoomed(const LogoWindow* record, int index) {
    return record->zoomTree == record->current->lifers[index].program;
}

// Puts picture and view right after a lifer's program changed. `zoomed`: it is the one that the
// single-turtle view shows.
void show_new_program(HWND window, LogoWindow* record, int index, bool zoomed) {
    if (zoomed) {
        zoom(record, &record->current->lifers[index]);
    }
    LogoMakePict(window, record, index);
    LogoInvalidateCell(record, index);
}

} // namespace

void LogoMarkRetiredForBreeding(LogoWindow* record) {
    zero_retired_scores(record);
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
    weigh_marked_parents(record);
    for (int g = 0; g < generations; ++g) {
        zoom_lost = breed_one_generation(record) || zoom_lost;
        if (g < generations - 1) {
            measure_population(record);
        } else {
            LogoMakePopPicts(window, record);
        }
        pop_statistics(record->current.get());
    }
    if (zoom_lost) {
        LogoZoomSelected(record);
    }
    invalidate_all(window);
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
    invalidate_all(window);
}

void LogoAllLive(HWND window, LogoWindow* record) {
    set_all_flags(record, LIVE_FLAG);
    invalidate_all(window);
}

void LogoAllRetire(HWND window, LogoWindow* record) {
    set_all_flags(record, 0);
    invalidate_all(window);
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
