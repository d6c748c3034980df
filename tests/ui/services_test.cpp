// Alerts, the status line, typed numbers and log files.
#include "services/message.h"
#include "services/status.h"
#include "services/typed_number.h"
#include "tests/ui/program.h"
#include "ui/log_files.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <filesystem>
#include <fstream>
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

TEST(Services, TheStatusLineAndDialogsHaveTheirPlaces) {
    const PopulationWindow window(small_params(8));
    RECT client{};
    GetClientRect(window.handle(), &client);
    const RECT line = StatusRect(window.handle());
    EXPECT_EQ(line.left, 4);
    EXPECT_EQ(line.right, client.right - 4);
    EXPECT_EQ(line.bottom, client.bottom - 2);
    EXPECT_EQ(line.top, line.bottom - 17);

    RECT desktop{};
    GetWindowRect(GetDesktopWindow(), &desktop);
    alerts_of([] { ShowMessage(nullptr, "where"); },
              [&desktop](HWND alert) {
                  RECT place{};
                  GetWindowRect(alert, &place);
                  constexpr int kFrame = 40; // a window manager's may be added
                  EXPECT_NEAR(place.left, (desktop.right - (place.right - place.left)) / 2, kFrame);
                  EXPECT_NEAR(place.top, (desktop.bottom - (place.bottom - place.top)) / 3, kFrame);
              });
}

TEST(Services, TypedNumbersReadAsFarAsTheyGo) {
    const std::pair<const char*, int> cases[] = {
        {"48", 48},
        {" \t\n7", 7},
        {"-5", -5},
        {"+6x", 6},
        {"", 0},
        {" ", 0},
        {"abc", 0},
        {"--4", 0},
        {"99999999999", INT_MAX},
        {"-99999999999999999999999", -INT_MAX},
        {"2147483648", INT_MAX},
    };
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(TypedNumber(text), number) << text;
    }
    EXPECT_EQ(SteppedNumber(48, -1), 49);
    EXPECT_EQ(SteppedNumber(INT_MAX, -1), INT_MAX);
    EXPECT_EQ(SteppedNumber(-INT_MAX, 20), -INT_MAX);
}

// In a process of its own: the streams stay redirected.
[[noreturn]] void log_into_a_folder_that_refuses() {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / "pelmora-log-test";
    fs::remove_all(folder);
    fs::create_directories(folder / "stderr.txt"); // a folder cannot be written as a file
    fs::current_path(folder);
    OpenLogFiles();
    std::FILE* drawing = std::fopen("drawing.txt", "w");
    std::fputs("a line for the log\n", stderr);
    std::fputs("another\n", stdout);
    std::fclose(drawing);
    const bool clean = fs::file_size("drawing.txt") == 0;
    std::ifstream file("stdout.txt");
    const std::string out(std::istreambuf_iterator<char>(file), {});
    fs::current_path(fs::temp_directory_path());
    std::error_code still_open;
    fs::remove_all(folder, still_open);
    std::_Exit(clean && out == "------ THIS IS PELMORA ----------\nanother\n" ? 0 : 1);
}

TEST(Services, ALogFileThatCannotBeOpenedSwallowsItsLines) {
    EXPECT_EXIT(log_into_a_folder_that_refuses(), testing::ExitedWithCode(0), "");
}

} // namespace
