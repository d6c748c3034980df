// Metafiles: writing of files, and drawing.
#include "gdi/metafile.h"
#include "tests/files/read_only.h"
#include "tests/support/failing_new.h"
#include "tests/support/metafile_text.h"

#include <gtest/gtest.h>

namespace {

using namespace pelmora_test;

constexpr char kDescription[] = "A\0B\0";
constexpr RECT kFrame{0, 0, 5000, 3000};

void line(HDC device, int x0, int y0, int x1, int y1) {
    EXPECT_EQ(MoveToEx(device, x0, y0, nullptr), 1);
    EXPECT_EQ(LineTo(device, x1, y1), 1);
}

// A temporary folder with a file "old", which is no metafile.
class MetafileFiles : public testing::Test {
  protected:
    MetafileFiles() { write_file(old_, "old content"); }

    // Records a line into a file. True when the metafile was closed successfully.
    static bool record(const std::string& path) {
        HDC device = CreateEnhMetaFileA(nullptr, path.c_str(), &kFrame, kDescription);
        if (device == nullptr) {
            EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
            return false;
        }
        line(device, 0, 0, 10, 10);
        HENHMETAFILE metafile = CloseEnhMetaFile(device);
        if (metafile == nullptr) {
            EXPECT_EQ(GetLastError(), ERROR_WRITE_FAULT);
            return false;
        }
        content_ = platform::metafile_bytes(metafile).toStdString();
        EXPECT_EQ(metafile_lines(content_).back(), "EOF");
        return DeleteEnhMetaFile(metafile) != FALSE;
    }

    inline static std::string content_; // of the last metafile
    Folder folder_;
    std::string old_ = folder_.path("old");
};

TEST_F(MetafileFiles, OnlyACompleteFileReplacesTheOld) {
    EXPECT_TRUE(record(folder_.path("new")));
    EXPECT_EQ(content_of(folder_.path("new")), content_);

    HDC device = CreateEnhMetaFileA(nullptr, old_.c_str(), &kFrame, nullptr);
    line(device, 0, 0, 10, 10);
    EXPECT_EQ(content_of(old_), "old content");
    EXPECT_TRUE(DeleteDC(device)); // without closing
    device = CreateEnhMetaFileA(nullptr, folder_.path("never").c_str(), &kFrame, nullptr);
    EXPECT_TRUE(DeleteDC(device));
    EXPECT_EQ(content_of(old_), "old content");
    EXPECT_EQ(folder_.count(), 2);
}

TEST_F(MetafileFiles, AFullDiskOrMemoryKeepsTheOldFile) {
    {
        const FullDisk disk(50);
        EXPECT_FALSE(record(old_));
        EXPECT_FALSE(record(folder_.path("new")));
    }
    for (const std::size_t good : {0U, 1U, 4U}) {
        const FailingNew memory(good);
        HDC device = CreateEnhMetaFileA(nullptr, old_.c_str(), &kFrame, kDescription);
        for (int i = 0; i < 10'000; ++i) {
            LineTo(device, i, i);
        }
        EXPECT_EQ(CloseEnhMetaFile(device), nullptr);
        EXPECT_EQ(GetLastError(), ERROR_NOT_ENOUGH_MEMORY);
    }
    EXPECT_EQ(content_of(old_), "old content");
    EXPECT_EQ(folder_.count(), 1);
}

TEST(MetafilePicture, FillsItsFrameUpright) {
    constexpr RECT kUpward{0, -5000, 10'000, 0}; // 100 by 50 mm
    HDC device = CreateEnhMetaFileA(nullptr, nullptr, &kUpward, nullptr);
    EXPECT_EQ(SetMapMode(device, MM_LOMETRIC), MM_TEXT);
    HGDIOBJ before = SelectObject(device, CreatePen(PS_SOLID, 100, RGB(0, 0, 255)));
    line(device, 500, 100, 800, 100); // 10 mm above the bottom, 10 mm wide
    DeleteObject(SelectObject(device, before));
    HENHMETAFILE metafile = CloseEnhMetaFile(device);
    const QImage picture = platform::draw_metafile(platform::metafile_bytes(metafile), 400);
    EXPECT_TRUE(DeleteEnhMetaFile(metafile));
    ASSERT_EQ(picture.size(), QSize(400, 200));
    for (const auto& [height, color] :
         {std::pair(10, Qt::blue), {14, Qt::blue}, {16, Qt::white}, {40, Qt::white}}) {
        EXPECT_EQ(picture.pixelColor(65 * 4, (50 - height) * 4), QColor(color)) << height;
    }
}

} // namespace
