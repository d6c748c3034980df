#include "files/paths.h"

namespace pelmora {

std::filesystem::path path_of(const std::string& name) {
    try {
        return std::u8string(name.begin(), name.end());
    } catch (const std::filesystem::filesystem_error&) {
        return {}; // not UTF-8, on a system where names are not bytes
    }
}

std::string name_of(const std::filesystem::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}

} // namespace pelmora
