#include "tests/support/failing_new.h"

#include <cstdlib>
#include <limits>
#include <new>

// The linker sends the program's calls of malloc and realloc to __wrap_*, and names the true ones
// __real_*.
// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
extern "C" {
void* __real_malloc(std::size_t bytes);
void* __real_realloc(void* memory, std::size_t bytes);
void* __wrap_malloc(std::size_t bytes);
void* __wrap_realloc(void* memory, std::size_t bytes);
}

namespace {

constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();
std::size_t good_left = kNoLimit;

bool granted() {
    if (good_left == kNoLimit) {
        return true;
    }
    return good_left != 0 && good_left-- != 0;
}

} // namespace

void* __wrap_malloc(std::size_t bytes) {
    return granted() ? __real_malloc(bytes) : nullptr;
}

void* __wrap_realloc(void* memory, std::size_t bytes) {
    return granted() ? __real_realloc(memory, bytes) : nullptr;
}
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)

pelmora_test::FailingNew::FailingNew(std::size_t good) {
    good_left = good;
}

pelmora_test::FailingNew::~FailingNew() {
    good_left = kNoLimit;
}

// Only what can tell of failure is replaced, and the plain form with its releases, which must not
// come back to __wrap_malloc. All others are the library's, or those of a checker of memory.
// NOLINTBEGIN(misc-new-delete-overloads)
using Align = std::align_val_t;
using NoThrow = std::nothrow_t;

void* operator new(std::size_t n) {
    void* memory = __real_malloc(n);
    if (memory == nullptr) {
        std::abort();
    }
    return memory;
}
void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

void* operator new(std::size_t n, const NoThrow&) noexcept {
    return granted() ? __real_malloc(n) : nullptr;
}
void* operator new[](std::size_t n, const NoThrow&) noexcept {
    return granted() ? ::operator new[](n) : nullptr;
}
void* operator new(std::size_t n, Align a, const NoThrow&) noexcept {
    return granted() ? ::operator new(n, a) : nullptr;
}
void* operator new[](std::size_t n, Align a, const NoThrow&) noexcept {
    return granted() ? ::operator new[](n, a) : nullptr;
}
// NOLINTEND(misc-new-delete-overloads)
