// The turtle editor.
#include "ui/engine_window.h"

#include "resources/resource.h"
#include "tests/files/folder.h"
#include "tests/support/answers.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"
#include "tests/ui/program.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// An editor on a program, shown as the command shows it.
class Editor {
  public:
    explicit Editor(const std::string& program) {
        prepare_program();
        window_ = CreateEngineWindow(nullptr, tree_of(program));
        ShowWindow(window_, SW_SHOW);
        UpdateWindow(window_);
        settle();
    }
    ~Editor() {
        if (IsWindow(window_)) {
            DestroyWindow(window_);
        }
        settle();
    }
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;

    HWND handle() const { return window_; }
    EngineWindow* record() const {
        return reinterpret_cast<EngineWindow*>(GetWindowLongPtrA(window_, 0));
    }

  private:
    HWND window_;
};

// The tour checks what a limit draws.
TEST(EngineWindow, TheLimitTakesEffectWhenRedrawIsPressed) {
    const Editor editor("( BLOCK ( FWD_10 ) ( LEFT_90 ) ( FWD_10 ) ( LEFT_90 ) ( FWD_100 ) )");
    int last = 10240;
    for (const auto& [typed, limit] : {std::pair("", 0),
                                       {"99999999999", 2147483647},
                                       {"12a-b4", 124}, // digits only
                                       {"1", 1}}) {
        user::type(editor.handle(), IDC_LIMIT, typed);
        settle();
        EXPECT_EQ(editor.record()->stepLimit, last);
        user::click_control(editor.handle(), IDC_REDRAW);
        settle();
        EXPECT_EQ(editor.record()->stepLimit, limit);
        last = limit;
    }
    const Folder folder;
    Answers().file(folder.path("limited.ps")).to(editor, IDM_SAVE_EPS);
    const std::string text = content_of(folder.path("limited.ps"));
    EXPECT_NE(text.find("\r\n%%BoundingBox: -2 -2 12 2\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\n/MAXSTEPS 1 def\r\n"), std::string::npos);
    user::resize(editor.handle(), 200, 30); // no room for a drawing
    settle();
}

TEST(EngineWindow, TabMovesTheFocusAndReturnRedraws) {
    const Editor editor("( FWD_10 )");
    const auto press = [&editor](const std::vector<std::string>& keys) {
        for (const std::string& key : keys) {
            user::press(editor.handle(), key);
            settle();
        }
        return user::text(editor.handle(), IDC_LIMIT);
    };
    EXPECT_EQ(press({"Tab", "Home", "7"}), "710240");
    EXPECT_EQ(press({"Return", "End", "1"}), "7102401"); // the field keeps the focus
    EXPECT_EQ(editor.record()->stepLimit, 710240);
    EXPECT_EQ(press({"Tab", "Space", "2"}), "7102401");
    EXPECT_EQ(editor.record()->stepLimit, 7102401);
    EXPECT_EQ(press({"Shift+Tab", "Home", "2"}), "27102401");
    EXPECT_EQ(press({"Shift+Tab", "3", "Shift+Tab", "Return"}), "27102401");
    EXPECT_EQ(editor.record()->stepLimit, 27102401);
    press({"Tab", "Ctrl+W"}); // to the window itself
    EXPECT_FALSE(IsWindow(editor.handle()));
}

TEST(EngineWindow, EditorsOwnIndependentCopies) {
    prepare_program();
    HWND first = nullptr;
    std::string shown;
    {
        const PopulationWindow window(small_params(8));
        window.record()->selected = 2;
        shown = line_of(window.record()->current->lifers[2].program);
        for (int i = 0; i < 2; ++i) {
            window.command(IDM_EDIT_TURTLE);
            settle();
        }
        EXPECT_EQ(user::count_windows("Turtle Editor"), 2);
        user::press(user::find_window("Turtle Editor"), "Ctrl+W");
        settle();
        EXPECT_EQ(user::count_windows("Turtle Editor"), 1);
        first = user::find_window("Turtle Editor");
        window.command(IDM_EVOLVE);
        window.command(IDM_EVOLVE);
    }
    ASSERT_TRUE(IsWindow(first));
    const auto* record = reinterpret_cast<EngineWindow*>(GetWindowLongPtrA(first, 0));
    EXPECT_EQ(line_of(record->tree.get()), shown);
    EXPECT_EQ(record->tree->slot, nullptr);
    user::close(first);
    settle();
    EXPECT_FALSE(IsWindow(first));
}

TEST(EngineWindow, OutOfMemoryIsReported) {
    prepare_program();
    const auto texts = alerts_of([] {
        ExprTree tree = tree_of("( FWD_1 )");
        const FailingNew fail(0);
        EXPECT_EQ(CreateEngineWindow(nullptr, std::move(tree)), nullptr);
    });
    EXPECT_EQ(texts, std::vector<std::string>{"Could not allocate memory for EngineWindow [1]."});
}

} // namespace
