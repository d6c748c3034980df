// What the program gives to others: files, and what it copies.
#pragma once

#include "files/turtle_exchange.h"
#include "tests/agreement/report.h"
#include "ui/population_window.h"

namespace pelmora_test {

// Turtle file, PostScript without its date, metafiles in all map modes, and the copied text and
// picture of a turtle.
void report_exchanged(Report* report, int program, HWND window,
                      const pelmora::SelectedTurtle& turtle);

// The file of the whole population.
void report_population_file(Report* report, int first, const pelmora::Population* pop);

} // namespace pelmora_test
