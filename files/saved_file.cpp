#include "files/saved_file.h"

#include "platform/win32.h"

#include <cerrno>
#include <system_error>
#include <utility>

namespace pelmora {
namespace {

namespace fs = std::filesystem;

// Opens what stands at `path` for writing and changes nothing, not even a pipe, which would wait
// for a reader.
class WriteProbe {
  public:
    explicit WriteProbe(const fs::path& path)
        : handle_(CreateFileA(path.string().c_str(), GENERIC_WRITE,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
    ~WriteProbe() {
        if (opened()) {
            CloseHandle(handle_);
        }
    }
    WriteProbe(const WriteProbe&) = delete;
    WriteProbe& operator=(const WriteProbe&) = delete;

    [[nodiscard]] bool opened() const { return handle_ != INVALID_HANDLE_VALUE; }

  private:
    HANDLE handle_;
};

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

// A name beside the target; the target's own, as far as names may be long, says whose it is.
fs::path beside(const fs::path& target, int number) {
    constexpr std::size_t kNamePart = 200;
    const std::string name = target.filename().string().substr(0, kNamePart);
    return target.parent_path() / ("." + name + ".saving" + std::to_string(number));
}

// Whether nothing can ever be made beside the target. Any other failure, of a full disk say, would
// only destroy the old file.
bool may_write_in_place(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
}

} // namespace

SavedFile::SavedFile(const std::string& path) : target_(resolved(path)) {
    std::error_code error;
    const fs::file_status old = fs::status(target_, error);
    if (target_.empty() || (error && old.type() != fs::file_type::not_found)) {
        return;
    }
    if (!fs::exists(old)) {
        open_beside();
        return;
    }
    // Until the stream is open, so that the reader of a pipe does not take the probe for the end.
    const WriteProbe probe(target_);
    if (!probe.opened()) {
        return;
    }
    const bool regular = fs::is_regular_file(old);
    if (regular && open_beside()) {
        fs::permissions(temporary_, old.permissions(), error);
    } else if (!regular || may_write_in_place(errno)) {
        stream_ = std::fopen(target_.string().c_str(), "wb");
    } else {
        log_failure(errno);
    }
}

SavedFile::~SavedFile() {
    if (stream_ != nullptr) {
        std::fclose(stream_);
        remove_temporary();
    }
}

bool SavedFile::open_beside() {
    constexpr int kMostTries = 100; // others may be saving, or may have been interrupted
    for (int i = 0; i < kMostTries; ++i) {
        temporary_ = beside(target_, i);
        stream_ = std::fopen(temporary_.string().c_str(), "wbx");
        if (stream_ != nullptr || errno != EEXIST) {
            break;
        }
    }
    if (stream_ == nullptr) {
        temporary_.clear();
    }
    return stream_ != nullptr;
}

void SavedFile::log_failure(int error) const {
    std::fprintf(stderr, "ERROR SAVE FILE '%s' = %d\n", target_.string().c_str(), error);
}

void SavedFile::remove_temporary() {
    std::error_code error;
    if (!temporary_.empty()) {
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
    }
    if (!error) {
        return true;
    }
    log_failure(error.value());
    remove_temporary();
    return false;
}

} // namespace pelmora
