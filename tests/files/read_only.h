// Folders and disks on POSIX systems that cannot be written.
#pragma once

#include "tests/files/folder.h"

#include <csignal>
#include <cstdlib>
#include <optional>

#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

namespace pelmora_test {

// Scope guard: gives a test that root runs the permissions of a user who owns nothing.
class NotRoot {
  public:
    NotRoot() : user_(::geteuid()) {
        constexpr uid_t kNobody = 65534;
        if (user_ == 0 && ::seteuid(kNobody) != 0) {
            std::abort();
        }
    }
    ~NotRoot() {
        if (::seteuid(user_) != 0) {
            std::abort();
        }
    }
    NotRoot(const NotRoot&) = delete;
    NotRoot& operator=(const NotRoot&) = delete;

  private:
    uid_t user_;
};

// Scope guard: makes a folder read-only, even for a test that root runs.
class ReadOnly {
  public:
    explicit ReadOnly(const Folder& folder) : path_(folder.path()) {
        std::filesystem::permissions(path_, std::filesystem::perms(0555));
        user_.emplace();
    }
    ~ReadOnly() {
        user_.reset();
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }
    ReadOnly(const ReadOnly&) = delete;
    ReadOnly& operator=(const ReadOnly&) = delete;

  private:
    std::filesystem::path path_;
    std::optional<NotRoot> user_;
};

// A mounted disk for `files` files, the folder itself included. Only root may mount one.
class SmallDisk {
  public:
    SmallDisk(const std::string& path, int files)
        : path_(path), mounted_(::mount("small", path.c_str(), "tmpfs", 0,
                                        ("nr_inodes=" + std::to_string(files)).c_str()) == 0) {}
    ~SmallDisk() {
        if (mounted_) {
            ::umount(path_.c_str());
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool mounted() const { return mounted_; }

  private:
    std::string path_;
    bool mounted_;
};

// Scope guard: writing a file beyond `bytes` fails, as on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &usual_);
        const rlimit small{bytes, usual_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &usual_);
        std::signal(SIGXFSZ, signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    void (*signal_)(int);
    rlimit usual_{};
};

} // namespace pelmora_test
