// What the fuzzed readers share.
#pragma once

#include "model/expr.h"
#include "model/parse.h"
#include "model/print.h"
#include "model/text.h"
#include "model/walk.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace pelmora_fuzz {

using Text = pelmora::OwnedText;

// The input with a zero appended, in a block of exactly that size, so that reading further is
// found.
inline Text text_of(const std::uint8_t* data, std::size_t size) {
    Text text(static_cast<char*>(std::malloc(size + 1)));
    std::memcpy(text.get(), data, size);
    text[size] = '\0';
    return text;
}

// Aborts, which the fuzzer reports as a finding.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// A block of 64 children is read only when its ")" follows them without a blank, which the program
// never writes; 63 is the most that it writes.
inline bool has_full_block(const pelmora::ExprNode* tree) {
    return !pelmora::expr_walk_preorder(
        tree, [](const pelmora::ExprNode* node) { return node->count < 64; });
}

// What was read can be written and is read back unchanged.
inline void require_round_trip(const pelmora::ExprNode* tree) {
    if (has_full_block(tree)) {
        return;
    }
    const Text written(pelmora::expr_to_text(tree));
    const pelmora::ExprTree again(pelmora::parse_expr(written.get()));
    require(again != nullptr);
    const Text written_again(pelmora::expr_to_text(again.get()));
    require(std::strcmp(written.get(), written_again.get()) == 0);
    require(pelmora::expr_count_nodes(tree) == pelmora::expr_count_nodes(again.get()));
}

} // namespace pelmora_fuzz
