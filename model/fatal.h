// Ends the program when it cannot allocate memory for its data.
#pragma once

namespace pelmora {

// Ends the process with exit status 2, after the caller wrote its "fatal - " line. Open files are
// flushed.
[[noreturn]] void fatal_exit();

// Writes "fatal - out of memory" on the error log and ends the process with exit status 2.
[[noreturn]] void fatal_out_of_memory();

} // namespace pelmora
