// Auto-repeat of held keys.
#pragma once

namespace pelmora {

// Removes the auto-repeat presses at the head of the message queue, so that a command that takes
// longer than the repeat interval stops when the key is released. Separate presses and what is
// queued after them stay.
void DropHeldPresses();

} // namespace pelmora
