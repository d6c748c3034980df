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

bool renew_for_siblings(std::size_t /*n*/) {
    return false;
}

void give_back(std::uintptr_t /*slab*/, std::size_t /*count*/) {}

#else

// A little short of the span: with the heap's own bookkeeping it then still fits into a span.
constexpr std::size_t kSlabBytes = kSlabSpan - 64;
// A larger array that does not fit into the slab at hand gets one of its own, so that little of
// the one at hand is wasted.
constexpr std::size_t kLargestShared = kSlabSpan / 8;
// Besides as many as are in use: 16 MiB.
constexpr std::size_t kFewestSpares = 32;
constexpr auto kSlabAlign = static_cast<std::align_val_t>(kSlabSpan);

static_assert(sizeof(Slab) % alignof(ExprNode) == 0 && sizeof(ExprNode) % sizeof(void*) == 0);

// Of the shared slabs: those in use, with the one at hand, and the free ones that are kept.
constinit std::size_t in_use = 0;
constinit std::size_t spares = 0;
constinit Slab* spare = nullptr; // the one freed last, which is the first to be used again

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

Slab* take_spare() {
    --spares;
    return std::exchange(spare, spare->next);
}

bool next_slab() {
    Slab* slab = spares != 0 ? take_spare() : new_slab(kSlabBytes, false);
    if (slab == nullptr) {
        return false;
    }
    ++in_use;
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

void delete_slab(Slab* slab) {
    ::operator delete(slab, kSlabAlign);
}

void release(Slab* slab) {
    if (slab->own) {
        delete_slab(slab);
        return;
    }
    if (slab == at_hand.slab) {
        at_hand.cursor = first_byte(slab);
        return;
    }
    slab->next = std::exchange(spare, slab);
    ++spares;
    --in_use;
    while (spares > in_use + kFewestSpares) {
        delete_slab(take_spare());
    }
}

// Whether a fresh slab is at hand now, and they fit into it.
bool renew_for_siblings(std::size_t n) {
    return n * kSiblingBytes <= kLargestShared && next_slab();
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

ExprNode** node_store_detail::new_siblings_apart(std::size_t n) {
    if (renew_for_siblings(n)) {
        return node_store_new_siblings(n);
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
