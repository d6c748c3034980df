// The two log files in the working directory.
#pragma once

namespace pelmora {

// Sends standard error to "stderr.txt" and standard output to "stdout.txt", both emptied first and
// opened with the banner line. What goes to a file that cannot be opened is lost; nothing is
// reported.
void OpenLogFiles();

} // namespace pelmora
