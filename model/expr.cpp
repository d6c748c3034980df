#include "model/expr.h"

#include "model/fatal.h"
#include "model/node_store.h"
#include "model/walk.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <new>
#include <utility>

namespace pelmora {
namespace {

ExprNode* new_node(const ExprNode& value) {
    void* memory = node_store_new_node();
    if (memory == nullptr) {
        fatal_out_of_memory();
    }
    return new (memory) ExprNode(value);
}

// `n` elements without values.
ExprNode** new_array(int n) {
    void* memory = node_store_new_array(static_cast<std::size_t>(n));
    if (memory == nullptr) {
        std::fprintf(stderr, "fatal - allocating %d children\n", n);
        fatal_exit();
    }
    return static_cast<ExprNode**>(memory);
}

// `n` nodes without values and the array that points to them.
ExprNode** new_siblings(int n) {
    ExprNode** children = node_store_new_siblings(static_cast<std::size_t>(n));
    if (children == nullptr) {
        fatal_out_of_memory();
    }
    return children;
}

void free_node(ExprNode* node, NodeReturn& store) {
    if (node->children != nullptr) {
        store.array(node->children);
    }
    store.node(node);
}

} // namespace

ExprNode* expr_new_node(NodeKind kind) {
    return new_node({kind, NO_OP, 0, nullptr, nullptr});
}

ExprNode** expr_new_children(int n) {
    ExprNode** children = new_array(n);
    std::fill_n(children, n, nullptr);
    return children;
}

ExprNode* expr_copy_node(const ExprNode* node) {
    return new_node({node->kind, node->op, node->count, nullptr, nullptr});
}

// Whether the next node is a leaf is unpredictable, and a mispredicted branch costs more than the
// rest of a node's copy or release. So both loops do without that branch. Both visit families in
// the same order and so read memory sequentially. They prefetch it, because the hardware prefetcher
// stops at the end of a page.
constexpr std::uintptr_t kAhead = 2048;

// Any address is allowed, mapped or not.
void prefetch_after(const void* memory) {
    __builtin_prefetch(
        reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(memory) + kAhead));
}

ExprNode* expr_copy_tree(const ExprNode* root, ExprCounts* counts) {
    struct Family {
        const ExprNode* from;
        ExprNode* copy;
    };
    WorkStack<Family> open;
    ExprNode* copy = expr_copy_node(root);
    ExprCounts sum{1, root->kind == FUNCTION ? 1 : 0};
    if (root->count > 0) {
        open.push({root, copy});
    }
    while (!open.empty()) {
        const Family family = open.pop();
        const int count = family.from->count;
        prefetch_after(family.from->children);
        ExprNode** children = new_siblings(count);
        family.copy->children = children;
        Family* room = open.room(static_cast<std::size_t>(count));
        std::size_t inner = 0;
        for (int i = 0; i < count; ++i) {
            const ExprNode* child = family.from->children[i];
            *children[i] = {child->kind, child->op, child->count, nullptr, &children[i]};
            room[inner] = {child, children[i]};
            inner += child->count > 0 ? 1 : 0;
            sum.functions += child->kind == FUNCTION ? 1 : 0;
        }
        sum.nodes += count;
        open.take(inner);
    }
    if (counts != nullptr) {
        *counts = sum;
    }
    return copy;
}

bool expr_free_node(ExprNode* node) {
    if (node != nullptr) {
        NodeReturn store;
        free_node(node, store);
    }
    return true;
}

// The nodes whose children are still to be released form a list that is linked through their slots.
void expr_free_tree(ExprNode* root) {
    NodeReturn store;
    if (root != nullptr) {
        root->slot = nullptr;
    }
    for (ExprNode* open = root; open != nullptr;) {
        ExprNode* node = open;
        open = reinterpret_cast<ExprNode*>(node->slot);
        const int count = node->children != nullptr ? node->count : 0;
        prefetch_after(node->children);
        for (int i = 0; i < count; ++i) {
            ExprNode* child = node->children[i];
            const bool leaf = child->children == nullptr;
            child->slot = reinterpret_cast<ExprNode**>(open);
            open = leaf ? open : child;
            store.node_if(child, leaf);
        }
        free_node(node, store);
    }
}

int expr_count_nodes(const ExprNode* root) {
    int count = 0;
    expr_walk_preorder(root, [&](const ExprNode*) {
        ++count;
        return true;
    });
    return count;
}

int expr_count_functions(const ExprNode* root) {
    int count = 0;
    expr_walk_preorder(root, [&](const ExprNode* node) {
        count += node->kind == FUNCTION ? 1 : 0;
        return true;
    });
    return count;
}

ExprNode* expr_nth_node(ExprNode* root, int n) {
    ExprNode* current = nullptr;
    int count = 0;
    expr_walk_preorder(root, [&](ExprNode* node) {
        current = node;
        return ++count <= n;
    });
    return current;
}

ExprNode* expr_nth_function(ExprNode* root, int n) {
    ExprNode* current = nullptr;
    int count = 0;
    expr_walk_preorder(root, [&](ExprNode* node) {
        current = node;
        return node->kind != FUNCTION || ++count <= n;
    });
    return current;
}

void expr_place(ExprNode** cell, ExprNode* tree) {
    *cell = tree;
    if (tree != nullptr) {
        tree->slot = cell;
    }
}

} // namespace pelmora
