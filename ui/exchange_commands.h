// The commands that move turtles in and out of a population. Those for one turtle need a selected
// lifer. None of them changes the selection.
#pragma once

#include "ui/population_record.h"

#include <functional>

namespace pelmora {

// The rest of a command after its dialogs. It runs only if the window is still open. Null: nothing.
using AfterDialogs = std::function<void()>;

// Opens an editor on a copy of the selected lifer's program.
void LogoEditTurtle(HWND window, LogoWindow* record);

AfterDialogs LogoLoadTurtle(HWND window, LogoWindow* record);
void LogoSaveTurtle(HWND window, LogoWindow* record);
void LogoSaveEPS(HWND window, LogoWindow* record);
void LogoSaveMetafile(HWND window, LogoWindow* record);
void LogoCopyTurtle(HWND window, LogoWindow* record);
void LogoPasteTurtle(HWND window, LogoWindow* record);
void LogoPrintTurtle(HWND window, LogoWindow* record);

// Saves the programs of the whole shown population.
void LogoSavePop(HWND window, LogoWindow* record);

// Replaces the programs of the first lifers by those of a file; scores and pictures are made again
// even if no file was loaded. Marks and `previous` stay.
AfterDialogs LogoLoadPop(HWND window, LogoWindow* record);

} // namespace pelmora
