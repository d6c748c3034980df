// A population window as assistive technology is told about it: a table of named cells. While one
// turtle is shown alone, it is the only cell.
#pragma once

#include "platform/accessible.h"
#include "ui/population_record.h"

namespace pelmora {

class PopulationCells : public platform::AccessibleContent {
  public:
    explicit PopulationCells(const LogoWindow* record) : record_(record) {} // which owns it

    platform::AccessibleRole role() const override { return platform::AccessibleRole::table; }
    std::string name() const override;
    int cells() const override;
    int columns() const override;
    platform::AccessibleCell cell(int index) const override; // "Turtle 7", "live, score 12.5"
    int selected() const override;

  private:
    const LogoWindow* record_;
};

// The lifer that a cell stands for. -1 for none: after Revert the single view shows a turtle of the
// other generation.
int LogoLiferOfCell(const LogoWindow* record, int cell);

// Tells assistive technology that a lifer's mark, program or score has changed.
void LogoTellChanged(HWND window, const LogoWindow* record, int lifer);

} // namespace pelmora
