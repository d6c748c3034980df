// The clipboard and its memory blocks; with a display also the exchange with another program.
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
using namespace std::string_literals;

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

// Skipped without a display and without the display's program for the clipboard.
class OtherClipboards : public Clipboards {
  protected:
    void SetUp() override {
        const char* platform = std::getenv("QT_QPA_PLATFORM");
        const std::string name = platform != nullptr ? platform : "";
        if (name == "wayland") {
            list_ = "wl-paste -l";
            read_ = "wl-paste -n";
            write_ = "wl-copy";
            stay_ = "wl-copy -f";
            utf8_ = "text/plain;charset=utf-8";
            one_format_ = false;
        } else if (name != "xcb") {
            GTEST_SKIP() << "no display";
        }
        if (std::system(
                ("command -v " + read_.substr(0, read_.find(' ')) + " >/dev/null").c_str()) != 0) {
            GTEST_SKIP() << "no other program";
        }
    }

    // Commands that list what the clipboard offers, read it, and offer their input, the last one
    // until it is ended. An option -t selects a format.
    std::string list_ = "xclip -o -selection clipboard -t TARGETS";
    std::string read_ = "xclip -o -selection clipboard";
    std::string write_ = "xclip -i -selection clipboard";
    std::string stay_ = "xclip -i -quiet -selection clipboard";
    std::string utf8_ = "UTF8_STRING"; // what the desktop calls this format
    bool one_format_ = true;           // else a text is offered in every format of texts, unchanged
};

TEST_F(OtherClipboards, SeeEveryCopiedFormat) {
    copy("Größe\n( FWD_1 )\n", true);
    const std::string targets = run_in_background(list_);
    for (const std::string& format :
         {utf8_, "text/plain"s, "image/x-emf"s, "image/emf"s, "image/png"s}) {
        EXPECT_NE(targets.find(format), std::string::npos) << format << " in " << targets;
    }
    EXPECT_EQ(run_in_background(read_), "Größe\n( FWD_1 )\n");
    const std::string metafile = run_in_background(read_ + " -t image/x-emf");
    EXPECT_EQ(metafile.substr(40, 4), " EMF");
    EXPECT_EQ(run_in_background(read_ + " -t image/emf"), metafile);
    EXPECT_EQ(run_in_background(read_ + " -t image/png").substr(0, 4), "\x89PNG");
}

TEST_F(OtherClipboards, ProvideText) {
    const auto expect = [this](const std::string& text, const std::string& printed,
                               const std::string& options = "") {
        run_in_background("printf '" + printed + "' | " + write_ + ' ' + options);
        await_text(text);
    };
    expect("one\r\nGröße", "one\\r\\nGröße");
    for (const char* target : {"STRING", "TEXT", "text/plain", "text/plain;charset=utf-8"}) {
        const std::string text = std::string("( ") + target + " )";
        expect(text, text, std::string("-t '") + target + "'");
    }
    if (one_format_) {
        expect("Größe", "Gr\\366\\337e", "-t 'text/plain;charset=iso-8859-1'");
    }
    expect("(none)", "no text", "-t image/png");
    expect("\xEF\xBF\xBD\xEF\xBF\xBD", "\\377\\376", "-t UTF8_STRING"); // invalid UTF-8

    run_in_background("head -c 20000000 /dev/zero | tr '\\0' x | " + write_);
    std::string large;
    large.resize(20'000'000, 'x');
    await_text(large);
    // When the owner ends the clipboard is empty.
    run_in_background("echo x | " + stay_ + " 2>/dev/null & echo $! >owner");
    await_text("x\n");
    run_in_background("kill $(cat owner)");
    if (user::clipboard_forgets()) {
        await_text("(none)");
    }
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
    if (user::clipboard_forgets()) {
        EXPECT_EQ(paste(), "(none)");
    }
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_ENHMETAFILE));
    EXPECT_FALSE(CloseClipboard());
}

} // namespace
