// What Copy places and what Paste reads.
#include "files/clipboard.h"
#include "platform/testing/user.h"
#include "tests/support/metafile_text.h"
#include "tests/support/trees.h"
#include "tests/support/user_loop.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;
using Texts = std::vector<std::string>;

void set_text(const std::string& text) {
    ASSERT_TRUE(OpenClipboard(nullptr) && EmptyClipboard());
    offer_text(text);
    EXPECT_TRUE(CloseClipboard());
}

class ClipboardTest : public testing::Test {
  protected:
    ClipboardTest() { ctx_.max_steps = kDefaultMaxSteps; }

    bool copy(const std::string& program) {
        const ExprTree tree = program.empty() ? nullptr : tree_of(program);
        return CopyTurtle(nullptr, {&ctx_, tree.get(), {}});
    }
    // The program that is pasted; "nothing" for none.
    std::string paste() {
        std::string pasted = "nothing";
        EXPECT_FALSE(PasteTurtle(nullptr, {&ctx_, nullptr, [&](ExprNode* tree) {
                                               const ExprTree owner(tree);
                                               pasted = line_of(tree);
                                           }}));
        return pasted;
    }

    DrawContext ctx_{};
};

TEST_F(ClipboardTest, ATurtleWithoutAProgramIsAnEmptyPicture) {
    set_text("old");
    ASSERT_TRUE(copy(""));
    EXPECT_FALSE(IsClipboardFormatAvailable(CF_TEXT));
    EXPECT_EQ(metafile_lines(user::copied("image/x-emf")).front().find("HEADER bounds 0 0 -1 -1 "),
              0U);
    EXPECT_EQ(paste(), "nothing"); // and no alert, which would block the test
}

TEST_F(ClipboardTest, PasteReadsEveryLayout) {
    set_text(" ( FWD_1 ) ");
    EXPECT_EQ(paste(), "( FWD_1 )");
    set_text("( BLOCK\r\n    ( FWD_1 )\r\n    ( IF_PEN_UP\r\n    )\r\n)\r\n");
    EXPECT_EQ(paste(), "( BLOCK ( FWD_1 ) ( IF_PEN_UP ) )");
    ASSERT_TRUE(copy("( REPEAT_3 ( RIGHT_45 ) ( PEN_UP ) )"));
    EXPECT_EQ(paste(), "( REPEAT_3 ( RIGHT_45 ) ( PEN_UP ) )");
    EXPECT_FALSE(CloseClipboard()); // it is closed already
}

TEST_F(ClipboardTest, TextThatDoesNotParseIsRefused) {
    for (const char* text : {"", "Dear Sir", "( NONSENSE )"}) {
        set_text(text);
        EXPECT_EQ(alerts_of([&] { EXPECT_EQ(paste(), "nothing"); }),
                  Texts{"Could not parse expression on Clipboard. It does not appear to be a valid "
                        "Tarnwick program."});
    }
}

TEST_F(ClipboardTest, AClipboardThatAnotherWindowOpenedIsLeftAlone) {
    set_text("( FWD_1 )");
    HWND other = show_owner();
    ASSERT_TRUE(OpenClipboard(other));
    EXPECT_EQ(alerts_of([&] { EXPECT_FALSE(copy("( FWD_2 )")); }),
              Texts{"Could not open clipboard."});
    EXPECT_EQ(alerts_of([&] { EXPECT_EQ(paste(), "nothing"); }),
              Texts{"Could not open clipboard."});
    CloseClipboard();
    DestroyWindow(other);
    EXPECT_EQ(paste(), "( FWD_1 )");
}

} // namespace
