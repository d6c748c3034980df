// The settings of the metafile export and their dialog.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// Shared by all windows, kept until the program ends.
extern std::string metaPenSize; // the pen's width as typed, at most 31 bytes
extern std::string metaMapCode; // the map mode: "LM", "HM", "LE", "HE" or "TX"

// Asks for the map mode and the pen's width. False when the user cancelled or the owner was
// destroyed.
bool AskMetafileSettings(HWND owner);

// The mode (MM_...) that metaMapCode stands for.
int MetafileMapMode();

// The procedure of the mapping dialog.
INT_PTR CALLBACK MetafileMappingDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

} // namespace pelmora
