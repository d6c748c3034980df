// What the fuzzed readers share.
#pragma once

#include "model/expr.h"
#include "model/parse.h"
#include "model/print.h"
#include "model/text.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

namespace pelmora_fuzz {

using Text = pelmora::OwnedText;

// The input with a zero behind it, in a block of just that size: reading further is found.
inline Text text_of(const std::uint8_t* data, std::size_t size) {
    Text text(static_cast<char*>(std::malloc(size + 1)));
    std::memcpy(text.get(), data, size);
    text[size] = '\0';
    return text;
}

// Ends the run as a finding.
inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

// Whatever was read can be written, and read back the same.
inline void require_round_trip(const pelmora::ExprNode* tree) {
    const Text written(pelmora::expr_to_text(tree));
    const pelmora::ExprTree again(pelmora::parse_expr(written.get()));
    require(again != nullptr);
    const Text written_again(pelmora::expr_to_text(again.get()));
    require(std::strcmp(written.get(), written_again.get()) == 0);
    require(pelmora::expr_count_nodes(tree) == pelmora::expr_count_nodes(again.get()));
}

} // namespace pelmora_fuzz
