#include "tests/support/trees.h"

#include "model/parse.h"
#include "model/walk.h"

namespace pelmora_test {

using namespace pelmora;
using Cell = const ExprNode* const*;

std::string times(int n, const std::string& text) {
    std::string all;
    for (int i = 0; i < n; ++i) {
        all += text;
    }
    return all;
}

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

std::string written(const std::function<void(const ExprNode*, std::FILE*)>& write,
                    const ExprNode* root) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
    write(root, file.get());
    std::string text(static_cast<std::size_t>(std::ftell(file.get())), '\0');
    std::rewind(file.get());
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    return text;
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
