// A folder or a disk that cannot be written, where rights and limits are as POSIX has them.
#pragma once

#include "tests/files/folder.h"

#include <csignal>
#include <cstdlib>

#include <sys/resource.h>
#include <unistd.h>

namespace pelmora_test {

// Makes a folder one that cannot be written, also for a test that root runs.
class ReadOnly {
  public:
    explicit ReadOnly(const Folder& folder) : path_(folder.path()), user_(::geteuid()) {
        std::filesystem::permissions(path_, std::filesystem::perms(0555));
        constexpr uid_t kNobody = 65534;
        if (user_ == 0 && ::seteuid(kNobody) != 0) {
            std::abort();
        }
    }
    ~ReadOnly() {
        if (::seteuid(user_) != 0) {
            std::abort();
        }
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }
    ReadOnly(const ReadOnly&) = delete;
    ReadOnly& operator=(const ReadOnly&) = delete;

  private:
    std::filesystem::path path_;
    uid_t user_;
};

// While it lives, writing beyond so many bytes of a file fails, as on a full disk.
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
