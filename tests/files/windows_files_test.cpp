// Files on Windows: open in other processes, read-only, with the names of devices. Printers that
// make copies.
#include "files/loaded_text.h"
#include "files/printing.h"
#include "platform/win32.h"
#include "tests/contract/test_windows.h"
#include "tests/files/folder.h"
#include "tests/support/answers.h"
#include "tests/support/trees.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>
#include <thread>

#include <dlgs.h>

namespace {

using namespace pelmora;
using namespace pelmora_test;

TEST(WindowsFiles, OpenAndReadOnlyFilesAreKept) {
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
    // Most processes close a file soon, such as virus scanners, which open every new file.
    for (const DWORD shared : {DWORD{0}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
        HANDLE other = CreateFileA(path.c_str(), GENERIC_READ, shared, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
        std::thread holder([other] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            CloseHandle(other);
        });
        EXPECT_TRUE(save(path, "new " + std::to_string(shared)));
        holder.join();
        EXPECT_EQ(content_of(path), "new " + std::to_string(shared));
        EXPECT_EQ(folder.count(), 1);
    }
    // A handle that denies writing, but not deletion, does not prevent a save.
    {
        HANDLE other = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                   nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_TRUE(save(path, "beside a holder"));
        CloseHandle(other);
        EXPECT_EQ(content_of(path), "beside a holder");
    }
    // A reader that shares writing, as most do, only prevents a rename.
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

// Two minutes old, like the leftover of a killed program.
HANDLE make_leftover(const std::string& path, DWORD shared) {
    HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, shared, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_HIDDEN, nullptr);
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    ULARGE_INTEGER number{{time.dwLowDateTime, time.dwHighDateTime}};
    number.QuadPart -= 120 * 10'000'000ULL;
    time = {number.LowPart, number.HighPart};
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
    return file;
}

TEST(WindowsFiles, TheNextSaveRemovesTheLeftoverOfAKilledOne) {
    const Folder folder;
    const std::string path = folder.path("file");
    CloseHandle(make_leftover(folder.path(".pelmora-saving-1"), 0));
    HANDLE of_another = make_leftover(folder.path(".pelmora-saving-2"), 0);
    {
        SavedFile file(path);
        EXPECT_EQ(folder.count(), 2);
        for (const auto& entry : std::filesystem::directory_iterator(path_of(folder.path()))) {
            EXPECT_NE(GetFileAttributesW(entry.path().c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
        }
        EXPECT_TRUE(save(folder.path("beside"), "x")); // and does not disturb it
        EXPECT_TRUE(file.commit());
    }
    EXPECT_EQ(GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
    CloseHandle(of_another);
    EXPECT_EQ(folder.count(), 3);
    EXPECT_TRUE(save(path, "y"));
    EXPECT_EQ(folder.count(), 2);
}

TEST(WindowsFiles, PathsMayHaveTheSystemsMaximumLength) {
    const Folder folder;
    const std::string path = folder.path(std::string(255 - folder.path("").size(), 'n'));
    EXPECT_TRUE(save(path, "old"));
    EXPECT_TRUE(save(path, "new"));
    EXPECT_EQ(content_of(path), "new");
}

TEST(WindowsFiles, DevicesAndInvalidNamesAreNotFiles) {
    const Folder folder;
    EXPECT_TRUE(save("NUL", std::string(100000, 'x')));
    EXPECT_EQ(load_text("NUL").failure, "Error 2 stat-ing 'NUL'.");
    for (const char* name : {"CON", "CONIN$", "what?", "\xFF.txt"}) {
        EXPECT_FALSE(save(folder.path() + "\\" + name, "never")) << name;
        EXPECT_EQ(load_text(folder.path() + "\\" + name).failure.find("Error 2 stat-ing"), 0U);
    }
    EXPECT_EQ(folder.count(), 0);
}

// Wine's PostScript contains the number of copies.
TEST_F(Windows, ThePrinterMakesCopiesAndOptionsWithoutEffectAreDisabled) {
    const Folder folder;
    const std::string path = folder.path("page.ps");
    DeleteDC(printer_to(window_, path)); // where it prints to from now on
    DrawContext ctx{};
    Answers()
        .press("Print Pensize", "Return")
        .dialog("Print",
                [](HWND dialog) {
                    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, rad2))); // a selection
                    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(dialog, rad3))); // pages
                    EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, chx1))); // into a file
                    SetDlgItemInt(dialog, edt3, 3, FALSE);
                    user::accept_system_dialog();
                })
        .during([&] { PrintTurtleTree(window_, &ctx, tree_of("( BLOCK ( FWD_1 ) )").get()); });
    EXPECT_NE(content_of(path).find("copies=3"), std::string::npos);
}

} // namespace
