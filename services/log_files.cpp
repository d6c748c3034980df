#include "services/log_files.h"

#include "platform/whole_file.h"

#include <cstdio>

namespace pelmora {
namespace {

// Opens to append: some file systems write a file to the disk when it is closed after it was
// truncated, which would cost each start milliseconds.
bool can_write(const char* path) {
    std::FILE* file = std::fopen(path, "a");
    return file != nullptr && std::fclose(file) == 0;
}

// The path, or the null device when it cannot be written. A failed freopen() would leave the stream
// closed and its descriptor free: the next file opened, maybe a user's drawing, would get it and
// with it the log lines. So the path is tested first.
const char* log_target(const char* path) {
    return can_write(path) ? path : platform::kNullDevice;
}

void open_log(std::FILE* stream, const char* path) {
    if (std::freopen(log_target(path), "w", stream) != nullptr) {
        // Unbuffered: a written line is in the file even if the program crashes next.
        std::setvbuf(stream, nullptr, _IONBF, 0);
        std::fputs("------ THIS IS PELMORA ----------\n", stream);
    }
}

} // namespace

void OpenLogFiles() {
    open_log(stderr, "stderr.txt");
    open_log(stdout, "stdout.txt");
}

} // namespace pelmora
