// The reader of turtle program files.
#include "files/turtle_file.h"
#include "tests/fuzz/fuzzed.h"

using namespace pelmora_fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const pelmora::ExprTree tree(pelmora::parse_turtle_file_text(text_of(data, size).get()));
    if (tree != nullptr) {
        require_round_trip(tree.get());
    }
    return 0;
}
