// Memory of this process.
#pragma once

#include "model/expr.h"

#include <fstream>

#include <unistd.h>

namespace pelmora_bench {

// Bytes that are in memory now.
inline double resident_bytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    file >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

// What the nodes that are alive take, with the cells that hold all of them but the roots.
inline double live_bytes(double roots) {
    const auto nodes = static_cast<double>(pelmora::expr_live().nodes);
    return nodes * sizeof(pelmora::ExprNode) + (nodes - roots) * sizeof(pelmora::ExprNode*);
}

} // namespace pelmora_bench
