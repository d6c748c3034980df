// The text files that the program writes.
#pragma once

#include "platform/whole_file.h"

#include <cstdio>
#include <string>

namespace pelmora {

// The end of a line in every file that the program writes, on every system: its streams are binary.
inline constexpr char kFileLineEnd[] = "\r\n";

// The first line of turtle and population files, which readers skip.
inline constexpr int kFileVersion = 1;

// Reports on the error log that a file could not be written.
void log_failed_save(const std::string& path, int error);

// A file replaced as a whole. Failures are reported on the error log, unless `path` may not be
// written at all.
class SavedFile {
  public:
    explicit SavedFile(const std::string& path);

    // The stream to write to; null when the file cannot be opened.
    [[nodiscard]] std::FILE* stream() const { return file_.stream(); }

    // Completes the file. False when something could not be written.
    [[nodiscard]] bool commit();

  private:
    std::string path_;
    platform::WholeFile file_;
};

} // namespace pelmora
