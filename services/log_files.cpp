#include "services/log_files.h"

#include "platform/whole_file.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace pelmora {
namespace {

// Whether it can be read and written, as open_log() opens it. Makes the file when it is missing; an
// old one keeps its content.
bool can_write(const char* path) {
    std::FILE* file = std::fopen(path, "a+");
    return file != nullptr && std::fclose(file) == 0;
}

// The banner is written over the old content, and what is behind it is cut off. Truncating on
// opening would cost each start milliseconds on a busy disk: some file systems write a file that
// was cut to nothing back to the disk when it is closed.
void open_log(std::FILE* stream, const char* path) {
    // A failed freopen() would leave the stream closed and its descriptor free: the next file
    // opened, maybe a user's drawing, would get it and with it the log lines.
    const char* target = can_write(path) ? path : platform::kNullDevice;
    if (std::freopen(target, "r+", stream) == nullptr) {
        return;
    }
    // Unbuffered: a written line is in the file even if the program crashes next.
    std::setvbuf(stream, nullptr, _IONBF, 0);
    std::fputs("------ THIS IS PELMORA ----------\n", stream);
    std::error_code nothing_to_cut; // a device
    std::filesystem::resize_file(target, static_cast<std::uintmax_t>(std::ftell(stream)),
                                 nothing_to_cut);
}

} // namespace

void OpenLogFiles() {
    open_log(stderr, "stderr.txt");
    open_log(stdout, "stdout.txt");
}

} // namespace pelmora
