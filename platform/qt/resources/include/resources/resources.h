// The program's resources as toolkit objects.
#pragma once

#include "platform/win32.h"
#include "resources/resource_reader.h"

#include <QIcon>
#include <QString>

namespace platform {

// The resources linked into the program.
const ResourceFile& program_resources();

// The number of a resource name made by MAKEINTRESOURCEA; 0 for a text.
std::uint16_t resource_id(LPCSTR name);

inline QString to_qstring(const std::u16string& text) {
    return QString::fromStdU16String(text);
}

// Writes a line to the error log and ends the program: a resource that cannot be read or shown is a
// bug in the program itself.
[[noreturn]] void resource_fault(const char* kind, unsigned id);

const QIcon* icon_of(HICON handle);
// The icon with this id, which is never destroyed; null for none.
const QIcon* load_icon(std::uint16_t id);

// The accelerator table of a handle, which is never destroyed.
const std::vector<Accelerator>* accelerators_of(HACCEL handle);

} // namespace platform
