// The stack of a loop that replaces recursion.
#pragma once

#include "model/fatal.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <type_traits>

namespace pelmora {

// A stack of plain values. The first `kInline` live in the object, so ordinary work allocates
// nothing; beyond them it grows on the heap, and growth that fails is fatal ("fatal - out of
// memory", exit status 2). Not copyable. Taking from an empty stack is undefined.
template <class T, std::size_t kInline = 64>
class WorkStack {
    static_assert(std::is_trivial_v<T>);

  public:
    WorkStack() = default;
    WorkStack(const WorkStack&) = delete;
    WorkStack& operator=(const WorkStack&) = delete;
    ~WorkStack() { release(); }

    [[nodiscard]] bool empty() const { return size_ == 0; }
    [[nodiscard]] std::size_t size() const { return size_; }
    T& top() { return data_[size_ - 1]; }
    [[nodiscard]] const T& top() const { return data_[size_ - 1]; }

    // The value at `index`, counted from the bottom. Growth moves the values.
    T* at(std::size_t index) { return data_ + index; }
    [[nodiscard]] const T* at(std::size_t index) const { return data_ + index; }

    void push(const T& value) {
        if (size_ == capacity_) {
            const T safe = value; // may live in the memory that growth releases
            grow(size_ + 1);
            data_[size_++] = safe;
            return;
        }
        data_[size_++] = value;
    }

    T pop() { return data_[--size_]; }

    // room() reserves `n` values above the top for the caller to write. take() pushes the first `n`
    // of them. Together they push conditionally without a branch.
    T* room(std::size_t n) {
        if (capacity_ - size_ < n) {
            grow(size_ + n);
        }
        return data_ + size_;
    }
    void take(std::size_t n) { size_ += n; }

    // Drops every value from `size` on.
    void shrink(std::size_t size) { size_ = size; }

  private:
    void grow(std::size_t least) {
        const std::size_t capacity = std::max(capacity_ * 2, least);
        T* data = new (std::nothrow) T[capacity];
        if (data == nullptr) {
            fatal_out_of_memory();
        }
        std::copy_n(data_, size_, data);
        release();
        data_ = data;
        capacity_ = capacity;
    }

    void release() {
        if (data_ != inline_) {
            delete[] data_;
        }
    }

    std::size_t size_ = 0;
    std::size_t capacity_ = kInline;
    T* data_ = inline_;
    T inline_[kInline];
};

} // namespace pelmora
