// A population window as assistive technology is told about it: a table of named cells, or the one
// turtle that is shown alone.
#pragma once

#include "platform/accessible.h"
#include "ui/population_record.h"

namespace pelmora {

class PopulationCells : public platform::AccessibleContent {
  public:
    explicit PopulationCells(const LogoWindow* record) : record_(record) {} // which owns it

    platform::AccessibleRole role() const override;
    std::string name() const override;        // "Population of 48 turtles", "Turtle 7 alone"
    std::string description() const override; // of one that is alone: "live, score 12.5"
    int cells() const override;               // none while one turtle is shown alone
    int columns() const override;
    platform::AccessibleCell cell(int index) const override;
    int selected() const override;

  private:
    const LogoWindow* record_;
};

} // namespace pelmora
