// Files as Windows has them: held by others, read-only, with the names of devices.
#include "files/loaded_text.h"
#include "platform/win32.h"
#include "tests/files/folder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

TEST(WindowsFiles, WhatOthersHoldOrProtectIsKept) {
    const Folder folder;
    const std::string path = folder.path("old");
    write_file(path, "old content");
    for (const DWORD shared : {0, FILE_SHARE_READ}) {
        HANDLE other = CreateFileA(path.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
        ASSERT_NE(other, INVALID_HANDLE_VALUE);
        EXPECT_FALSE(save(path, "new")) << shared;
        if (shared == 0) {
            EXPECT_EQ(load_text(path).failure, "Error 13 fopen-ing '" + path + "'.");
        }
        CloseHandle(other);
        EXPECT_EQ(content_of(path), "old content");
        EXPECT_EQ(folder.count(), 1);
    }
    // A reader that lets others write, as most do, only keeps the file's place.
    {
        std::ifstream reader(path);
        EXPECT_TRUE(save(path, "new"));
        EXPECT_EQ(content_of(path), "new");
        EXPECT_EQ(folder.count(), 1);
    }
    EXPECT_TRUE(save(path, "newer"));
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
    const bool is_protected = !std::ofstream(path, std::ios::app).is_open();
    EXPECT_EQ(save(path, "newest"), !is_protected);
    EXPECT_EQ(content_of(path), is_protected ? "newer" : "newest");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    if (!is_protected) {
        GTEST_SKIP() << "Wine protects no file from root";
    }
}

TEST(WindowsFiles, DevicesAndImpossibleNamesAreNoFiles) {
    const Folder folder;
    EXPECT_TRUE(save("NUL", std::string(100000, 'x')));
    EXPECT_EQ(load_text("NUL").failure, "Error 2 stat-ing 'NUL'.");
    for (const char* name : {"CON", "CONIN$", "what?", "\xFF.txt"}) {
        EXPECT_FALSE(save(folder.path() + "\\" + name, "never")) << name;
        EXPECT_EQ(load_text(folder.path() + "\\" + name).failure.find("Error 2 stat-ing"), 0U);
    }
    EXPECT_EQ(folder.count(), 0);
}

} // namespace
