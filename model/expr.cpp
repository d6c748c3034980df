#include "model/expr.h"

#include "model/fatal.h"
#include "model/node_store.h"
#include "model/walk.h"

#include <algorithm>
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

// A copy of the node whose children are, for the time being, those of the original.
ExprNode* copy_with_children(const ExprNode* node) {
    ExprNode* copy = expr_copy_node(node);
    if (node->count > 0) {
        copy->children = new_array(node->count);
        std::copy_n(node->children, node->count, copy->children);
    }
    return copy;
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

// The copy's arrays hold the original's children until the walk reaches them, so that one pass in
// pre-order both reads the original and builds the copy, and neighbours stay neighbours.
ExprNode* expr_copy_tree(const ExprNode* root) {
    ExprNode* copy = copy_with_children(root);
    expr_walk(
        &copy,
        [](ExprNode** cell, const WalkPlace& at) {
            if (at.parent != nullptr) {
                *cell = copy_with_children(*cell);
                (*cell)->slot = cell;
            }
            return Walk::on;
        },
        [](ExprNode**, const WalkPlace&) { return Walk::on; });
    return copy;
}

bool expr_free_node(ExprNode* node) {
    if (node != nullptr) {
        if (node->children != nullptr) {
            node_store_free_array(node->children);
        }
        node_store_free_node(node);
    }
    return true;
}

// Post-order from the last child to the first. The way back up needs no stack: the cell that held
// the child being released holds its grandparent meanwhile, and `count` says how many are left.
void expr_free_tree(ExprNode* root) {
    ExprNode* node = root;
    ExprNode* parent = nullptr;
    while (node != nullptr) {
        while (node->count > 0) {
            ExprNode*& last = node->children[node->count - 1];
            if (last->count > 0) {
                parent = std::exchange(node, std::exchange(last, parent));
            } else {
                expr_free_node(last);
                --node->count;
            }
        }
        expr_free_node(node);
        node = parent;
        if (node != nullptr) {
            --node->count;
            parent = node->children[node->count];
        }
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
