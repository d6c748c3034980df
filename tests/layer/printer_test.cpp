// Printing: the print dialog and the jobs of the printer chosen in it.
#include "tests/contract/test_windows.h"
#include "tests/files/read_only.h"
#include "tests/support/answers.h"

#include <filesystem>
#include <string>

namespace {

using namespace pelmora_test;

HDC asked_device = nullptr; // the argument of the abort procedure
BOOL keep_printing = TRUE;  // its result

BOOL CALLBACK AskedProc(HDC device, int) {
    asked_device = device;
    return keep_printing;
}

class Printing : public Windows {
  protected:
    HDC printer_to(const std::string& path, bool exists = false) const {
        HDC printer = pelmora_test::printer_to(window_, path, exists);
        EXPECT_EQ(SetAbortProc(printer, AskedProc), 1);
        return printer;
    }

    static int start(HDC printer) {
        DOCINFOA document{};
        document.cbSize = sizeof document;
        document.lpszDocName = "A document";
        return StartDocA(printer, &document);
    }
};

TEST_F(Printing, AJobRequiresItsCallsInOrder) {
    const Folder folder;
    const std::string path = folder.path("a 'page' \"ü\".pdf");
    HDC printer = printer_to(path);
    EXPECT_LE(StartPage(printer), 0);
    EXPECT_LE(EndPage(printer), 0);
    EXPECT_LE(EndDoc(printer), 0);
    EXPECT_GT(start(printer), 0);
    EXPECT_LE(start(printer), 0);
    EXPECT_GT(StartPage(printer), 0);
    EXPECT_LE(StartPage(printer), 0);
    EXPECT_EQ(LineTo(printer, 100, 100), 1);
    asked_device = nullptr;
    EXPECT_GT(EndPage(printer), 0);
    EXPECT_EQ(asked_device, printer);
    EXPECT_LE(EndPage(printer), 0);
    EXPECT_GT(EndDoc(printer), 0);
    EXPECT_EQ(content_of(path).substr(0, 5), "%PDF-");
    EXPECT_LE(EndDoc(printer), 0);
    EXPECT_TRUE(DeleteDC(printer));
    EXPECT_EQ(content_of(path).substr(0, 5), "%PDF-");
    EXPECT_EQ(folder.count(), 1);
}

TEST_F(Printing, AnUnfinishedJobKeepsTheOldFile) {
    const Folder folder;
    const std::string path = folder.path("page.pdf");
    write_file(path, "old");
    for (const bool aborted : {false, true}) {
        HDC printer = printer_to(path, true);
        EXPECT_GT(start(printer), 0);
        EXPECT_GT(StartPage(printer), 0);
        LineTo(printer, 100, 100);
        if (aborted) {
            keep_printing = FALSE;
            EXPECT_LE(EndPage(printer), 0);
            keep_printing = TRUE;
            EXPECT_LE(EndDoc(printer), 0);
        }
        EXPECT_TRUE(DeleteDC(printer));
        EXPECT_EQ(content_of(path), "old");
    }
    EXPECT_EQ(folder.count(), 1);
}

TEST_F(Printing, AFullDiskOrADeletedFolderLeavesNoPartialFile) {
    const Folder folder;
    const std::string path = folder.path("page.pdf");
    write_file(path, "old");
    HDC printer = printer_to(path, true);
    {
        const FullDisk disk(500);
        EXPECT_FALSE(start(printer) > 0 && StartPage(printer) > 0 &&
                     LineTo(printer, 100, 100) == 1 && EndPage(printer) > 0 && EndDoc(printer) > 0);
        DeleteDC(printer);
    }
    EXPECT_EQ(content_of(path), "old");
    EXPECT_EQ(folder.count(), 1);

    std::filesystem::create_directory(folder.path("gone"));
    printer = printer_to(folder.path("gone/page.pdf"));
    std::filesystem::remove_all(folder.path("gone"));
    EXPECT_LE(start(printer), 0);
    EXPECT_LE(StartPage(printer), 0);
    EXPECT_LE(EndDoc(printer), 0);
    EXPECT_TRUE(DeleteDC(printer));
    EXPECT_EQ(folder.count(), 1);
}

} // namespace
