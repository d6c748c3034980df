// The reader of population files.
#include "files/population_file.h"
#include "tests/fuzz/fuzzed.h"

using namespace pelmora_fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr int kLifers = 5;
    const pelmora::EvolveParams params{kLifers, 2, 2, 0.8, 0.2, 0.5, 0.1, 1, 1, 1, 1, 1, 1};
    const pelmora::PopulationOwner pop(pelmora::pop_create(params));
    pelmora::lifer_set_program(&pop->lifers[0], pelmora::parse_expr("( FWD_1 )"));

    int replaced = 0;
    const int stored = pelmora::store_population_text(
        text_of(data, size).get(), pop.get(),
        [&](const pelmora::ExprNode* old) { replaced += pelmora::expr_count_nodes(old); });
    require(stored >= 0 && stored <= pop->size && replaced == (stored > 0 ? 1 : 0));
    for (int i = 0; i < pop->size; ++i) {
        const pelmora::Lifer& lifer = pop->lifers[i];
        require((lifer.program != nullptr) == (i < stored || i == 0));
        if (lifer.program != nullptr) {
            require(lifer.program->slot == &lifer.program);
            require_round_trip(lifer.program);
        }
    }
    return 0;
}
