// A folder that cannot be written, where users and their rights are as POSIX has them.
#pragma once

#include "tests/files/folder.h"

#include <cstdlib>

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

} // namespace pelmora_test
