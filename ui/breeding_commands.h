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

// Breeds `generations` (1 or more) generations and shows the last. The marks count for the first
// only; the later ones depend on scores alone.
void LogoEvolveGenerations(HWND window, LogoWindow* record, int generations);
void LogoEvolveFive(HWND window, LogoWindow* record);

// Exchanges the shown population with the previous one. Refused while there is none.
void LogoRevertPop(HWND window, LogoWindow* record);

void LogoAllLive(HWND window, LogoWindow* record);
void LogoAllRetire(HWND window, LogoWindow* record);

// Replaces a random subtree of the selected lifer's program by a random one. Needs a selected
// lifer.
void LogoMutateTurtle(HWND window, LogoWindow* record);

// Makes `tree` the selected lifer's program and owns it. Needs a selected lifer. Returns true.
bool LogoReplaceTurtle(HWND window, LogoWindow* record, ExprNode* tree);

// The same for any lifer, such as the one that was selected before a dialog.
void LogoReplaceLifer(HWND window, LogoWindow* record, int index, ExprNode* tree);

// Releases all programs of one of the window's populations. True when the single-turtle view showed
// one of them: the caller must then call LogoZoomSelected() once the window has its new population.
[[nodiscard]] bool LogoReleasePrograms(LogoWindow* record, Population* pop);

// Shows the selected lifer in the single-turtle view.
void LogoZoomSelected(LogoWindow* record);

} // namespace pelmora
