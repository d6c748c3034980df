// The memory of nodes and children arrays.
//
// Evolution copies whole generations and releases whole generations, so memory is bumped out of
// slabs: a slab counts what lives in it and goes back whole when the count reaches zero. What was
// made together lies together. A slab in use by one small tree stays whole for it; that is the
// price. Sanitizer builds (PELMORA_SANITIZE) allocate every node and array singly, so that the
// sanitizers see each of them.
#pragma once

#include "model/expr.h"

#include <cstddef>

namespace pelmora {

// Memory for one node, not initialised; null when there is none.
void* node_store_new_node();

// Memory for an array of `n` (0 or more) pointers, not initialised and never null for want of
// elements; null when there is no memory.
void* node_store_new_array(std::size_t n);

// Give back what the calls above returned; never null.
void node_store_free_node(ExprNode* node);
void node_store_free_array(ExprNode** children);

} // namespace pelmora
