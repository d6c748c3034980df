// Keys that are held down.
#pragma once

namespace pelmora {

// Drops the presses that a held key has sent and that still wait, so that a command that takes
// longer than the key's repeat does not go on after the key was let go. Separate presses stay, and
// so does what comes behind them.
void DropHeldPresses();

} // namespace pelmora
