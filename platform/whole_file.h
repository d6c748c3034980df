// Files, as far as standard C++ does not say what the system can do.
#pragma once

#include <cstdio>
#include <memory>
#include <string>

namespace platform {

// The file that takes everything and keeps nothing.
extern const char kNullDevice[];

// A file that is written as a whole: the old content goes only when the new is complete. The new
// file is made beside the old one under a hidden name, and takes its place and its permissions in
// commit(). Links are followed.
//
// The target is written in place where a new file can never be made beside it or take its place: a
// device, a pipe, a folder that cannot be written, a file that others hold for long. That there is
// no room is never a reason to, as it would only destroy the old file.
//
// A process that was killed may leave a hidden file behind. The next one that is made in that
// folder removes it, and leaves alone those that others are writing.
class WholeFile {
  public:
    // Opens `path` (UTF-8) and changes nothing that is there. An old file that may not be written
    // is refused, and so is a pipe that nobody reads.
    explicit WholeFile(const std::string& path);
    // Without a commit() before, the old file stands as it was, unless something was written to it
    // in place.
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    // Where to write, in binary mode; null when `path` cannot be written. Errors stay in the
    // stream, for commit() to find.
    [[nodiscard]] std::FILE* stream() const;

    // Completes the file, once. 0, or the error (of errno) why not everything could be written; the
    // old file is then lost only if it had to be written in place. Without a stream: 0 when `path`
    // may not be written at all, an error when it may but there was no room for the new file.
    [[nodiscard]] int commit();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace platform
