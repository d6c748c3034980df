// Copying a turtle to the clipboard and pasting one from it.
#pragma once

#include "files/turtle_exchange.h"
#include "platform/win32.h"

namespace pelmora {

// Places the program as text and as a picture. False when the clipboard could not be opened or no
// memory could be had for the text, which the user was told.
bool CopyTurtle(HWND owner, const SelectedTurtle& turtle);

// Makes the program that the clipboard's text holds the selected turtle's; the user is told when it
// does not parse. Without text nothing happens. Returns false in every case.
bool PasteTurtle(HWND owner, const SelectedTurtle& turtle);

} // namespace pelmora
