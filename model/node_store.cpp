#include "model/node_store.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

namespace pelmora {

using namespace node_store_detail;

namespace {

#ifdef PELMORA_SANITIZE

void* take(std::size_t bytes) {
    return ::operator new(bytes, std::nothrow);
}

bool renew_for_brothers(std::size_t /*n*/) {
    return false;
}

void give_back(std::uintptr_t /*slab*/, std::size_t /*count*/) {}

#else

// A little short of the span: with the heap's own bookkeeping it then still fits into a span.
constexpr std::size_t kSlabBytes = kSlabSpan - 64;
// A larger array that does not fit into the slab at hand gets one of its own, so that little of
// the one at hand is wasted.
constexpr std::size_t kLargestShared = kSlabSpan / 8;
// 16 MiB of empty slabs are kept for the next generation: memory fresh from the system costs more
// than everything else in a copy.
constexpr std::size_t kMaxSpares = 32;
constexpr auto kSlabAlign = static_cast<std::align_val_t>(kSlabSpan);

static_assert(sizeof(Slab) % alignof(ExprNode) == 0 && sizeof(ExprNode) % sizeof(void*) == 0);

constinit Slab* spare = nullptr; // the first of the empty ones kept
constinit std::size_t spares = 0;

Slab* new_slab(std::size_t bytes, bool own) {
    void* memory = ::operator new(bytes, kSlabAlign, std::nothrow);
    return memory == nullptr ? nullptr : new (memory) Slab{0, own, nullptr};
}

char* first_byte(Slab* slab) {
    return reinterpret_cast<char*>(slab + 1);
}

void* take_own(std::size_t bytes) {
    Slab* slab = new_slab(sizeof(Slab) + bytes, true);
    if (slab == nullptr) {
        return nullptr;
    }
    slab->live = 1;
    return first_byte(slab);
}

bool next_slab() {
    Slab* slab = spare;
    if (slab != nullptr) {
        spare = slab->next;
        --spares;
    } else {
        slab = new_slab(kSlabBytes, false);
    }
    if (slab == nullptr) {
        return false;
    }
    at_hand = {slab, first_byte(slab), reinterpret_cast<char*>(slab) + kSlabBytes};
    return true;
}

void* take(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(at_hand.limit - at_hand.cursor)) {
        if (bytes > kLargestShared) {
            return take_own(bytes);
        }
        if (!next_slab()) {
            return nullptr;
        }
    }
    void* memory = at_hand.cursor;
    at_hand.cursor += bytes;
    ++at_hand.slab->live;
    return memory;
}

void release(Slab* slab) {
    if (slab == at_hand.slab) {
        at_hand.cursor = first_byte(slab);
    } else if (spares < kMaxSpares && !slab->own) {
        slab->next = std::exchange(spare, slab);
        ++spares;
    } else {
        ::operator delete(slab, kSlabAlign);
    }
}

// Whether a fresh slab is at hand now, and they fit into it.
bool renew_for_brothers(std::size_t n) {
    return n * kBrotherBytes <= kLargestShared && next_slab();
}

void give_back(std::uintptr_t address, std::size_t count) {
    auto* slab = reinterpret_cast<Slab*>(address);
    slab->live -= count;
    if (slab->live == 0) {
        release(slab);
    }
}

#endif

} // namespace

void* node_store_new_node() {
    void* memory = take(sizeof(ExprNode));
    live.nodes += memory != nullptr ? 1 : 0;
    return memory;
}

void* node_store_new_array(std::size_t n) {
    void* memory = take(std::max<std::size_t>(n, 1) * sizeof(void*));
    live.arrays += memory != nullptr ? 1 : 0;
    return memory;
}

ExprNode** node_store_detail::new_brothers_apart(std::size_t n) {
    if (renew_for_brothers(n)) {
        return node_store_new_brothers(n);
    }
    auto** children = static_cast<ExprNode**>(node_store_new_array(n));
    for (std::size_t i = 0; children != nullptr && i < n; ++i) {
        children[i] = static_cast<ExprNode*>(node_store_new_node());
        if (children[i] == nullptr) {
            // The end of the program. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
            return nullptr;
        }
    }
    return children;
}

void NodeReturn::flush() {
    if (nodes_ + arrays_ != 0) {
        give_back(slab_, nodes_ + arrays_);
        live.nodes -= std::exchange(nodes_, 0);
        live.arrays -= std::exchange(arrays_, 0);
    }
}

ExprLive expr_live() {
    return live;
}

} // namespace pelmora
