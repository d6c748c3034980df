// File operations that standard C++ does not offer.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace platform {

// The path of the null device.
extern const char kNullDevice[];

// Replaces a file atomically: the old content stays until the new one is complete. The new content
// is written to a hidden temporary file in the same folder. commit() gives that file the old one's
// permissions and renames it over the old one. Links are followed.
//
// The target is written in place where a temporary file cannot be created or renamed: a device, a
// pipe, a folder without write permission, a file that another process keeps open. A full disk is
// never a reason to write in place, as that would destroy the old file.
//
// A killed process may leave its temporary file behind. The next WholeFile in that folder removes
// it; temporary files that are still being written are kept.
class WholeFile {
  public:
    // Opens `path` (UTF-8) without changing an existing file. Refuses an existing file without
    // write permission and a pipe without a reader.
    explicit WholeFile(const std::string& path);
    // Without commit() the old file is unchanged, unless it was written in place.
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    // The stream to write to, in binary mode; null when `path` cannot be written. Write errors stay
    // in the stream; commit() reports them.
    [[nodiscard]] std::FILE* stream() const;

    // Flushes and replaces the file; called once. Returns 0, or an errno value when not everything
    // could be written; the old file is then lost only if it was written in place. Without a
    // stream: 0 when `path` is not writable at all, an error when it is but the disk had no space.
    [[nodiscard]] int commit();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace platform
