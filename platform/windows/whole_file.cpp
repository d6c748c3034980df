// WholeFile on ReplaceFileW, which keeps the old file's attributes, access rights and streams.
#include "platform/whole_file.h"
#include "platform/win32.h"

#include <cerrno>
#include <cstdint>
#include <random>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <io.h>

namespace platform {

const char kNullDevice[] = "NUL";

namespace {

constexpr wchar_t kTemporary[] = L".pelmora-saving-";
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// An open handle, or INVALID_HANDLE_VALUE.
class Handle {
  public:
    explicit Handle(HANDLE handle = INVALID_HANDLE_VALUE) : handle_(handle) {}
    ~Handle() {
        if (is_open()) {
            const DWORD error = GetLastError();
            CloseHandle(handle_);
            SetLastError(error);
        }
    }
    Handle(Handle&& other) noexcept : handle_(other.release()) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }
    bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }
    HANDLE release() { return std::exchange(handle_, INVALID_HANDLE_VALUE); }

  private:
    HANDLE handle_;
};

// Empty for invalid UTF-8.
std::wstring wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0');
    result.resize(static_cast<std::size_t>(MultiByteToWideChar(
        CP_UTF8, MB_ERR_INVALID_CHARS, text.data(), size, result.data(), size)));
    return result;
}

// The absolute path with the \\?\ prefix, which lifts the limit of 260 characters; a device becomes
// \\.\NAME.
std::wstring full_path(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    if (full.empty() || full.starts_with(L"\\\\.\\") || full.starts_with(L"\\\\?\\")) {
        return full;
    }
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

// The path of an open file with links resolved; empty when it is unknown.
std::wstring final_path(const Handle& file) {
    std::wstring path(GetFinalPathNameByHandleW(file.get(), nullptr, 0, VOLUME_NAME_DOS), L'\0');
    path.resize(GetFinalPathNameByHandleW(file.get(), path.data(), static_cast<DWORD>(path.size()),
                                          VOLUME_NAME_DOS));
    return path;
}

Handle open_once(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    return Handle(CreateFileW(path.c_str(), access, share, nullptr, disposition,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Virus scanners, indexers and synchronisation programs open files briefly. After a sharing
// violation this retries for about a second.
Handle open_with_retries(const std::wstring& path, DWORD access, DWORD share, DWORD disposition) {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 50;
    for (int i = 1;; ++i) {
        Handle file = open_once(path, access, share, disposition);
        if (file.is_open() || GetLastError() != ERROR_SHARING_VIOLATION || i == kTries) {
            return file;
        }
        Sleep(kPause);
    }
}

// Waits until the file may be renamed or deleted. False when another process still prevents it.
bool await_deletable(const std::wstring& path, DWORD share) {
    return open_with_retries(path, DELETE, share, OPEN_EXISTING).is_open() ||
           GetLastError() != ERROR_SHARING_VIOLATION;
}

bool is_out_of_room(DWORD error) {
    constexpr DWORD kQuotaExceeded = 1295; // ERROR_DISK_QUOTA_EXCEEDED
    return error == ERROR_DISK_FULL || error == ERROR_HANDLE_DISK_FULL || error == kQuotaExceeded ||
           error == ERROR_NOT_ENOUGH_QUOTA;
}

int errno_of(DWORD error) {
    return std::error_code(static_cast<int>(error), std::system_category())
        .default_error_condition()
        .value();
}

// Removes the temporary files of killed processes from a folder, whose path ends with "\". A
// temporary file that is being written is open without sharing, so it cannot be deleted. Between
// its closing and its renaming it could be; files younger than a minute are therefore kept.
void remove_leftovers(const std::wstring& folder) {
    constexpr std::uint64_t kMinute = 60 * std::uint64_t{10'000'000};
    const auto number = [](FILETIME time) {
        return (std::uint64_t{time.dwHighDateTime} << 32U) + time.dwLowDateTime;
    };
    FILETIME now{};
    GetSystemTimeAsFileTime(&now);
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW((folder + kTemporary + L"*").c_str(), &found);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &found)) {
        if (number(found.ftLastWriteTime) + kMinute < number(now)) {
            const Handle removed(
                CreateFileW((folder + found.cFileName).c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                            FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        }
    }
    if (search != INVALID_HANDLE_VALUE) {
        FindClose(search);
    }
}

// Leaves the file position at the new end.
bool set_size(const Handle& file, LARGE_INTEGER size) {
    return SetFilePointerEx(file.get(), size, nullptr, FILE_BEGIN) && SetEndOfFile(file.get());
}

// Copies a file's content over an old file. Allocates the space first, so that a full disk leaves
// the old content intact. False with the last error set.
bool copy_over(const std::wstring& new_file, const std::wstring& old_file) {
    LARGE_INTEGER source{};
    LARGE_INTEGER target{};
    const Handle to = open_with_retries(old_file, GENERIC_WRITE, kShareAll, OPEN_ALWAYS);
    if (!to.is_open() || !GetFileSizeEx(to.get(), &target)) {
        return false;
    }
    const Handle from = open_with_retries(new_file, GENERIC_READ, kShareAll, OPEN_EXISTING);
    if (!from.is_open() || !GetFileSizeEx(from.get(), &source)) {
        return false;
    }
    if (source.QuadPart > target.QuadPart && !set_size(to, source)) {
        const DWORD error = GetLastError();
        set_size(to, target);
        SetLastError(error);
        return false;
    }
    SetFilePointerEx(to.get(), {}, nullptr, FILE_BEGIN);
    char part[65536];
    DWORD count = 0;
    BOOL success = TRUE;
    while ((success = ReadFile(from.get(), part, sizeof part, &count, nullptr)) && count != 0) {
        DWORD written = 0;
        if (!WriteFile(to.get(), part, count, &written, nullptr)) {
            return false;
        }
    }
    return success && SetEndOfFile(to.get()) && FlushFileBuffers(to.get());
}

} // namespace

struct WholeFile::State {
    std::wstring target;
    std::wstring temporary; // empty: written in place
    std::FILE* stream = nullptr;
    int error = 0; // why `stream` is null

    void resolve(const Handle& old);
    void open_over(Handle old);
    void open_new();
    void open_stream(Handle file);
    HANDLE file() const { return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))); }
    int complete() const;
    void show_temporary() const;
    bool replace_target() const;
    void remove_temporary();
};

void WholeFile::State::open_stream(Handle file) {
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(file.get()), _O_BINARY);
    if (descriptor == -1) {
        return;
    }
    file.release();
    stream = _fdopen(descriptor, "wb");
    if (stream == nullptr) {
        _close(descriptor);
    }
}

void WholeFile::State::open_new() {
    const std::wstring folder = target.substr(0, target.rfind(L'\\') + 1);
    remove_leftovers(folder);
    std::random_device number;
    temporary = folder + kTemporary + std::to_wstring(number()) + std::to_wstring(number());
    Handle file(CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_HIDDEN, nullptr));
    if (!file.is_open()) {
        temporary.clear();
        return;
    }
    open_stream(std::move(file));
    if (stream == nullptr) {
        remove_temporary();
    }
}

// Replaces `target` by the file that links lead to.
void WholeFile::State::resolve(const Handle& old) {
    const std::wstring path = final_path(old);
    if (!path.empty()) {
        target = path;
    }
}

void WholeFile::State::open_over(Handle old) {
    if (GetFileType(old.get()) != FILE_TYPE_DISK) {
        open_stream(std::move(old));
        return;
    }
    resolve(old);
    open_new();
    if (stream != nullptr) {
        return;
    }
    if (is_out_of_room(GetLastError())) {
        error = errno_of(GetLastError());
    } else {
        open_stream(std::move(old));
    }
}

WholeFile::WholeFile(const std::string& path) : state_(std::make_unique<State>()) {
    state_->target = full_path(wide(path));
    Handle old = open_once(state_->target, GENERIC_WRITE, kShareAll, OPEN_EXISTING);
    if (old.is_open()) {
        state_->open_over(std::move(old));
    } else if (GetLastError() == ERROR_FILE_NOT_FOUND) {
        state_->open_new();
    } else if (GetLastError() == ERROR_SHARING_VIOLATION) {
        // The other process may have closed it by the time of commit().
        state_->resolve(open_once(state_->target, 0, kShareAll, OPEN_EXISTING));
        state_->open_new();
    }
}

WholeFile::~WholeFile() {
    if (state_->stream != nullptr) {
        std::fclose(state_->stream);
        state_->remove_temporary();
    }
}

std::FILE* WholeFile::stream() const {
    return state_->stream;
}

// Flushes everything to the disk. Without that a power failure after the rename could lose both the
// new and the old content.
int WholeFile::State::complete() const {
    const bool written = std::ferror(stream) == 0;
    if (std::fflush(stream) != 0) {
        return errno;
    }
    const bool is_file = GetFileType(file()) == FILE_TYPE_DISK;
    if (is_file && !(temporary.empty() ? SetEndOfFile(file()) : FlushFileBuffers(file()))) {
        return errno_of(GetLastError());
    }
    return written ? 0 : EIO; // the errno of an earlier failed write is lost
}

// Gives the temporary file the old file's attributes, or the normal ones when there is no old file.
void WholeFile::State::show_temporary() const {
    constexpr DWORD kKept = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const DWORD old = GetFileAttributesW(target.c_str());
    SetFileAttributesW(temporary.c_str(),
                       old != INVALID_FILE_ATTRIBUTES ? old & kKept : FILE_ATTRIBUTE_NORMAL);
}

// False with the last error set.
bool WholeFile::State::replace_target() const {
    constexpr DWORD kFlags = REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS;
    constexpr DWORD kNoSharing = 0;
    // A failed ReplaceFileW may leave a file of its own behind, so it is not called before both
    // files can be renamed. It may also fail after the old file is gone; a move is enough then, as
    // it is for a new name.
    if (await_deletable(temporary, kNoSharing) && await_deletable(target, kShareAll)) {
        show_temporary();
        if (ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, kFlags, nullptr, nullptr) ||
            MoveFileExW(temporary.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH)) {
            return true;
        }
    }
    return copy_over(temporary, target);
}

// The file is hidden again first: when another process has it open, the deletion fails and the next
// save removes it.
void WholeFile::State::remove_temporary() {
    if (!temporary.empty()) {
        SetFileAttributesW(temporary.c_str(), FILE_ATTRIBUTE_HIDDEN);
        DeleteFileW(temporary.c_str());
        temporary.clear();
    }
}

int WholeFile::commit() {
    State& state = *state_;
    if (state.stream == nullptr) {
        return state.error;
    }
    const bool beside = !state.temporary.empty();
    int error = state.complete();
    if (std::fclose(std::exchange(state.stream, nullptr)) != 0 && error == 0) {
        error = errno;
    }
    if (beside && error == 0 && !state.replace_target()) {
        error = errno_of(GetLastError());
    }
    state.remove_temporary();
    return error;
}

} // namespace platform
