// Titles and class names of the program's windows, from its string resources.
#pragma once

#include "platform/win32.h"

namespace pelmora {

using WindowName = char[100];

struct WindowNames {
    WindowName main_title, main_class;
    WindowName logo_title, logo_class;
    WindowName engine_title, engine_class;
};

// Loads all names. A text that is missing stays empty.
void LoadWindowNames(HINSTANCE instance);

// The names; empty before they are loaded.
const WindowNames& window_names();

} // namespace pelmora
