// Copying a turtle to the clipboard and pasting one from it.
#pragma once

#include "files/turtle_exchange.h"
#include "platform/win32.h"

namespace pelmora {

// Places the program as text and as a picture. False when the clipboard could not be opened or
// there was no memory for the text; the user is told.
bool CopyTurtle(HWND owner, const SelectedTurtle& turtle);

// Replaces the selected turtle's program by the one in the clipboard's text; the user is told when
// it does not parse. Without text nothing happens. Returns false in every case.
bool PasteTurtle(HWND owner, const SelectedTurtle& turtle);

} // namespace pelmora
