// The New Population command.
#pragma once

namespace pelmora {

// Asks for the parameters of a population and opens a window for it. The random stream is seeded
// here and nowhere else.
void NewPopulation();

} // namespace pelmora
