// WholeFile on POSIX. The toolkit's QSaveFile does not write devices and pipes in place, leaves
// visible files behind when the process is killed, and does not report the errno.
#include "platform/whole_file.h"

#include <cerrno>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

const char kNullDevice[] = "/dev/null";

namespace {

namespace fs = std::filesystem;

// The prefix of temporary files. The writer holds a lock, which ends with its process, so a file
// that can be locked is a leftover.
constexpr std::string_view kTemporary = ".pelmora-saving-";

// Owns a file descriptor; -1 for none.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        close();
        number_ = other.release();
        return *this;
    }
    int get() const { return number_; }
    int release() { return std::exchange(number_, -1); }
    void close() {
        if (number_ != -1) {
            const int error = errno;
            ::close(release());
            errno = error;
        }
    }

  private:
    int number_;
};

// Resolves symbolic links. The result need not exist; empty for a loop.
fs::path resolved(fs::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int i = 0; i < kMostLinks; ++i) {
        if (!fs::is_symlink(path, error)) {
            return path;
        }
        path = path.parent_path() / fs::read_symlink(path, error); // an absolute link replaces it
    }
    return {};
}

// False when another process holds the lock. True on file systems without locks.
bool lock(const Descriptor& file) {
    return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void remove_leftover(const fs::path& path) {
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.get() != -1 && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
        ::unlink(path.c_str());
    }
}

void remove_leftovers(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator i(folder.empty() ? "." : folder, error), end; !error && i != end;
         i.increment(error)) {
        if (i->path().filename().native().starts_with(kTemporary)) {
            remove_leftover(i->path());
        }
    }
}

fs::path temporary_name(const fs::path& target) {
    std::random_device number;
    return target.parent_path() /
           (std::string(kTemporary) + std::to_string(number()) + std::to_string(number()));
}

// Creates and locks a temporary file in the target's folder. Before it is locked another process
// may remove it as a leftover; then a new one is created.
Descriptor create_temporary(const fs::path& target, mode_t mode, fs::path* path) {
    remove_leftovers(target.parent_path());
    for (;;) {
        *path = temporary_name(target);
        Descriptor file(::open(path->c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (file.get() == -1 || (lock(file) && ::access(path->c_str(), F_OK) == 0)) {
            return file;
        }
    }
}

// Whether an error means that a temporary file cannot be created or renamed in this folder.
bool may_write_in_place(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG ||
           error == EBUSY; // a mount point
}

// Copies a file's content over an old file. Allocates the space first, so that a full disk leaves
// the old content intact. False with errno set.
bool copy_over(int from, int to) {
    struct stat source {};
    struct stat target {};
    if (::fstat(from, &source) != 0 || ::fstat(to, &target) != 0 ||
        ::lseek(from, 0, SEEK_SET) != 0) {
        return false;
    }
    if (source.st_size > target.st_size &&
        ::fallocate(to, FALLOC_FL_KEEP_SIZE, 0, source.st_size) != 0 && errno != EOPNOTSUPP) {
        return false;
    }
    errno = EIO; // a short write does not set errno
    char part[65536];
    ssize_t count = 0;
    while ((count = ::read(from, part, sizeof part)) > 0) {
        if (::write(to, part, static_cast<std::size_t>(count)) != count) {
            return false;
        }
    }
    return count == 0 && ::ftruncate(to, source.st_size) == 0 && ::fsync(to) == 0;
}

} // namespace

struct WholeFile::State {
    fs::path target;    // links resolved
    fs::path temporary; // empty: written in place
    Descriptor old;     // the existing file, unless the stream owns it
    std::FILE* stream = nullptr;
    int error = 0; // why `stream` is null

    void open_over();
    void open_new(mode_t mode);
    void open_stream(Descriptor file);
    bool complete() const;
    bool replace_target() const;
};

void WholeFile::State::open_stream(Descriptor file) {
    stream = file.get() != -1 ? ::fdopen(file.get(), "wb") : nullptr;
    if (stream != nullptr) {
        file.release();
    }
}

void WholeFile::State::open_new(mode_t mode) {
    Descriptor file = create_temporary(target, mode, &temporary);
    open_stream(std::move(file));
    if (stream == nullptr) {
        temporary.clear();
    }
}

void WholeFile::State::open_over() {
    struct stat found {};
    if (::fstat(old.get(), &found) != 0) {
        return;
    }
    if (!S_ISREG(found.st_mode)) {
        ::fcntl(old.get(), F_SETFL, O_WRONLY); // clears O_NONBLOCK: waits for a slow reader
        open_stream(std::move(old));
        return;
    }
    open_new(found.st_mode & 0777U);
    if (stream != nullptr) {
        ::fchmod(::fileno(stream), found.st_mode & 07777U); // including the bits in the umask
    } else if (may_write_in_place(errno)) {
        open_stream(std::move(old));
    } else {
        error = errno;
    }
}

WholeFile::WholeFile(const std::string& path) : state_(std::make_unique<State>()) {
    constexpr mode_t kDefaultMode = 0666; // minus the umask
    state_->target = resolved(path);
    if (!state_->target.has_filename()) {
        return;
    }
    state_->old =
        Descriptor(::open(state_->target.c_str(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (state_->old.get() != -1) {
        state_->open_over();
    } else if (errno == ENOENT) {
        state_->open_new(kDefaultMode);
    }
}

WholeFile::~WholeFile() {
    if (state_->stream != nullptr) {
        if (!state_->temporary.empty()) {
            ::unlink(state_->temporary.c_str()); // before it is unlocked
        }
        std::fclose(state_->stream);
    }
}

std::FILE* WholeFile::stream() const {
    return state_->stream;
}

// Flushes everything to the disk. Without fsync a power failure after the rename could lose both
// the new and the old content. False with errno set.
bool WholeFile::State::complete() const {
    const bool written = std::ferror(stream) == 0;
    if (std::fflush(stream) != 0) {
        return false;
    }
    errno = EIO; // the errno of an earlier failed write is lost
    const int file = ::fileno(stream);
    if (!temporary.empty()) {
        return written && ::fsync(file) == 0;
    }
    struct stat target_now {};
    if (::fstat(file, &target_now) == 0 && S_ISREG(target_now.st_mode)) {
        return ::ftruncate(file, ::lseek(file, 0, SEEK_CUR)) == 0 && written;
    }
    return written;
}

bool WholeFile::State::replace_target() const {
    return ::rename(temporary.c_str(), target.c_str()) == 0 ||
           (may_write_in_place(errno) && old.get() != -1 && copy_over(::fileno(stream), old.get()));
}

int WholeFile::commit() {
    State& state = *state_;
    if (state.stream == nullptr) {
        return state.error;
    }
    const bool beside = !state.temporary.empty();
    const bool success = state.complete() && (!beside || state.replace_target());
    int error = success ? 0 : errno;
    if (beside) {
        ::unlink(state.temporary.c_str()); // fails after a rename
    }
    // Some file systems report a failed write only on close.
    if (std::fclose(std::exchange(state.stream, nullptr)) != 0 && !beside && success) {
        error = errno;
    }
    return error;
}

} // namespace platform
