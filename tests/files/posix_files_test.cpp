// Files on POSIX systems: links, pipes, devices, limits and permissions.
#include "files/loaded_text.h"
#include "tests/files/read_only.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace pelmora;
using namespace pelmora_test;
namespace fs = std::filesystem;

TEST(PosixFiles, PipesAndDevicesAreNotLoaded) {
    const Folder folder;
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(load_text(folder.path("pipe")).failure.find("Error "), 0U); // and does not block
    EXPECT_EQ(load_text("/dev/zero").failure.find("Error "), 0U);
    const std::string attribute = "/sys/devices/system/cpu/online"; // shorter than its size
    if (fs::exists(attribute)) {
        const std::string read = std::to_string(content_of(attribute).size());
        EXPECT_EQ(load_text(attribute).failure, "Error, read only " + read + " of 4096 bytes.");
    }
}

TEST(PosixFiles, FollowsLinks) {
    const Folder folder;
    fs::create_directory(folder.path("elsewhere"));
    write_file(folder.path("elsewhere/target"), "old");
    fs::create_symlink("elsewhere/target", folder.path("link"));
    fs::create_symlink("link", folder.path("link to link"));
    ASSERT_TRUE(save(folder.path("link to link"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder.path("link to link")));
    EXPECT_EQ(content_of(folder.path("elsewhere/target")), "new");
    fs::create_symlink("elsewhere/to come", folder.path("dangling"));
    ASSERT_TRUE(save(folder.path("dangling"), "made"));
    EXPECT_EQ(content_of(folder.path("elsewhere/to come")), "made");
    fs::create_symlink("loop", folder.path("loop"));
    EXPECT_FALSE(save(folder.path("loop"), "never"));
}

TEST(PosixFiles, WritesDevicesAndPipesInPlace) {
    const Folder folder;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(save("/dev/full", std::string(100000, 'x')));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log.find("ERROR SAVE FILE '/dev/full' = "), 0U) << log;
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_TRUE(save("/dev/null", "nowhere"));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(save(pipe, "nobody reads")); // and does not block
    std::string read;
    std::thread reader([&] { read = content_of(pipe); });
    while (!save(pipe, "a reader")) {
        std::this_thread::yield();
    }
    reader.join();
    EXPECT_EQ(read, "a reader");

    const int gone = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    SavedFile file(pipe);
    ::close(gone);
    std::fputs("nobody reads any more", file.stream());
    EXPECT_FALSE(file.commit());
}

TEST(PosixFiles, AFolderThatCannotBeWrittenKeepsItsFilesWritable) {
    const Folder folder;
    for (const char* name : {"open", "closed"}) {
        write_file(folder.path(name), "old content");
    }
    fs::permissions(folder.path("open"), fs::perms::all);
    fs::permissions(folder.path("closed"), fs::perms::owner_read | fs::perms::others_read);
    {
        const ReadOnly closed(folder);
        EXPECT_TRUE(save(folder.path("open"), "new"));
        EXPECT_FALSE(save(folder.path("closed"), "new"));
        EXPECT_FALSE(save(folder.path("another"), "new"));
    }
    EXPECT_EQ(content_of(folder.path("open")), "new");
    EXPECT_EQ(content_of(folder.path("closed")), "old content");
    EXPECT_EQ(folder.count(), 2);
}

TEST(PosixFiles, AFullDiskLeavesTheOldFile) {
    const Folder folder;
    const std::string path = folder.path("\"\\\t\xFF"); // names are bytes
    ASSERT_TRUE(save(path, "old"));
    testing::internal::CaptureStderr();
    {
        const FullDisk disk(10000);
        EXPECT_FALSE(save(path, std::string(20000, 'x'))); // at the first flush
        EXPECT_FALSE(save(path, std::string(10001, 'x'))); // at the end
    }
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2) << log;
    EXPECT_STREQ(load_text(path).text.get(), "old");
    EXPECT_EQ(folder.count(), 1);
}

TEST(PosixFiles, NoRoomForAnotherFileLeavesTheOldOne) {
    const Folder folder;
    const SmallDisk disk(folder.path(), 2);
    if (!disk.mounted()) {
        GTEST_SKIP() << "only root may mount a disk";
    }
    write_file(folder.path("old"), "old content");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(save(folder.path("old"), "new"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ERROR SAVE FILE '" + folder.path("old") + "' = 28\n");
    EXPECT_EQ(content_of(folder.path("old")), "old content");
    EXPECT_EQ(folder.count(), 1);
}

// In a sticky folder such as /tmp only the owner of a file may replace it.
TEST(PosixFiles, AFileThatMayNotBeReplacedIsWrittenInPlace) {
    const Folder folder;
    for (const char* name : {"shorter", "longer"}) {
        write_file(folder.path(name), "old content");
        fs::permissions(folder.path(name), fs::perms::all);
    }
    {
        fs::permissions(folder.path(), fs::perms::all | fs::perms::sticky_bit);
        const NotRoot user;
        EXPECT_TRUE(save(folder.path("shorter"), "new"));
        EXPECT_TRUE(save(folder.path("longer"), "newer than the old content"));
    }
    EXPECT_EQ(content_of(folder.path("shorter")), "new");
    EXPECT_EQ(content_of(folder.path("longer")), "newer than the old content");
    EXPECT_EQ(folder.count(), 2);
}

TEST(PosixFiles, TheNextSaveRemovesTheLeftoverOfAKilledOne) {
    const Folder folder;
    const std::string path = folder.path("file");
    write_file(path, "old content");
    const pid_t killed = ::fork();
    if (killed == 0) {
        const SavedFile file(path);
        std::fputs("half", file.stream());
        std::fflush(file.stream());
        ::kill(::getpid(), SIGKILL);
    }
    ::waitpid(killed, nullptr, 0);
    EXPECT_EQ(content_of(path), "old content");
    EXPECT_EQ(folder.count(), 2);
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        EXPECT_TRUE(entry.path() == path || entry.path().filename().native().front() == '.');
    }
    SavedFile of_another(path);
    EXPECT_EQ(folder.count(), 2); // the old file and that of the other
    EXPECT_TRUE(save(folder.path("beside"), "new"));
    EXPECT_TRUE(of_another.commit());
    EXPECT_EQ(folder.count(), 2);
}

} // namespace
