#include "tests/support/failing_new.h"

#include <cstdlib>
#include <limits>
#include <new>

// The linker redirects the program's calls of malloc and realloc to __wrap_*; __real_* are the
// original functions. NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp)
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

// Replaces the nothrow forms, which can report failure, and the plain form with its deletes, which
// must not call __wrap_malloc. The others stay those of the library or of a sanitizer.
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
