// Population files (".lpf"): a first line that readers skip ("1"), then one line for each lifer
// with its program, empty for a lifer without one. Programs only: no parameters, scores or marks.
#pragma once

#include "evolve/population.h"
#include "platform/win32.h"

#include <functional>
#include <string>

namespace pelmora {

// Asks for a name and writes the programs. 1 when the file was written, which the status line says;
// 0 when the user cancelled or the file could not be written, of which nothing is said.
//
// The population is asked for after the dialog, in which it may be replaced; null: it is gone.
using PopulationAsked = std::function<Population*()>;
int SavePopulationFile(HWND owner, const PopulationAsked& asked);

// Asks for a file and replaces the programs of the first lifers by those of the file, as many as
// there are, at most all; lines that do not parse are skipped. Tells the user the outcome; returns
// 1 in every case. The owner, and the population with it, may be gone afterwards.
//
// `replaced` is called with every program that gave way to another, just before it is released.
using ProgramReplaced = std::function<void(const ExprNode* old)>;
int LoadPopulationFile(HWND owner, const PopulationAsked& asked, const ProgramReplaced& replaced);

// The same without asking or telling: writing returns false when the file could not be written.
bool write_population_file(const std::string& path, const Population* pop);

// Stores the programs of a file's text; their number. The text is changed.
int store_population_text(char* text, Population* pop, const ProgramReplaced& replaced);

} // namespace pelmora
