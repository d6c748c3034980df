// Metafiles: the records that drawing leaves, the files that they go to, and their pictures.
#include "platform/qt/metafile.h"
#include "tests/files/folder.h"
#include "tests/support/failing_new.h"
#include "tests/support/metafile_text.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
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

TEST(Metafile, BoundsAndFrameFollowTheMapMode) {
    const struct {
        int mode;
        double millimeters; // for a unit; 0: a pixel
        int upward;
    } modes[] = {{MM_TEXT, 0, -1},
                 {MM_LOMETRIC, 0.1, 1},
                 {MM_HIMETRIC, 0.01, 1},
                 {MM_LOENGLISH, 0.254, 1},
                 {MM_HIENGLISH, 0.0254, 1}};
    for (const auto& [mode, millimeters, upward] : modes) {
        const std::string bytes = recorded(mode, nullptr, [](HDC device) {
            MoveToEx(device, 90'000, 90'000, nullptr); // not drawn to, so not counted
            line(device, 100, 200, 1100, 700);
        });
        const int width = field(bytes, 72);
        const int height = field(bytes, 76);
        const int width_mm = field(bytes, 80);
        const int height_mm = field(bytes, 84);
        EXPECT_EQ(width, GetDeviceCaps(nullptr, HORZRES));
        EXPECT_EQ(height, GetDeviceCaps(nullptr, VERTRES));
        EXPECT_NEAR(width_mm, width * 25.4 / 96, 0.5);
        EXPECT_NEAR(height_mm, height * 25.4 / 96, 0.5);
        EXPECT_EQ(field(bytes, 100), width_mm * 1000);
        EXPECT_EQ(field(bytes, 104), height_mm * 1000);
        const auto pixel = [unit = millimeters](int value, int pixels, int mm) {
            return unit == 0 ? value : static_cast<int>(std::lround(value * unit * pixels / mm));
        };
        const int y0 = pixel(-upward * 200, height, height_mm);
        const int y1 = pixel(-upward * 700, height, height_mm);
        const RECT bounds{pixel(100, width, width_mm), std::min(y0, y1),
                          pixel(1100, width, width_mm), std::max(y0, y1)};
        const RECT frame{
            bounds.left * width_mm * 100 / width, bounds.top * height_mm * 100 / height,
            bounds.right * width_mm * 100 / width, bounds.bottom * height_mm * 100 / height};
        std::size_t offset = 8;
        for (const RECT& wanted : {bounds, frame}) {
            for (const LONG side : {wanted.left, wanted.top, wanted.right, wanted.bottom}) {
                EXPECT_EQ(field(bytes, offset), side) << "mode " << mode << " offset " << offset;
                offset += 4;
            }
        }
    }
    const std::string empty =
        recorded(MM_TEXT, &kFrame, [](HDC device) { MoveToEx(device, 9, 9, nullptr); });
    EXPECT_EQ(metafile_lines(empty).front(),
              "HEADER bounds 0 0 -1 -1 frame 0 0 5000 3000 handles 1 description ");
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

// A cross of a red line along the left edge and a wide blue one along the top, in a frame of 100 by
// 50 mm, as every map mode states it.
TEST(MetafilePicture, IsUprightInItsFrame) {
    const struct {
        int mode;
        double units; // for a millimetre; 0: pixels
    } modes[] = {{MM_TEXT, 0},
                 {MM_LOMETRIC, 10},
                 {MM_HIMETRIC, 100},
                 {MM_LOENGLISH, 100 / 25.4},
                 {MM_HIENGLISH, 1000 / 25.4}};
    for (const auto& [mode, units] : modes) {
        const bool text = mode == MM_TEXT;
        const double unit = text ? 96 / 25.4 : units;
        const RECT up{0, -5000, 10'000, 0};
        const RECT down{0, 0, 10'000, 5000};
        const std::string bytes = recorded(mode, text ? &down : &up, [=](HDC device) {
            const auto draw = [&](int width, COLORREF color, double x0, double y0, double x1,
                                  double y1) {
                HPEN pen = CreatePen(PS_SOLID, width, color);
                HGDIOBJ before = SelectObject(device, pen);
                const auto at = [unit](double mm) { return static_cast<int>(mm * unit); };
                line(device, at(x0), at(y0), at(x1), at(y1));
                SelectObject(device, before);
                DeleteObject(pen);
            };
            draw(0, RGB(255, 0, 0), 20, 5, 20, 45); // up to 5 mm below the top, or the bottom
            draw(static_cast<int>(10 * unit), RGB(0, 0, 255), 50, 10, 80, 10);
        });
        const QImage picture = platform::draw_metafile(as_bytes(bytes), 400);
        ASSERT_EQ(picture.size(), QSize(400, 200)) << mode;
        // y in mm from the picture's top, of what was drawn that far from the origin
        const auto color = [&](double x, double y) {
            const double from_top = text ? y : 50 - y;
            return picture.pixelColor(static_cast<int>(x * 4), static_cast<int>(from_top * 4));
        };
        const int reddest =
            std::min({color(19.9, 25).blue(), color(20.1, 25).blue(), color(19.6, 25).blue()});
        EXPECT_LT(reddest, 200) << mode;
        EXPECT_EQ(color(20, 2), QColor(Qt::white)) << mode;
        EXPECT_EQ(color(65, 10), QColor(Qt::blue)) << mode;
        EXPECT_EQ(color(65, 14), QColor(Qt::blue)) << mode;
        EXPECT_EQ(color(65, 16), QColor(Qt::white)) << mode;
        EXPECT_EQ(color(65, 40), QColor(Qt::white)) << mode;
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
