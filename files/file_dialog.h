// The desktop's file dialogs, as all commands use them.
//
// While one is open other windows still get messages, so any window, the owner included, may be
// destroyed when it returns: callers check IsWindow() first.
#pragma once

#include "platform/win32.h"

#include <string>

namespace pelmora {

// What a save dialog does when the file to be written exists.
enum class Overwrite { ask, silently };

// Lets the user choose an existing file. `filter` holds pairs of a text and a pattern, each with
// its zero, and a zero at the end; the first pair is preselected. A path of 260 characters or more
// is refused in the dialog. Empty when the user cancelled or the owner was destroyed.
std::string AskOpenName(HWND owner, const char* filter);

// Lets the user choose a name to save under; the same, but from 512 characters a path is refused. A
// path without any "." gets `extension`, which begins with one.
std::string AskSaveName(HWND owner, const char* filter, Overwrite overwrite, const char* extension);

// `path` with `extension` appended when it holds no "." anywhere, folder names included.
std::string with_default_extension(std::string path, const char* extension);

} // namespace pelmora
