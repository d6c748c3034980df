// Metafiles: the records that drawing leaves, the files that they go to, and their pictures.
#include "platform/qt/metafile.h"
#include "tests/files/read_only.h"
#include "tests/support/failing_new.h"
#include "tests/support/metafile_text.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <random>

namespace {

using namespace pelmora_test;
namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr char kDescription[] = "A\0B\0";
constexpr RECT kFrame{0, 0, 5000, 3000};

std::string bytes_of(HENHMETAFILE metafile) {
    return platform::metafile_bytes(metafile).toStdString();
}

std::int32_t field(const std::string& bytes, std::size_t offset) {
    return qFromLittleEndian<qint32>(bytes.data() + offset);
}

void line(HDC device, int x0, int y0, int x1, int y1) {
    EXPECT_EQ(MoveToEx(device, x0, y0, nullptr), 1);
    EXPECT_EQ(LineTo(device, x1, y1), 1);
}

// The bytes of a metafile in memory that `draw` draws in a map mode.
template <typename Draw>
std::string recorded(int mode, const RECT* frame, Draw draw) {
    HDC device = CreateEnhMetaFileA(nullptr, nullptr, frame, nullptr);
    EXPECT_EQ(SetMapMode(device, mode), MM_TEXT);
    draw(device);
    HENHMETAFILE metafile = CloseEnhMetaFile(device);
    std::string bytes = bytes_of(metafile);
    EXPECT_TRUE(DeleteEnhMetaFile(metafile));
    return bytes;
}

TEST(Metafile, RecordsEveryCallOnce) {
    HDC device = CreateEnhMetaFileA(nullptr, nullptr, &kFrame, kDescription);
    EXPECT_EQ(SetMapMode(device, MM_LOMETRIC), MM_TEXT);
    EXPECT_EQ(SetMapMode(device, MM_LOMETRIC), MM_LOMETRIC);
    EXPECT_EQ(SetMapMode(device, 99), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    HPEN unused = CreatePen(PS_SOLID, 9, RGB(9, 9, 9));
    HPEN red = CreatePen(PS_SOLID, -3, RGB(255, 0, 0));
    HPEN blue = CreatePen(PS_SOLID, 0, RGB(1, 2, 255));
    EXPECT_EQ(SelectObject(device, red), GetStockObject(BLACK_PEN));
    line(device, 1, -2, 3, 4);
    SelectObject(device, blue);
    SelectObject(device, red);
    EXPECT_EQ(GetCurrentObject(device, OBJ_PEN), red);
    DeleteObject(red); // its number is free while it goes on drawing
    EXPECT_EQ(LineTo(device, -2'000'000'000, 2'000'000'000), 1);
    HPEN green = CreatePen(PS_SOLID, 1, RGB(0, 255, 0));
    SelectObject(device, green);
    DeleteObject(unused);
    SelectObject(device, GetStockObject(BLACK_PEN));
    DeleteObject(green);
    DeleteObject(blue);
    HENHMETAFILE metafile = CloseEnhMetaFile(device);
    const std::string bytes = bytes_of(metafile);
    Lines lines = metafile_lines(bytes);
    lines.front().erase(7, lines.front().find("frame") - 7);
    EXPECT_EQ(lines, (Lines{"HEADER frame 0 0 5000 3000 handles 3 description A/B", "SETMAPMODE 2",
                            "SETMAPMODE 2", "CREATEPEN 1 width 3 color 0x0000FF", "SELECTOBJECT 1",
                            "MOVETOEX 1 -2", "LINETO 3 4", "CREATEPEN 2 width 0 color 0xFF0201",
                            "SELECTOBJECT 2", "SELECTOBJECT 1", "DELETEOBJECT 1",
                            "LINETO -2000000000 2000000000", "CREATEPEN 1 width 1 color 0x00FF00",
                            "SELECTOBJECT 1", "SELECTOBJECT stock 7", "DELETEOBJECT 1",
                            "DELETEOBJECT 2", "EOF"}));
    EXPECT_EQ(field(bytes, 4), 120); // the description padded
    EXPECT_EQ(field(bytes, 44), 0x10000);
    EXPECT_EQ(field(bytes, 60), 5);
    EXPECT_EQ(field(bytes, 64), 108);
    EXPECT_EQ(bytes.substr(bytes.size() - 12), std::string("\0\0\0\0\x10\0\0\0\x14\0\0\0", 12));
    EXPECT_TRUE(DeleteEnhMetaFile(metafile));
    EXPECT_FALSE(DeleteEnhMetaFile(metafile)); // released handles are recognised
    EXPECT_EQ(bytes_of(metafile), "");
}

// Metafiles in a folder of their own, in which "old" has other content.
class MetafileFiles : public testing::Test {
  protected:
    MetafileFiles() { write_file(old_, "old content"); }

    // Records a line into a file; whether the metafile was closed with success.
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
        content_ = bytes_of(metafile);
        EXPECT_EQ(metafile_lines(content_).back(), "EOF");
        return DeleteEnhMetaFile(metafile) != FALSE;
    }

    static std::string content_; // of the last metafile
    Folder folder_;
    std::string old_ = folder_.path("old");
};

std::string MetafileFiles::content_;

TEST_F(MetafileFiles, AFileIsReplacedOnlyByACompleteOne) {
    EXPECT_TRUE(record(folder_.path("new")));
    EXPECT_EQ(content_of(folder_.path("new")), content_);

    HDC device = CreateEnhMetaFileA(nullptr, old_.c_str(), &kFrame, nullptr);
    line(device, 0, 0, 10, 10);
    EXPECT_EQ(content_of(old_), "old content");
    EXPECT_TRUE(DeleteDC(device)); // abandoned
    device = CreateEnhMetaFileA(nullptr, folder_.path("never").c_str(), &kFrame, nullptr);
    EXPECT_TRUE(DeleteDC(device));
    EXPECT_EQ(content_of(old_), "old content");
    EXPECT_EQ(folder_.count(), 2);

    fs::permissions(old_, fs::perms{0640});
    fs::create_symlink("old", folder_.path("link"));
    fs::create_symlink("made", folder_.path("dangling"));
    EXPECT_TRUE(record(folder_.path("link")));
    EXPECT_EQ(content_of(old_), content_);
    EXPECT_EQ(fs::status(old_).permissions(), fs::perms{0640});
    EXPECT_TRUE(record(folder_.path("dangling")));
    EXPECT_EQ(content_of(folder_.path("made")), content_);
    EXPECT_TRUE(fs::is_symlink(folder_.path("link")) && fs::is_symlink(folder_.path("dangling")));
    EXPECT_EQ(folder_.count(), 5);
}

TEST_F(MetafileFiles, WhatCannotBeWrittenIsRefusedAtOnce) {
    fs::create_symlink("loop", folder_.path("loop"));
    ASSERT_EQ(::mkfifo(folder_.path("pipe").c_str(), 0600), 0);
    for (const std::string& path :
         {std::string(), folder_.path(), folder_.path("no/such"), folder_.path("new/"),
          folder_.path("old/x"), folder_.path("loop"), folder_.path("pipe"),
          folder_.path(std::string(300, 'x'))}) {
        EXPECT_FALSE(record(path)) << path;
    }
    EXPECT_EQ(folder_.count(), 3);
}

TEST_F(MetafileFiles, PipesAndDevicesAreWrittenInPlace) {
    const std::string pipe = folder_.path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_TRUE(record(pipe));
    std::string received(4096, '\0');
    received.resize(static_cast<std::size_t>(::read(reader, received.data(), received.size())));
    EXPECT_EQ(received, content_);
    HDC device = CreateEnhMetaFileA(nullptr, pipe.c_str(), nullptr, nullptr);
    ::close(reader);
    EXPECT_EQ(CloseEnhMetaFile(device), nullptr); // the reader went away
    EXPECT_FALSE(record("/dev/full"));
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
    EXPECT_TRUE(fs::is_fifo(pipe));

    // So are files in a folder that cannot be written.
    write_file(old_, std::string(5000, 'x'));
    fs::permissions(old_, fs::perms::all);
    {
        const ReadOnly closed(folder_);
        device = CreateEnhMetaFileA(nullptr, old_.c_str(), nullptr, nullptr);
        EXPECT_TRUE(DeleteDC(device));
        EXPECT_EQ(content_of(old_).size(), 5000U);
        EXPECT_TRUE(record(old_));
    }
    EXPECT_EQ(content_of(old_), content_);

    // But not when the new file cannot be made for another reason.
    for (int i = 0; i < 100; ++i) {
        fs::create_directory(folder_.path(".old.writing" + std::to_string(i)));
    }
    EXPECT_FALSE(record(old_));
    EXPECT_EQ(content_of(old_), content_);
}

TEST_F(MetafileFiles, AFullDiskOrMemoryLeavesTheOldFile) {
    // Files may not grow beyond a few bytes for a while.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    ::getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit small{50, usual.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const bool old_replaced = record(old_);
    const bool new_made = record(folder_.path("new"));
    ::setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_FALSE(old_replaced);
    EXPECT_FALSE(new_made);

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

QByteArray as_bytes(const std::string& bytes) {
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

TEST(MetafilePicture, IsUprightInItsFrame) {
    constexpr RECT kUpward{0, -5000, 10'000, 0}; // 100 by 50 mm
    const std::string bytes = recorded(MM_LOMETRIC, &kUpward, [](HDC device) {
        HPEN pen = CreatePen(PS_SOLID, 100, RGB(0, 0, 255));
        HGDIOBJ before = SelectObject(device, pen);
        line(device, 500, 100, 800, 100); // 10 mm above the bottom, 10 mm wide
        SelectObject(device, before);
        DeleteObject(pen);
    });
    const QImage picture = platform::draw_metafile(as_bytes(bytes), 400);
    ASSERT_EQ(picture.size(), QSize(400, 200));
    for (const auto& [height, color] :
         {std::pair(10, Qt::blue), {14, Qt::blue}, {16, Qt::white}, {40, Qt::white}}) {
        EXPECT_EQ(picture.pixelColor(65 * 4, (50 - height) * 4), QColor(color)) << height;
    }
}

TEST(MetafilePicture, TakesAnyBytes) {
    const std::string good = recorded(MM_LOMETRIC, &kFrame, [](HDC device) {
        HPEN pen = CreatePen(PS_SOLID, 3, RGB(255, 0, 0));
        HGDIOBJ before = SelectObject(device, pen);
        for (int i = 0; i < 20; ++i) {
            LineTo(device, i * 30, -i * 17 % 300);
        }
        SelectObject(device, before);
        DeleteObject(pen);
    });
    constexpr int kLongest = 200;
    const auto draw = [](const std::string& bytes) {
        const QImage picture = platform::draw_metafile(as_bytes(bytes), kLongest);
        EXPECT_TRUE(picture.isNull() || std::max(picture.width(), picture.height()) == kLongest);
        return picture;
    };
    EXPECT_FALSE(draw(good).isNull());
    for (std::size_t size = 0; size < good.size(); ++size) {
        const bool between_records = size >= 108 && size % 4 == 0;
        EXPECT_TRUE(draw(good.substr(0, size)).isNull() || between_records) << size;
    }
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same every time
    for (int i = 0; i < 3000; ++i) {
        std::string bad = good;
        for (unsigned changes = 1 + random() % 4; changes != 0; --changes) {
            const std::size_t at = random() % (bad.size() / 4) * 4;
            const std::uint32_t values[] = {
                0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, static_cast<std::uint32_t>(random())};
            qToLittleEndian(values[random() % 6], bad.data() + at);
        }
        draw(bad);
    }
}

} // namespace
