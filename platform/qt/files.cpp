// Files, as far as the program cannot ask for them in plain C++.
#include "platform/win32.h"

#include <cstdint>

#include <fcntl.h>
#include <unistd.h>

namespace {

// A handle is a descriptor plus one, so that none is null.
HANDLE handle_of(int descriptor) {
    return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(descriptor) + 1);
}
int descriptor_of(HANDLE handle) {
    return static_cast<int>(reinterpret_cast<LONG_PTR>(handle) - 1);
}

} // namespace

HANDLE CreateFileA(LPCSTR name, DWORD, DWORD, void*, DWORD, DWORD, HANDLE) {
    const int descriptor = ::open(name, O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor == -1) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    return handle_of(descriptor);
}

BOOL CloseHandle(HANDLE handle) {
    return handle != INVALID_HANDLE_VALUE && ::close(descriptor_of(handle)) == 0;
}
