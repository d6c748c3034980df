// Allocations that fail on request.
#pragma once

#include <cstddef>

namespace pelmora_test {

// During its lifetime the program's allocations that can report failure (nothrow operator new,
// malloc, realloc) succeed `good` times and then fail. The throwing forms always succeed, as the
// test framework uses them. Must not be nested.
class FailingNew {
  public:
    explicit FailingNew(std::size_t good);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;
};

} // namespace pelmora_test
