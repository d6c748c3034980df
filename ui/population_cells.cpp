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

// The lifer in the single view; -1 after Revert, when it is one of the generation before.
int lifer_alone(const LogoWindow* record) {
    const Lifer* lifers = record->current->lifers;
    const Lifer* end = lifers + record->lifeCount;
    const Lifer* alone = std::find_if(
        lifers, end, [record](const Lifer& it) { return it.program == record->zoomTree; });
    return alone != end ? static_cast<int>(alone - lifers) : -1;
}

bool grid_shown(const LogoWindow* record) {
    return record->showGrid != 0;
}

} // namespace

platform::AccessibleRole PopulationCells::role() const {
    return grid_shown(record_) ? platform::AccessibleRole::table
                               : platform::AccessibleRole::picture;
}

std::string PopulationCells::name() const {
    if (grid_shown(record_)) {
        return "Population of " + std::to_string(record_->lifeCount) + " turtles";
    }
    const int alone = lifer_alone(record_);
    return alone >= 0 ? turtle_name(alone) + " alone" : "A turtle of the other generation alone";
}

std::string PopulationCells::description() const {
    const int alone = grid_shown(record_) ? -1 : lifer_alone(record_);
    return alone >= 0 ? state_in_words(record_, alone) : "";
}

int PopulationCells::cells() const {
    return grid_shown(record_) ? record_->lifeCount : 0;
}

int PopulationCells::columns() const {
    return std::max<int>(record_->columns, 1);
}

platform::AccessibleCell PopulationCells::cell(int index) const {
    return {turtle_name(index), state_in_words(record_, index), index == record_->selected,
            LogoCellRect(record_, index)};
}

int PopulationCells::selected() const {
    return grid_shown(record_) ? record_->selected : -1;
}

} // namespace pelmora
