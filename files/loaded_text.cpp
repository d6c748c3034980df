#include "files/loaded_text.h"

#include "files/paths.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace pelmora {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

LoadedText failed(std::string message) {
    return {nullptr, std::move(message)};
}

LoadedText failed_to(const char* what, int error, const std::string& path) {
    return failed("Error " + std::to_string(error) + " " + what + " '" + path + "'.");
}

} // namespace

LoadedText load_text(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path_of(path), error);
    if (error) {
        return failed_to("stat-ing", error.default_error_condition().value(), path);
    }
    // Two bytes more than the file has: for the terminating zero, and for an empty file.
    OwnedText text;
    if (size <= SIZE_MAX - 2) {
        text.reset(static_cast<char*>(std::malloc(static_cast<std::size_t>(size) + 2)));
    }
    if (text == nullptr) {
        return failed("Could not malloc " + std::to_string(size) + " bytes.");
    }
    const File file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) {
        return failed_to("fopen-ing", errno, path);
    }
    const std::size_t wanted = static_cast<std::size_t>(size);
    const std::size_t read = std::fread(text.get(), 1, wanted, file.get());
    if (read < wanted) {
        return failed("Error, read only " + std::to_string(read) + " of " + std::to_string(size) +
                      " bytes.");
    }
    text[read] = '\0';
    return {std::move(text), {}};
}

} // namespace pelmora
