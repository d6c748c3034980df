// Alerts, the status line, typed numbers and log files.
#include "services/log_files.h"
#include "services/message.h"
#include "services/status.h"
#include "services/typed_number.h"
#include "tests/files/folder.h"
#include "tests/ui/program.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <filesystem>
#include <string>
#include <utility>

namespace {

using namespace pelmora;
using namespace pelmora_test;

TEST(Services, AlertsShowCutFormattedAndRepeatedTexts) {
    const std::string huge(600, 'x');
    const auto texts = alerts_of([&] {
        EXPECT_EQ(ShowMessage(nullptr, huge.c_str()), 1);
        EXPECT_EQ(ShowMessage(nullptr, nullptr), 1);
        EXPECT_EQ(ShowMessageF(nullptr, "<b>100%%</b> of %d", INT_MIN), 1);
    });
    EXPECT_EQ(texts, (std::vector<std::string>{huge.substr(0, 511), huge.substr(0, 511),
                                               "<b>100%</b> of -2147483648"}));
}

TEST(Services, TheStatusTextFitsItsLine) {
    const std::string before = StatusText();
    SetStatusText(nullptr);
    EXPECT_EQ(StatusText(), before);
    SetStatusText(std::string(300, 'y').c_str());
    EXPECT_EQ(StatusText(), std::string(255, 'y'));
    SetStatusText(before.c_str());
}

TEST(Services, DialogsOpenInTheUpperMiddle) {
    if (!user::programs_place_windows()) {
        GTEST_SKIP() << "nobody but the compositor places windows";
    }
    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    alerts_of(
        [] { ShowMessage(nullptr, "where"); },
        [&desktop](HWND alert) {
            RECT place{};
            GetWindowRect(alert, &place);
            constexpr int kThinner = 4; // a dialog's frame may be thinner than a main window's
            EXPECT_NEAR(place.left, (desktop.right - (place.right - place.left)) / 2.0, kThinner);
            EXPECT_NEAR(place.top, (desktop.bottom - (place.bottom - place.top)) / 3.0, kThinner);
        });
}

TEST(Services, TypedNumbersAreReadUpToTheFirstOtherCharacter) {
    const std::pair<const char*, int> cases[] = {{"48", 48},
                                                 {" \t\n7", 7},
                                                 {"-5", -5},
                                                 {"+6x", 6},
                                                 {"", 0},
                                                 {" ", 0},
                                                 {"abc", 0},
                                                 {"--4", 0},
                                                 {"99999999999", INT_MAX},
                                                 {"-99999999999999999999999", -INT_MAX},
                                                 {"2147483648", INT_MAX}};
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(TypedNumber(text), number) << text;
    }
    EXPECT_EQ(SteppedNumber(48, -1), 49);
    EXPECT_EQ(SteppedNumber(INT_MAX, -1), INT_MAX);
    EXPECT_EQ(SteppedNumber(-INT_MAX, 20), -INT_MAX);
}

TEST(Services, LogsStartEmptyAndOneThatCannotBeOpenedDiscardsItsLines) {
    namespace fs = std::filesystem;
    const Folder folder;
    fs::create_directory(path_of(folder.path("stderr.txt")));     // cannot be written as a file
    write_file(folder.path("stdout.txt"), std::string(200, 'x')); // longer than the new log
    const fs::path before = fs::current_path();
    fs::current_path(path_of(folder.path()));
    testing::internal::CaptureStderr(); // which restores the streams afterwards
    testing::internal::CaptureStdout();
    OpenLogFiles();
    std::FILE* drawing = std::fopen("drawing.txt", "w");
    std::fputs("a line for the log\n", stderr);
    std::fputs("another\n", stdout);
    std::fclose(drawing);
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    fs::current_path(before);
    EXPECT_EQ(content_of(folder.path("drawing.txt")), "");
    std::string log = content_of(folder.path("stdout.txt"));
    std::erase(log, '\r'); // its lines end as the platform's texts do
    EXPECT_EQ(log, "------ THIS IS PELMORA ----------\nanother\n");
}

} // namespace
