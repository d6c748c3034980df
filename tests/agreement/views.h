// What the program's windows show of its turtles.
#pragma once

#include "tests/agreement/report.h"
#include "ui/engine_window.h"
#include "ui/population_window.h"

namespace pelmora_test {

// The grid with its frames, and the cells' own pictures; `first` is the program of the first cell.
void report_cells(Report* report, int first, HWND window, const pelmora::LogoWindow* record);

// Each program of the current population alone, at several client sizes.
void report_single_views(Report* report, int first, HWND window, pelmora::LogoWindow* record);

// The editor's drawing area below its controls, likewise. The editor is left with the last program.
void report_editors(Report* report, int first, HWND editor, const pelmora::LogoWindow* record);

} // namespace pelmora_test
