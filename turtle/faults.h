// The lines about faulty nodes on the error log.
#pragma once

#include "turtle/outline.h"

#include <cstdint>

namespace pelmora {

// A run may come by a faulty node very often, steps or no steps; its log ends here.
inline constexpr int kMostFaultLines = 10240;

// Writes every line that is due in a run that starts with `pen` and stops after `budget` steps, in
// order, up to kMostFaultLines.
void faults_report(const Outline& outline, PenState pen, std::int64_t budget);

} // namespace pelmora
