#include "model/fatal.h"

#include <cstdio>
#include <cstdlib>

namespace pelmora {

void fatal_exit() {
    // No destructors: they would release trees and windows that are half built at this point.
    std::fflush(nullptr);
    std::_Exit(2);
}

void fatal_out_of_memory() {
    std::fprintf(stderr, "fatal - out of memory\n");
    fatal_exit();
}

} // namespace pelmora
