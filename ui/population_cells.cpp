#include "ui/population_cells.h"

#include "ui/population_view.h"

#include <algorithm>
#include <cstdio>

namespace pelmora {
namespace {

// Turtles are counted from 1.
std::string turtle_name(int index) {
    return "Turtle " + std::to_string(index + 1);
}

std::string state_in_words(const LogoWindow* record, int index) {
    char text[64];
    std::snprintf(text, sizeof text, "%s, score %.1f",
                  (record->lifeFlags[index] & LIVE_FLAG) != 0 ? "live" : "retired",
                  record->current->lifers[index].score);
    return text;
}

bool grid_shown(const LogoWindow* record) {
    return record->showGrid != 0;
}

} // namespace

int LogoLiferOfCell(const LogoWindow* record, int cell) {
    if (grid_shown(record)) {
        return cell;
    }
    const Lifer* lifers = record->current->lifers;
    const Lifer* end = lifers + record->lifeCount;
    const Lifer* alone = std::find_if(
        lifers, end, [record](const Lifer& it) { return it.program == record->zoomTree; });
    return alone != end ? static_cast<int>(alone - lifers) : -1;
}

void LogoTellChanged(HWND window, const LogoWindow* record, int lifer) {
    if (grid_shown(record)) {
        platform::tell_cell_changed(window, lifer);
    } else if (lifer == LogoLiferOfCell(record, 0)) {
        platform::tell_cell_changed(window, 0);
    }
}

std::string PopulationCells::name() const {
    return "Population of " + std::to_string(record_->lifeCount) + " turtles";
}

int PopulationCells::cells() const {
    return grid_shown(record_) ? record_->lifeCount : 1;
}

int PopulationCells::columns() const {
    return grid_shown(record_) ? std::max<int>(record_->columns, 1) : 1;
}

platform::AccessibleCell PopulationCells::cell(int index) const {
    const int lifer = LogoLiferOfCell(record_, index);
    if (grid_shown(record_)) {
        return {turtle_name(lifer), state_in_words(record_, lifer), lifer == record_->selected,
                LogoCellRect(record_, lifer)};
    }
    RECT all{};
    GetClientRect(record_->hwnd, &all);
    if (lifer < 0) {
        return {"A turtle of the other generation alone", "", true, all};
    }
    return {turtle_name(lifer) + " alone", state_in_words(record_, lifer), true, all};
}

int PopulationCells::selected() const {
    return grid_shown(record_) ? record_->selected : 0;
}

} // namespace pelmora
