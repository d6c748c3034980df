// The two log files in the working directory.
#pragma once

namespace pelmora {

// Sends standard error to "stderr.txt" and standard output to "stdout.txt", both truncated and
// started with the banner line. Output to a file that cannot be opened is lost without a report.
void OpenLogFiles();

} // namespace pelmora
