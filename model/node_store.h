// The memory of nodes and children arrays.
//
// Bump allocation in slabs of 512 KiB: a slab counts what is live in it and is freed when that
// count is zero. This suits evolution, which copies and releases whole generations, and siblings
// come to lie side by side. The price: one node that lives keeps the whole slab of 512 KiB.
//
// Freed slabs are kept for the next generation: with fresh memory from the system a lifer of 32,766
// costs 2.5 times one of 1,000, with kept slabs 1.2 times. At most as many are kept as are in use,
// and 32 more. The price: the store holds up to twice what is in use, and 16 MiB. So a closed
// window's memory stays while as much is in use in others.
//
// Sanitizer builds (PELMORA_SANITIZE) allocate every node and array singly, so that the sanitizers
// see each of them.
#pragma once

#include "model/node.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace pelmora {

// Memory for one node, not initialised; null when there is none.
void* node_store_new_node();

// Memory for an array of `n` (0 or more) pointers, not initialised and never null for want of
// elements; null when there is no memory.
void* node_store_new_array(std::size_t n);

// Memory for `n` (1 or more) nodes, not initialised, and an array that points to them; null when
// there is no memory. Side by side where the store can, as siblings are visited one after the
// other.
inline ExprNode** node_store_new_siblings(std::size_t n);

namespace node_store_detail {

inline constinit ExprLive live{0, 0};

// Siblings that are not side by side, or that are too many for the slab at hand.
ExprNode** new_siblings_apart(std::size_t n);

} // namespace node_store_detail

// Frees memory. What lies in one slab is counted first and subtracted from the slab's count at
// once, at the latest when this ends.
class NodeReturn {
  public:
    NodeReturn() = default;
    ~NodeReturn() { flush(); }
    NodeReturn(const NodeReturn&) = delete;
    NodeReturn& operator=(const NodeReturn&) = delete;

    // What the calls above returned; never null.
    void node(ExprNode* node) { node_if(node, true); }
    void node_if(ExprNode* node, bool given) { nodes_ += give(node, given); }
    void array(ExprNode** children) { arrays_ += give(children, true); }

  private:
    std::size_t give(void* memory, bool given);
    void flush();

    std::uintptr_t slab_ = 0;
    std::size_t nodes_ = 0;
    std::size_t arrays_ = 0;
};

#ifdef PELMORA_SANITIZE

inline std::size_t NodeReturn::give(void* memory, bool given) {
    if (given) {
        ::operator delete(memory);
    }
    return given ? 1 : 0;
}

inline ExprNode** node_store_new_siblings(std::size_t n) {
    return node_store_detail::new_siblings_apart(n);
}

#else

// Slabs are aligned to this, so that the slab of a node is found by masking its address. A page of
// the heap's own lies before each, so smaller ones take more memory.
inline constexpr std::size_t kSlabSpan = std::size_t{512} * 1024;

namespace node_store_detail {

// The start of every slab; the memory that is handed out follows.
struct Slab {
    std::size_t live; // nodes and arrays handed out and not given back
    bool own;         // made for one array alone
    Slab* next;       // while it is spare
};

// The slab that is handed out now, and its free part.
struct SlabAtHand {
    Slab* slab;
    char* cursor;
    char* limit;
};
inline constinit SlabAtHand at_hand{nullptr, nullptr, nullptr};

// What each sibling takes: itself and its element of the array.
inline constexpr std::size_t kSiblingBytes = sizeof(ExprNode) + sizeof(void*);

} // namespace node_store_detail

// Here, as a call would cost copying a tenth of its time.
inline ExprNode** node_store_new_siblings(std::size_t n) {
    using namespace node_store_detail;
    const std::size_t bytes = n * kSiblingBytes;
    if (bytes > static_cast<std::size_t>(at_hand.limit - at_hand.cursor)) {
        return new_siblings_apart(n);
    }
    auto** children = reinterpret_cast<ExprNode**>(at_hand.cursor);
    auto* nodes = reinterpret_cast<ExprNode*>(children + n);
    for (std::size_t i = 0; i < n; ++i) {
        children[i] = nodes + i;
    }
    at_hand.cursor += bytes;
    at_hand.slab->live += n + 1; // the array is one, too
    live.nodes += n;
    ++live.arrays;
    return children;
}

inline std::size_t NodeReturn::give(void* memory, bool given) {
    const auto slab = reinterpret_cast<std::uintptr_t>(memory) & ~std::uintptr_t{kSlabSpan - 1};
    if (slab != slab_) {
        flush();
        slab_ = slab;
    }
    return given ? 1 : 0;
}

#endif

} // namespace pelmora
