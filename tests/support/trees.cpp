#include "tests/support/trees.h"

#include "model/parse.h"
#include "model/walk.h"

namespace pelmora_test {

using namespace pelmora;
using Cell = const ExprNode* const*;

ExprTree tree_of(const std::string& text) {
    return ExprTree(parse_expr(text.c_str()));
}

std::string line_of(const ExprNode* root) {
    if (root == nullptr) {
        return "none";
    }
    std::string line;
    expr_walk(
        Cell{&root},
        [&](Cell cell, const WalkPlace& at) {
            line += at.depth == 0 ? "( " : " ( ";
            line += op_name((*cell)->op);
            return Walk::on;
        },
        [&](Cell, const WalkPlace&) {
            line += " )";
            return Walk::on;
        });
    return line;
}

bool links_hold(const ExprNode* root) {
    return expr_walk_preorder(root, [](const ExprNode* node) {
        bool good = node->op != NO_OP && node->kind == op_kind(node->op) && node->count >= 0 &&
                    (node->kind == FUNCTION || (node->count == 0 && node->children == nullptr));
        for (int i = 0; good && i < node->count; ++i) {
            good = node->children[i]->slot == node->children + i;
        }
        return good;
    });
}

} // namespace pelmora_test
