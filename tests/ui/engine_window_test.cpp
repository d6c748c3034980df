// The turtle editor.
#include "ui/engine_window.h"

#include "resources/resource.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"
#include "tests/ui/program.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;

// An editor on a program, shown as the command shows it.
class Editor {
  public:
    explicit Editor(const std::string& program) : Editor(tree_of(program)) {}
    explicit Editor(ExprTree tree) {
        prepare_program();
        window_ = CreateEngineWindow(nullptr, std::move(tree));
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
    RECT client() const {
        RECT client{};
        GetClientRect(window_, &client);
        return client;
    }

    // Types a limit and redraws, as a user does.
    void limit(const std::string& text) const {
        user::type(window_, IDC_LIMIT, text);
        settle();
        user::click_control(window_, IDC_REDRAW);
        settle();
    }

    // The box around what is drawn below the controls; left > right when there is nothing.
    RECT ink() const {
        const RECT area{0, 40, client().right, client().bottom};
        const std::vector<std::uint32_t> pixels = user::pixels(window_, area);
        const int width = area.right;
        RECT box{area.right, area.bottom, -1, -1};
        for (int i = 0; i < static_cast<int>(pixels.size()); ++i) {
            if ((pixels[static_cast<std::size_t>(i)] & 0xFFFFFFU) != 0xFFFFFFU) {
                const LONG x = i % width;
                const LONG y = i / width + 40;
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                       std::max(box.bottom, y)};
            }
        }
        return box;
    }

  private:
    HWND window_;
};

TEST(EngineWindow, FramesItsControlsAndFillsTheRest) {
    const Editor editor("( BLOCK ( FWD_100 ) ( LEFT_90 ) ( FWD_50 ) )");
    EXPECT_EQ(user::text(editor.handle(), IDC_LIMIT), "10240");
    EXPECT_EQ(user::text(editor.handle(), IDC_REDRAW), "Redraw...");
    EXPECT_EQ(editor.record()->stepLimit, 10240);
    for (const auto& [width, height] : {std::pair(400, 300), {700, 200}, {150, 600}}) {
        user::resize(editor.handle(), width, height);
        settle();
        const RECT client = editor.client();
        for (const int y : {0, 1, 36, 37}) {
            EXPECT_EQ(user::pixel(editor.handle(), client.right / 2, y), RGB(0, 0, 0)) << y;
        }
        for (const LONG x : {LONG{0}, LONG{1}, client.right - 2, client.right - 1}) {
            EXPECT_EQ(user::pixel(editor.handle(), x, 4), RGB(0, 0, 0)) << x;
        }
        EXPECT_EQ(user::pixel(editor.handle(), 5, 38), RGB(255, 255, 255));
        EXPECT_EQ(user::pixel(editor.handle(), 5, 5), RGB(255, 255, 255));
        // The bounds are two units larger than the drawing, 104 across and 54 up.
        const RECT ink = editor.ink();
        EXPECT_NEAR(ink.left, client.right * 2 / 104, 1);
        EXPECT_NEAR(ink.right, client.right * 102 / 104, 1);
        EXPECT_NEAR(ink.top, 40 + (client.bottom - 40) * 2 / 54, 1);
        EXPECT_NEAR(ink.bottom, 40 + (client.bottom - 40) * 52 / 54, 1);
    }
}

TEST(EngineWindow, TheLimitCountsOnceRedrawIsPressed) {
    const Editor editor("( BLOCK ( FWD_10 ) ( LEFT_90 ) ( FWD_10 ) ( LEFT_90 ) ( FWD_100 ) )");
    user::type(editor.handle(), IDC_LIMIT, "1");
    settle();
    EXPECT_EQ(editor.record()->stepLimit, 10240);
    user::click_control(editor.handle(), IDC_REDRAW);
    settle();
    EXPECT_EQ(editor.record()->stepLimit, 1);
    RECT ink = editor.ink(); // one line across, the wider for being alone
    EXPECT_EQ(ink.top, ink.bottom);
    editor.limit("3");
    ink = editor.ink();
    EXPECT_GT(ink.bottom, ink.top);
    EXPECT_NEAR(ink.left, editor.client().right * 2 / 14, 1);
    editor.limit("5");
    EXPECT_NEAR(editor.ink().left, editor.client().right * 2 / 104, 3);

    editor.limit("");
    EXPECT_EQ(editor.record()->stepLimit, 0);
    EXPECT_LT(editor.ink().right, 0);
    editor.limit("99999999999");
    EXPECT_EQ(editor.record()->stepLimit, 2147483647);
    editor.limit("12a-b4"); // digits only
    EXPECT_EQ(editor.record()->stepLimit, 124);
    user::resize(editor.handle(), 200, 30); // no room for a drawing
    settle();
}

TEST(EngineWindow, EditorsStandAloneOnCopies) {
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

TEST(EngineWindow, AMissingProgramIsRefused) {
    const Editor editor(ExprTree{});
    const auto texts = alerts_of([&] {
        SendMessageA(editor.handle(), WM_COMMAND, IDM_PRINT_TURTLE, 0);
        SendMessageA(editor.handle(), WM_COMMAND, IDM_SAVE_EPS, 0);
    });
    EXPECT_EQ(texts, (std::vector<std::string>{"FATAL, turtle expression is NULL!",
                                               "You must select a turtle to save."}));
}

TEST(EngineWindow, NoMemoryIsTold) {
    prepare_program();
    const auto texts = alerts_of([] {
        ExprTree tree = tree_of("( FWD_1 )");
        const FailingNew fail(0);
        EXPECT_EQ(CreateEngineWindow(nullptr, std::move(tree)), nullptr);
    });
    EXPECT_EQ(texts, std::vector<std::string>{"Could not allocate memory for EngineWindow [1]."});
}

} // namespace
