// Names of files as the platform's calls take them, and as paths of the standard library.
#pragma once

#include <filesystem>
#include <string>

namespace pelmora {

// The path that a name in UTF-8 stands for. Not the library's own conversion: that takes a name for
// one in the locale's encoding. Empty for what can be no name on this system.
std::filesystem::path path_of(const std::string& name);

// The name of a path, in UTF-8, for calls that take a `const char*`.
std::string name_of(const std::filesystem::path& path);

} // namespace pelmora
