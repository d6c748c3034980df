// The clipboard and its memory blocks; under X11 also the exchange with another program.
#include "files/clipboard.h"
#include "tests/contract/test_windows.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using namespace pelmora_test;

class Clipboards : public Windows {
  protected:
    void copy(const std::string& text, bool with_picture) const {
        ASSERT_TRUE(OpenClipboard(window_) && EmptyClipboard());
        offer_text(text);
        if (with_picture) {
            HDC device = CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
            LineTo(device, 100, 50);
            HENHMETAFILE drawn = CloseEnhMetaFile(device);
            EXPECT_EQ(SetClipboardData(CF_ENHMETAFILE, drawn), drawn);
        }
        EXPECT_TRUE(CloseClipboard());
    }
    std::string paste() const {
        if (!IsClipboardFormatAvailable(CF_TEXT)) {
            return "(none)";
        }
        EXPECT_TRUE(OpenClipboard(window_));
        HANDLE data = GetClipboardData(CF_TEXT);
        EXPECT_EQ(GetClipboardData(CF_TEXT), data);
        const void* bytes = data != nullptr ? GlobalLock(data) : nullptr;
        std::string text = bytes != nullptr ? static_cast<const char*>(bytes) : "(null)";
        EXPECT_TRUE(CloseClipboard());
        EXPECT_EQ(GlobalLock(data), nullptr); // the clipboard has freed it
        return text;
    }

    // Waits until the clipboard has this text. xclip returns before its child process has taken the
    // ownership of the clipboard.
    void await_text(const std::string& text) const {
        user::Script script(end_script);
        script.await("the text " + text.substr(0, 40), [&] { return paste() == text; });
        run(script);
    }

    // Runs a shell command in the background and returns its output. The message loop runs
    // meanwhile, as other programs need it to read our clipboard.
    static std::string run_in_background(const std::string& command) {
        std::remove("output");
        std::remove("done");
        // exec, as a shell would read on in the script file, which the next call overwrites.
        { std::ofstream("background.sh") << "(" << command << ") >output; exec touch done\n"; }
        EXPECT_EQ(std::system("sh background.sh </dev/null &"), 0);
        user::Script script(end_script);
        script.await(command, [] { return std::ifstream("done").good(); });
        run(script);
        std::ifstream output("output", std::ios::binary);
        return {std::istreambuf_iterator<char>(output), {}};
    }
};

// Skipped without X11 and xclip.
class OtherClipboards : public Clipboards {
  protected:
    void SetUp() override {
        const char* platform = std::getenv("QT_QPA_PLATFORM");
        if (platform == nullptr || std::strcmp(platform, "xcb") != 0 ||
            std::system("command -v xclip >/dev/null") != 0) {
            GTEST_SKIP() << "no X server or no xclip";
        }
    }
};

TEST_F(OtherClipboards, SeeEveryCopiedFormat) {
    copy("Größe\n( FWD_1 )\n", true);
    const std::string targets = run_in_background("xclip -o -selection clipboard -t TARGETS");
    for (const char* target :
         {"UTF8_STRING", "text/plain", "image/x-emf", "image/emf", "image/png"}) {
        EXPECT_NE(targets.find(target), std::string::npos) << target << " in " << targets;
    }
    EXPECT_EQ(run_in_background("xclip -o -selection clipboard"), "Größe\n( FWD_1 )\n");
    const std::string metafile = run_in_background("xclip -o -selection clipboard -t image/x-emf");
    EXPECT_EQ(metafile.substr(40, 4), " EMF");
    EXPECT_EQ(run_in_background("xclip -o -selection clipboard -t image/emf"), metafile);
    EXPECT_EQ(run_in_background("xclip -o -selection clipboard -t image/png").substr(0, 4),
              "\x89PNG");
}

TEST_F(OtherClipboards, ProvideText) {
    const auto expect = [this](const std::string& text, const std::string& printed,
                               const std::string& options = "") {
        std::string command = "printf '";
        command += printed;
        command += "' | xclip -i -selection clipboard ";
        run_in_background(command + options);
        await_text(text);
    };
    expect("one\r\nGröße", "one\\r\\nGröße");
    for (const char* target : {"STRING", "TEXT", "text/plain", "text/plain;charset=utf-8"}) {
        const std::string text = std::string("( ") + target + " )";
        expect(text, text, std::string("-t '") + target + "'");
    }
    expect("Größe", "Gr\\366\\337e", "-t 'text/plain;charset=iso-8859-1'");
    expect("(none)", "no text", "-t image/png");
    expect("\xEF\xBF\xBD\xEF\xBF\xBD", "\\377\\376", "-t UTF8_STRING"); // invalid UTF-8

    run_in_background("head -c 20000000 /dev/zero | tr '\\0' x | xclip -i -selection clipboard");
    std::string large;
    large.resize(20'000'000, 'x');
    await_text(large);
    // When the owner ends the clipboard is empty.
    run_in_background("echo x | xclip -i -quiet -selection clipboard 2>/dev/null & echo $! >owner");
    await_text("x\n");
    run_in_background("kill $(cat owner)");
    await_text("(none)");
}

TEST_F(Clipboards, ATextWithoutAZeroEndsWithItsBlock) {
    const std::string text(24, 'x'); // fills a heap block exactly
    ASSERT_TRUE(OpenClipboard(window_) && EmptyClipboard());
    offer_text(text, false);
    EXPECT_TRUE(CloseClipboard());
    EXPECT_EQ(paste(), text);
}

TEST_F(Clipboards, WithoutMemoryForTheTextNothingIsCopied) {
    using namespace pelmora;
    copy("old", true);
    DrawContext ctx{};
    const ExprTree tree = tree_of("( FWD_1 )");
    constexpr std::size_t kForTheText = 2; // the text grows twice
    EXPECT_EQ(alerts_of([&] {
                  const FailingNew fail(kForTheText);
                  EXPECT_FALSE(CopyTurtle(nullptr, {&ctx, tree.get(), {}}));
              }),
              std::vector<std::string>{"Could not allocate memory for Copy."});
    EXPECT_EQ(paste(), "(none)");
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_ENHMETAFILE));
    EXPECT_FALSE(CloseClipboard());
}

} // namespace
