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

ExprNode** take_brothers(std::size_t /*n*/) {
    return nullptr;
}

void give_back(std::uintptr_t /*slab*/, std::size_t /*count*/) {}

#else

// The start of every slab; the memory that is handed out follows.
struct Slab {
    std::size_t live; // nodes and arrays handed out and not given back
    bool own;         // made for one array alone
    Slab* next;       // while it is spare
};

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

// Null when they do not fit into the slab at hand or one like it.
ExprNode** take_brothers(std::size_t n) {
    const std::size_t bytes = n * (sizeof(ExprNode) + sizeof(ExprNode*));
    if (bytes > kLargestShared) {
        return nullptr;
    }
    auto** children = static_cast<ExprNode**>(take(bytes));
    if (children != nullptr) {
        current->live += n; // beside the one for the array
        auto* nodes = reinterpret_cast<ExprNode*>(children + n);
        for (std::size_t i = 0; i < n; ++i) {
            children[i] = nodes + i;
        }
    }
    return children;
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

ExprNode** node_store_new_brothers(std::size_t n) {
    ExprNode** children = take_brothers(n);
    if (children != nullptr) {
        live.nodes += n;
        ++live.arrays;
        return children;
    }
    children = static_cast<ExprNode**>(node_store_new_array(n));
    for (std::size_t i = 0; children != nullptr && i < n; ++i) {
        children[i] = static_cast<ExprNode*>(node_store_new_node());
        if (children[i] == nullptr) {
            return nullptr; // the end of the program
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
