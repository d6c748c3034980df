// Conversions between file names in UTF-8 and paths of the standard library.
#pragma once

#include <filesystem>
#include <string>

namespace pelmora {

// The path of a name in UTF-8. The library's own conversion would assume the locale's encoding.
// Empty for a name that is invalid on this system.
std::filesystem::path path_of(const std::string& name);

// The name of a path, in UTF-8, for calls that take a `const char*`.
std::string name_of(const std::filesystem::path& path);

} // namespace pelmora
