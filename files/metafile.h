// Enhanced metafiles: the drawing of a turtle as a picture for other programs.
#pragma once

#include "files/turtle_exchange.h"
#include "platform/win32.h"

#include <string>

namespace pelmora {

// Asks for a name, the map mode and the pen's width, and saves the turtle as a metafile. One turtle
// unit is one logical unit of the map mode; in the frame it counts as 0.01 mm. The user is not told
// of failures.
void SaveTurtleMetafile(HWND owner, const SelectedTurtle& turtle);

// Saves the turtle as a metafile with the current settings. A file that cannot be created is
// ignored. One that cannot be completed is reported on the error log; the old file then stays if
// the platform replaces files as a whole.
void write_metafile(const std::string& name, const SelectedTurtle& turtle);

// Records the picture that Copy places: 20320 by 20320 units of 0.1 mm, whatever the shape of the
// drawing, with the thinnest pen. Null when it could not be recorded. The caller owns it and may
// pass it to the clipboard.
HENHMETAFILE record_copied_picture(const SelectedTurtle& turtle);

} // namespace pelmora
