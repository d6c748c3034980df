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

// Says on the error log that a file could not be written.
void log_failed_save(const std::string& path, int error);

// A whole file whose failure is a line on the error log, unless `path` could not be opened at all.
class SavedFile {
  public:
    explicit SavedFile(const std::string& path);

    // Where to write; null when there is nothing to write to.
    [[nodiscard]] std::FILE* stream() const { return file_.stream(); }

    // Completes the file. False when something could not be written.
    [[nodiscard]] bool commit();

  private:
    std::string path_;
    platform::WholeFile file_;
};

} // namespace pelmora
