// Memory that runs out when a test says so.
#pragma once

#include <cstddef>

namespace pelmora_test {

// While one lives, the allocations of the program that can report failure (the nothrow forms of
// operator new, malloc, realloc) succeed `good` times and fail from then on. The throwing forms
// always succeed: the test framework lives on them. Not to be nested.
class FailingNew {
  public:
    explicit FailingNew(std::size_t good);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;
};

} // namespace pelmora_test
