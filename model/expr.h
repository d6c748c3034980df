// Turtle programs as trees: nodes, their allocation, copies, walks, counts and picks.
//
// Nothing here is recursive: a program may be nested a million levels deep.
#pragma once

#include "model/node.h"

#include <memory>

namespace pelmora {

// A new node of `kind`, every other field zero or null. Memory exhaustion is fatal: "fatal - out of
// memory" on the error log and exit status 2.
ExprNode* expr_new_node(NodeKind kind);

// A new array of `n` (0 or more) null pointers, to be stored in a node's `children`. Memory
// exhaustion is fatal: "fatal - allocating %d children" and exit status 2.
ExprNode** expr_new_children(int n);

// A new node with the same kind, op and count, without children and slot.
ExprNode* expr_copy_node(const ExprNode* node);

// Nodes of both kinds, and function nodes among them.
struct ExprCounts {
    int nodes;
    int functions;
};

// A deep copy; its root's slot is null, for the caller to set. `counts`, when given, receives its
// counts at no extra cost.
ExprNode* expr_copy_tree(const ExprNode* root, ExprCounts* counts = nullptr);

// Releases the node and its children array, not the children. Null is allowed. Returns true.
bool expr_free_node(ExprNode* node);

// Releases the whole tree. Null is allowed. Needs no memory.
void expr_free_tree(ExprNode* root);

// The number of nodes of both kinds; of function nodes.
int expr_count_nodes(const ExprNode* root);
int expr_count_functions(const ExprNode* root);

// The node at position n, counted from 0, of the pre-order sequence; the last node when there are
// fewer.
ExprNode* expr_nth_node(ExprNode* root, int n);

// The function node at position n among the function nodes of the pre-order sequence; the last node
// of the whole sequence, maybe a terminal, when there are fewer.
ExprNode* expr_nth_function(ExprNode* root, int n);

// Stores `tree` in `cell` and makes that cell its slot. The cell's old content is not released.
// A null tree empties the cell.
void expr_place(ExprNode** cell, ExprNode* tree);

// What is allocated and not yet released, over all trees.
ExprLive expr_live();

// Owner of a whole tree that no record owns yet.
struct ExprTreeRelease {
    void operator()(ExprNode* root) const { expr_free_tree(root); }
};
using ExprTree = std::unique_ptr<ExprNode, ExprTreeRelease>;

} // namespace pelmora
