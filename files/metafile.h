// Enhanced metafiles: the drawing of a turtle as a picture for other programs.
#pragma once

#include "files/turtle_exchange.h"
#include "platform/win32.h"

#include <string>

namespace pelmora {

// Asks for a name, the map mode and the pen's width, and saves the turtle as a metafile. One turtle
// unit is one logical unit of the map mode; in the frame it counts as 0.01 mm. Failures are not
// mentioned to the user.
void SaveTurtleMetafile(HWND owner, const SelectedTurtle& turtle);

// Saves the turtle as a metafile with the settings as they are. A file that cannot be made is
// passed over; one that cannot be completed is mentioned in the error log, and the old one stays
// where the platform writes files as a whole.
void write_metafile(const std::string& name, const SelectedTurtle& turtle);

// Records the picture that Copy places: 20320 by 20320 units of 0.1 mm, whatever the shape of the
// drawing, with the thinnest pen. Null when it could not be recorded; the caller releases it, or
// the clipboard does.
HENHMETAFILE record_copied_picture(const SelectedTurtle& turtle);

} // namespace pelmora
