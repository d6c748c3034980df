// The reader of turtle programs.
#include "tests/fuzz/fuzzed.h"

using namespace pelmora_fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const pelmora::ExprTree tree(pelmora::parse_expr(text_of(data, size).get()));
    if (tree != nullptr) {
        require_round_trip(tree.get());
    }
    return 0;
}
