#include "tests/support/failing_new.h"

#include <cstdint>
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

// Aligned blocks are cut out of plain ones, the address of the plain one in front: there is no
// aligned allocation that every platform has.
void* aligned(std::size_t bytes, std::align_val_t alignment) {
    const auto align = static_cast<std::uintptr_t>(alignment);
    void* plain = __real_malloc(bytes + align + sizeof plain);
    if (plain == nullptr) {
        return nullptr;
    }
    const auto start = reinterpret_cast<std::uintptr_t>(plain) + sizeof plain;
    auto* cut = reinterpret_cast<void**>((start + align - 1) / align * align);
    cut[-1] = plain;
    return cut;
}

void free_aligned(void* memory) {
    if (memory != nullptr) {
        std::free(static_cast<void**>(memory)[-1]);
    }
}

void* or_abort(void* memory) {
    if (memory == nullptr) {
        std::abort();
    }
    return memory;
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

// The whole family is replaced, so that every release finds the allocation it matches.
// NOLINTBEGIN(misc-new-delete-overloads)
using Align = std::align_val_t;
using NoThrow = std::nothrow_t;

void* operator new(std::size_t n) {
    return or_abort(__real_malloc(n));
}
void* operator new[](std::size_t n) {
    return or_abort(__real_malloc(n));
}
void* operator new(std::size_t n, Align a) {
    return or_abort(aligned(n, a));
}
void* operator new[](std::size_t n, Align a) {
    return or_abort(aligned(n, a));
}

void* operator new(std::size_t n, const NoThrow&) noexcept {
    return granted() ? __real_malloc(n) : nullptr;
}
void* operator new[](std::size_t n, const NoThrow&) noexcept {
    return granted() ? __real_malloc(n) : nullptr;
}
void* operator new(std::size_t n, Align a, const NoThrow&) noexcept {
    return granted() ? aligned(n, a) : nullptr;
}
void* operator new[](std::size_t n, Align a, const NoThrow&) noexcept {
    return granted() ? aligned(n, a) : nullptr;
}

void operator delete(void* p) noexcept {
    std::free(p);
}
void operator delete[](void* p) noexcept {
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    std::free(p);
}
void operator delete(void* p, const NoThrow&) noexcept {
    std::free(p);
}
void operator delete[](void* p, const NoThrow&) noexcept {
    std::free(p);
}
void operator delete(void* p, Align) noexcept {
    free_aligned(p);
}
void operator delete[](void* p, Align) noexcept {
    free_aligned(p);
}
void operator delete(void* p, std::size_t, Align) noexcept {
    free_aligned(p);
}
void operator delete[](void* p, std::size_t, Align) noexcept {
    free_aligned(p);
}
void operator delete(void* p, Align, const NoThrow&) noexcept {
    free_aligned(p);
}
void operator delete[](void* p, Align, const NoThrow&) noexcept {
    free_aligned(p);
}
// NOLINTEND(misc-new-delete-overloads)
