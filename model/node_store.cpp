#include "model/node_store.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

namespace pelmora {
namespace {

constinit ExprLive live{0, 0};

#ifdef PELMORA_SANITIZE

void* take(std::size_t bytes) {
    return ::operator new(bytes, std::nothrow);
}

void give_back(void* memory) {
    ::operator delete(memory);
}

#else

// The start of every slab; the memory that is handed out follows.
struct Slab {
    std::size_t live; // nodes and arrays handed out and not given back
    bool own;         // made for one array alone
    Slab* next;       // while it is spare
};

// Slabs are aligned to this, so that the slab of a node is found by masking its address.
constexpr std::size_t kSlabSpan = std::size_t{256} * 1024;
// A little short of the span: the heap's own bookkeeping then fits between two slabs, and they
// pack without a gap.
constexpr std::size_t kSlabBytes = kSlabSpan - 64;
// A larger array that does not fit into the slab at hand gets one of its own, so that little of
// the one at hand is wasted.
constexpr std::size_t kLargestShared = kSlabSpan / 8;
// 16 MiB of empty slabs are kept for the next generation: memory fresh from the system costs more
// than everything else in a copy.
constexpr std::size_t kMaxSpares = 64;
constexpr auto kSlabAlign = static_cast<std::align_val_t>(kSlabSpan);

static_assert(sizeof(Slab) % alignof(ExprNode) == 0 && sizeof(ExprNode) % sizeof(void*) == 0);

constinit Slab* current = nullptr; // the one that is bumped
constinit Slab* spare = nullptr;   // the first of the empty ones kept
constinit std::size_t spares = 0;
constinit char* cursor = nullptr; // the free part of the current slab
constinit char* limit = nullptr;

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
    current = slab;
    cursor = first_byte(slab);
    limit = reinterpret_cast<char*>(slab) + kSlabBytes;
    return true;
}

void* take(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(limit - cursor)) {
        if (bytes > kLargestShared) {
            return take_own(bytes);
        }
        if (!next_slab()) {
            return nullptr;
        }
    }
    void* memory = cursor;
    cursor += bytes;
    ++current->live;
    return memory;
}

void release(Slab* slab) {
    if (slab == current) {
        cursor = first_byte(slab);
    } else if (spares < kMaxSpares && !slab->own) {
        slab->next = std::exchange(spare, slab);
        ++spares;
    } else {
        ::operator delete(slab, kSlabAlign);
    }
}

void give_back(void* memory) {
    auto* slab = reinterpret_cast<Slab*>(reinterpret_cast<std::uintptr_t>(memory) &
                                         ~std::uintptr_t{kSlabSpan - 1});
    if (--slab->live == 0) {
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

void node_store_free_node(ExprNode* node) {
    --live.nodes;
    give_back(node);
}

void node_store_free_array(ExprNode** children) {
    --live.arrays;
    give_back(children);
}

ExprLive expr_live() {
    return live;
}

} // namespace pelmora
