#include "files/saved_file.h"

#include "files/paths.h"
#include "platform/win32.h"

#include <cerrno>
#include <fstream>
#include <random>
#include <system_error>
#include <utility>

namespace pelmora {
namespace {

namespace fs = std::filesystem;

// Opens the device or pipe of a name for writing and changes nothing; a pipe would otherwise wait
// for a reader.
class DeviceProbe {
  public:
    explicit DeviceProbe(const fs::path& path)
        : handle_(CreateFileA(name_of(path).c_str(), GENERIC_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~DeviceProbe() {
        if (opened()) {
            CloseHandle(handle_);
        }
    }
    DeviceProbe(const DeviceProbe&) = delete;
    DeviceProbe& operator=(const DeviceProbe&) = delete;

    [[nodiscard]] bool opened() const { return handle_ != INVALID_HANDLE_VALUE; }

  private:
    HANDLE handle_;
};

std::FILE* open_file(const fs::path& path, const char* mode) {
    return std::fopen(name_of(path).c_str(), mode);
}

// Whether a file may be written, which it is not yet.
bool may_write(const fs::path& file) {
    std::FILE* stream = open_file(file, "ab");
    return stream != nullptr && std::fclose(stream) == 0;
}

// Writes the content of one file into another in place. The library's copy asks for more than the
// right to write.
std::error_code write_over(const fs::path& from, const fs::path& to) {
    std::ifstream source(from, std::ios::binary);
    errno = 0;
    std::FILE* target = open_file(to, "wb");
    char part[4096];
    while (target != nullptr && source.read(part, sizeof part).gcount() > 0) {
        std::fwrite(part, 1, static_cast<std::size_t>(source.gcount()), target);
    }
    const bool failed = target == nullptr || source.bad() || std::ferror(target) != 0;
    if (target != nullptr && std::fclose(target) == 0 && !failed) {
        return {};
    }
    return {errno != 0 ? errno : EIO, std::generic_category()};
}

// What a path leads to through symbolic links, whether that exists or not; empty for a loop.
fs::path resolved(fs::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(path, error)) {
            return path;
        }
        path = path.parent_path() / fs::read_symlink(path, error); // an absolute link replaces all
    }
    return {};
}

// The name of a file that is not there yet, beside the target. By chance, since not every C library
// can insist on making a file.
fs::path beside(const fs::path& target) {
    std::random_device number;
    std::error_code error;
    fs::path path;
    do {
        path = target.parent_path() / (".pelmora-saving-" + std::to_string(number()));
    } while (fs::exists(fs::symlink_status(path, error)));
    return path;
}

// Whether nothing can ever be made beside the target. Any other failure, of a full disk say, would
// only destroy the old file.
bool may_write_in_place(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
}

} // namespace

SavedFile::SavedFile(const std::string& path) : target_(resolved(path_of(path))) {
    std::error_code error;
    const fs::file_status old = fs::status(target_, error);
    if (target_.empty() || (error && old.type() != fs::file_type::not_found)) {
        return;
    }
    if (fs::is_regular_file(old)) {
        open_over(old);
        return;
    }
    // Some devices have a name alone, and stand in no folder. The probe stays until the stream is
    // open, so that the reader of a pipe does not take it for the end.
    const DeviceProbe probe(target_);
    if (probe.opened()) {
        stream_ = open_file(target_, "wb");
    } else if (!fs::exists(old)) {
        open_beside();
    }
}

SavedFile::~SavedFile() {
    if (stream_ != nullptr) {
        std::fclose(stream_);
        remove_temporary();
    }
}

void SavedFile::open_over(fs::file_status old) {
    if (!may_write(target_)) {
        return;
    }
    std::error_code error;
    if (open_beside()) {
        fs::permissions(temporary_, old.permissions(), error);
    } else if (may_write_in_place(errno)) {
        stream_ = open_file(target_, "wb");
    } else {
        log_failure(errno);
    }
}

bool SavedFile::open_beside() {
    const fs::path path = beside(target_);
    stream_ = open_file(path, "wb");
    if (stream_ != nullptr) {
        temporary_ = path;
    }
    return stream_ != nullptr;
}

void SavedFile::log_failure(int error) const {
    std::fprintf(stderr, "ERROR SAVE FILE '%s' = %d\n", name_of(target_).c_str(), error);
}

void SavedFile::remove_temporary() {
    std::error_code error;
    if (!temporary_.empty()) {
        // What may not be written may not be removed everywhere either.
        fs::permissions(temporary_, fs::perms::owner_write, fs::perm_options::add, error);
        fs::remove(temporary_, error);
    }
}

bool SavedFile::commit() {
    std::error_code error;
    // An early write may have failed, of which the stream remembers that, but not why.
    const bool written = std::ferror(stream_) == 0;
    if (std::fclose(std::exchange(stream_, nullptr)) != 0) {
        error.assign(errno, std::generic_category());
    } else if (!written) {
        error = std::make_error_code(std::errc::io_error);
    }
    if (!error && !temporary_.empty()) {
        fs::rename(temporary_, target_, error);
        if (error && may_write_in_place(error.default_error_condition().value())) {
            // Whoever has the old file open may only stand in the way of its name.
            error = write_over(temporary_, target_);
            remove_temporary();
        }
    }
    if (!error) {
        return true;
    }
    log_failure(error.default_error_condition().value());
    remove_temporary();
    return false;
}

} // namespace pelmora
