// Auto-repeat of held keys.
#pragma once

namespace pelmora {

// Removes the queued auto-repeat presses up to the first separate press, so that a command that
// takes longer than the repeat interval stops when the key is released. Separate presses and what
// is queued after them stay.
void DropRepeatedPresses();

} // namespace pelmora
