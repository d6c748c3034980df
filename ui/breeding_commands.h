// The commands that breed: evolving, reverting, marking all lifers, mutating one, replacing one.
// None of them changes the selection.
#pragma once

#include "ui/population_record.h"

namespace pelmora {

// Sets the score of every retired lifer to 0 and marks all lifers live.
void LogoMarkRetiredForBreeding(LogoWindow* record);

// Breeds the next generation and shows it; the parents become `previous`. Retired lifers have no
// children.
void LogoEvolvePop(HWND window, LogoWindow* record);

// Breeds `generations` (1 or more) generations and shows the last. The marks count for the first;
// the later ones go by the scores of their drawings.
void LogoEvolveGenerations(HWND window, LogoWindow* record, int generations);
void LogoEvolveFive(HWND window, LogoWindow* record);

// Exchanges the population shown with the one before. Refused while there is none.
void LogoRevertPop(HWND window, LogoWindow* record);

void LogoAllLive(HWND window, LogoWindow* record);
void LogoAllRetire(HWND window, LogoWindow* record);

// Replaces a random subtree of the selected lifer's program by a random one. Only while a lifer is
// selected.
void LogoMutateTurtle(HWND window, LogoWindow* record);

// Gives the selected lifer the program `tree` and takes it over. Only while a lifer is selected.
// Returns true.
bool LogoReplaceTurtle(HWND window, LogoWindow* record, ExprNode* tree);

// The same for any lifer: the one that was selected before a dialog.
void LogoReplaceLifer(HWND window, LogoWindow* record, int index, ExprNode* tree);

// Releases all programs of one of the window's populations. True when the single-turtle view shows
// one of them: once the window has its new population, the caller then calls LogoZoomSelected().
[[nodiscard]] bool LogoReleasePrograms(LogoWindow* record, Population* pop);

// Lets the single-turtle view show the selected lifer.
void LogoZoomSelected(LogoWindow* record);

} // namespace pelmora
