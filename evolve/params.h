// The parameters of one population's evolution.
#pragma once

#include <cstdint>
#include <cstdio>

namespace pelmora {

// Bounds that keep populations loadable, drawable and finite.
inline constexpr std::int32_t kMinPopulation = 8;
inline constexpr std::int32_t kMaxPopulation = 32766; // the largest even 16-bit lifer count
inline constexpr std::int32_t kMaxGrownChildren = 63; // the most that the text form reads back

struct EvolveParams {
    std::int32_t size;      // lifers in a population, even
    std::int32_t MAX_DEPTH; // levels of a random program
    std::int32_t MAX_CHILD; // most children of a random BLOCK or REPEAT_2 to REPEAT_10
    // Probabilities, 0 to 1.
    double PCROSS;  // a pair of parents is crossed
    double PMUTATE; // a crossed pair gets a mutant subtree
    double PFNODE;  // a random node is a function; a cut point is chosen among functions only
    double PCOLOR;  // a random terminal changes the colour
    // Weights of the drawing score's terms, 0 to 1.
    double FWDMULT, TURNMULT, LOOPMULT, CLRMULT, RPTMULT, REPMULT;
};

// The parameters of the New Population command; zero until its dialog is first accepted.
extern EvolveParams newPopParams;

// The population size for the requested number: even, kMinPopulation to kMaxPopulation.
std::int32_t params_population_size(std::int32_t requested);

// The depth and child bounds for the requested numbers: 1 and more; kMaxGrownChildren and less.
std::int32_t params_max_depth(std::int32_t requested);
std::int32_t params_max_child(std::int32_t requested);

// Writes the listing of all parameters but the size: twelve lines.
void params_list(const EvolveParams& params, std::FILE* log);

} // namespace pelmora
