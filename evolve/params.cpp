#include "evolve/params.h"

#include <algorithm>

namespace pelmora {

EvolveParams newPopParams;

std::int32_t params_population_size(std::int32_t requested) {
    // Clamped first: INT32_MAX cannot be rounded up to an even number.
    const std::int32_t size = std::clamp(requested, kMinPopulation, kMaxPopulation);
    return size + size % 2;
}

std::int32_t params_max_depth(std::int32_t requested) {
    return std::max(requested, 1);
}

std::int32_t params_max_child(std::int32_t requested) {
    return std::min(requested, kMaxGrownChildren);
}

void params_list(const EvolveParams& params, std::FILE* log) {
    std::fprintf(log, "PCROSS    = %lf\n", params.PCROSS);
    std::fprintf(log, "PCOLOR    = %lf\n", params.PCOLOR);
    std::fprintf(log, "PMUTATE   = %lf\n", params.PMUTATE);
    std::fprintf(log, "PFNODE    = %lf\n", params.PFNODE);
    std::fprintf(log, "MAX_CHILD = %d\n", params.MAX_CHILD);
    std::fprintf(log, "MAX_DEPTH = %d\n", params.MAX_DEPTH);
    std::fprintf(log, "FWDMULT   = %lf\n", params.FWDMULT);
    std::fprintf(log, "TURNMULT   = %lf\n", params.TURNMULT);
    std::fprintf(log, "LOOPMULT   = %lf\n", params.LOOPMULT);
    std::fprintf(log, "CLRMULT   = %lf\n", params.CLRMULT);
    std::fprintf(log, "RPTMULT   = %lf\n", params.RPTMULT);
    std::fprintf(log, "REPMULT   = %lf\n", params.REPMULT);
}

} // namespace pelmora
