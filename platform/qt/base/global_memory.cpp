#include "base/global_memory.h"

#include <cstddef>
#include <cstdlib>
#include <limits>

namespace platform {

namespace {

// The header of a block. All blocks are in a linked list, so that invalid handles are recognised
// without dereferencing them. There are never more than a few.
struct alignas(std::max_align_t) Block {
    Block* next;
    std::size_t size;
    unsigned locks;

    char* bytes() { return reinterpret_cast<char*>(this + 1); }
};

Block* first_block = nullptr;

// The pointer that refers to a block in the list, or the list's last pointer, which is null.
Block** link_to(HGLOBAL memory) {
    Block** link = &first_block;
    while (*link != nullptr && *link != memory) {
        link = &(*link)->next;
    }
    return link;
}

// The block of a handle, or null with the last error set.
Block* block_of(HGLOBAL memory) {
    Block* block = *link_to(memory);
    if (block == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return block;
}

} // namespace

std::span<char> global_bytes(HGLOBAL memory) {
    Block* block = block_of(memory);
    return block != nullptr ? std::span(block->bytes(), block->size) : std::span<char>();
}

} // namespace platform

using namespace platform;

HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes) {
    if (flags != GMEM_MOVEABLE || bytes > std::numeric_limits<SIZE_T>::max() - sizeof(Block)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto* block = static_cast<Block*>(std::malloc(sizeof(Block) + bytes));
    if (block == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    *block = {first_block, bytes, 0};
    first_block = block;
    return block;
}

HGLOBAL GlobalFree(HGLOBAL memory) {
    if (memory == nullptr || block_of(memory) == nullptr) {
        return memory;
    }
    Block** link = link_to(memory);
    Block* block = *link;
    *link = block->next;
    std::free(block);
    return nullptr;
}

LPVOID GlobalLock(HGLOBAL memory) {
    Block* block = block_of(memory);
    if (block == nullptr) {
        return nullptr;
    }
    ++block->locks;
    return block->bytes();
}

BOOL GlobalUnlock(HGLOBAL memory) {
    Block* block = block_of(memory);
    if (block == nullptr) {
        return FALSE;
    }
    block->locks -= block->locks > 0 ? 1 : 0;
    return block->locks > 0;
}
