// The commands that move turtles in and out of a population. Those that name one turtle are given
// only while a lifer is selected. None of them changes the selection.
#pragma once

#include "ui/population_record.h"

#include <functional>

namespace pelmora {

// What a command has still to do after its dialogs, in which the window may have been closed: it is
// done only if the window is still open. Null: nothing.
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

// The programs of the whole population shown.
void LogoSavePop(HWND window, LogoWindow* record);

// Replaces the programs of the first lifers by those of a file; scores and pictures are made anew
// whether a file was loaded or not. Marks and `previous` stay.
AfterDialogs LogoLoadPop(HWND window, LogoWindow* record);

} // namespace pelmora
