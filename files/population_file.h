// Population files (".lpf"): a first line that readers skip ("1"), then one line for each lifer
// with its program, empty for a lifer without one. Programs only: no parameters, scores or marks.
#pragma once

#include "evolve/population.h"
#include "platform/win32.h"

#include <functional>
#include <string>

namespace pelmora {

// Asks for a name and writes the programs. 1 when the file was written, which the status line says;
// 0, without a message, when the user cancelled or the file could not be written.
//
// `get_population` is called after the dialog, during which the population may be replaced. It
// returns null when the window is gone.
using PopulationGetter = std::function<Population*()>;
int SavePopulationFile(HWND owner, const PopulationGetter& get_population);

// Asks for a file and replaces the programs of the first lifers by those of the file, as many as
// there are, at most all; lines that do not parse are skipped. Tells the user the outcome and
// returns 1 in every case. The owner and its population may be destroyed afterwards.
//
// `replaced` is called with every replaced program, just before it is released.
using ProgramReplaced = std::function<void(const ExprNode* old)>;
int LoadPopulationFile(HWND owner, const PopulationGetter& get_population,
                       const ProgramReplaced& replaced);

// Writes the file without a dialog; false when it could not be written.
bool write_population_file(const std::string& path, const Population* pop);

// Stores the programs of a file's text and returns their number. Modifies the text.
int store_population_text(char* text, Population* pop, const ProgramReplaced& replaced);

} // namespace pelmora
