// The program's resources, as the toolkit's objects.
#pragma once

#include "platform/win32.h"
#include "resources/resource_reader.h"

#include <QIcon>
#include <QString>

namespace platform {

// The resources that the program was linked with.
const ResourceFile& program_resources();

// The number of a resource named with MAKEINTRESOURCEA; 0 for a text.
std::uint16_t resource_id(LPCSTR name);

inline QString to_qstring(const std::u16string& text) {
    return QString::fromStdU16String(text);
}

// Ends the program with a line on the error log: a resource that cannot be read or shown is a fault
// of the program itself and must not go unnoticed.
[[noreturn]] void resource_fault(const char* kind, unsigned id);

const QIcon* icon_of(HICON handle);
// The icon with this id, kept for the life of the process; null when there is none.
const QIcon* load_icon(std::uint16_t id);

// Accelerator tables, kept for the life of the process.
const std::vector<Accelerator>* accelerators_of(HACCEL handle);

} // namespace platform
