#include "platform/qt/output_file.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

namespace fs = std::filesystem;

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

bool write_all(int file, const char* bytes, std::size_t count) {
    while (count != 0) {
        const ssize_t written = ::write(file, bytes, count);
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

// Some file systems say only now that something could not be written.
bool close_file(int& file) {
    return ::close(std::exchange(file, -1)) == 0;
}

// Whether nothing can ever be made beside the target. Any other failure, of a full disk say, would
// only destroy the old file.
bool may_write_in_place(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
}

} // namespace

OutputFile::OutputFile(const char* path) : path_(resolved(path)) {
    if (!path_.has_filename()) {
        return;
    }
    target_ = ::open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat old {};
    if (target_ == -1) {
        if (errno == ENOENT) {
            open_beside();
        }
    } else if (::fstat(target_, &old) == 0 && S_ISREG(old.st_mode)) {
        open_beside();
        if (temporary_ != -1) {
            ::fchmod(temporary_, old.st_mode & 07777U);
        } else if (!may_write_in_place(errno)) {
            ::close(std::exchange(target_, -1));
        }
    } else {
        ::fcntl(target_, F_SETFL, O_WRONLY); // a slow reader is waited for
    }
}

OutputFile::~OutputFile() {
    if (temporary_ != -1) {
        ::close(temporary_);
        ::unlink(temporary_path_.c_str());
    }
    if (target_ != -1) {
        ::close(target_);
    }
}

// The target's own name, as far as names may be long, says whose the new file is.
void OutputFile::open_beside() {
    constexpr int kMostTries = 100; // others may be writing, or may have been interrupted
    constexpr std::size_t kNamePart = 200;
    constexpr mode_t kUsual = 0666; // less what the user masks out
    const std::string name = path_.filename().string().substr(0, kNamePart);
    for (int i = 0; i < kMostTries && temporary_ == -1; ++i) {
        temporary_path_ = path_.parent_path() / ("." + name + ".writing" + std::to_string(i));
        temporary_ =
            ::open(temporary_path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kUsual);
        if (temporary_ == -1 && errno != EEXIST) {
            return;
        }
    }
}

bool OutputFile::replace(const char* bytes, std::size_t count) {
    const bool written = write_all(temporary_, bytes, count);
    const bool replaced = close_file(temporary_) && written &&
                          std::rename(temporary_path_.c_str(), path_.c_str()) == 0;
    if (!replaced) {
        ::unlink(temporary_path_.c_str());
    }
    return replaced;
}

bool OutputFile::write_in_place(const char* bytes, std::size_t count) {
    struct stat old {};
    const bool cleared =
        ::fstat(target_, &old) == 0 && (!S_ISREG(old.st_mode) || ::ftruncate(target_, 0) == 0);
    const bool written = cleared && write_all(target_, bytes, count);
    return close_file(target_) && written;
}

bool OutputFile::write(const char* bytes, std::size_t count) {
    if (temporary_ != -1) {
        return replace(bytes, count);
    }
    return target_ != -1 && write_in_place(bytes, count);
}

} // namespace platform
