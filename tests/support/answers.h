// The simulated user's answers to dialogs.
#pragma once

#include "resources/resource.h"
#include "tests/support/user_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace pelmora_test {

// A script that answers dialogs in order.
class Answers {
  public:
    Answers()
        : script_([this](const std::string& failure) {
              failure_ = failure;
              if (!failure.empty()) {
                  PostQuitMessage(0); // ends the dialog that was not answered
              }
          }) {}
    ~Answers() { EXPECT_EQ(failure_, ""); }
    Answers(const Answers&) = delete;
    Answers& operator=(const Answers&) = delete;

    Answers& file(const std::string& name) {
        return system("the name", [name] { user::choose_file(name); });
    }
    Answers& cancel() {
        return system("cancel", [] { user::cancel_system_dialog(); });
    }
    Answers& print_to(const std::string& path) {
        return system("the path", [path] { user::print_to_file(path); });
    }
    Answers& question(const std::string& button) {
        return question([button] { user::answer(button); });
    }
    // Runs `action` when a question is shown and waits until it is closed.
    Answers& question(std::function<void()> action) {
        script_.await("a question", [] { return !user::question().empty(); });
        script_.then("the answer", std::move(action));
        script_.await("its end", [] { return user::question().empty(); });
        return *this;
    }
    // Runs `action` with the dialog of this title when it is open.
    Answers& dialog(const std::string& title, std::function<void(HWND)> action) {
        script_.await(title, [title] { return user::find_window(title) != nullptr; });
        script_.then(title,
                     [title, action = std::move(action)] { action(user::find_window(title)); });
        return *this;
    }
    Answers& press(const std::string& title, const char* key) {
        return dialog(title, [key](HWND dialog) { user::press(dialog, key); });
    }
    Answers& await(const std::string& name, std::function<bool()> condition) {
        script_.await(name, std::move(condition));
        return *this;
    }
    Answers& gone(const std::string& title) {
        return await("the end of " + title,
                     [title] { return user::find_window(title) == nullptr; });
    }
    Answers& alert(const std::string& text) {
        return dialog("Dialog",
                      [text](HWND alert) {
                          EXPECT_EQ(user::text(alert, IDC_MESSAGE_TEXT), text);
                          user::press(alert, "Return");
                      })
            .gone("Dialog");
    }
    Answers& then(std::function<void()> action) {
        script_.then("then", std::move(action));
        return *this;
    }
    // Runs `action`, which opens the dialogs, and returns when the script has ended.
    void during(const std::function<void()>& action) {
        script_.start();
        action();
        do {
            settle();
        } while (failure_ == kRunning);
    }
    // Sends a command to a window, which opens the dialogs.
    void to(HWND window, int command) {
        during([=] { SendMessageA(window, WM_COMMAND, WPARAM(command), 0); });
    }
    template <class Window>
    void to(const Window& window, int command) {
        to(window.handle(), command);
    }

  private:
    // Runs `action` when a file or print dialog is open.
    Answers& system(const char* name, std::function<void()> action) {
        script_.await("a system dialog", [] { return !user::system_dialog().empty(); });
        script_.then(name, std::move(action));
        return *this;
    }

    static constexpr char kRunning[] = "the script did not end";
    std::string failure_ = kRunning;
    user::Script script_;
};

// The device context from a print dialog that prints to a file. `exists`: confirms replacing the
// file. The caller deletes it.
inline HDC printer_to(HWND owner, const std::string& path, bool exists = false) {
    PRINTDLGA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.nFromPage = dialog.nToPage = dialog.nCopies = 1;
    dialog.Flags = PD_RETURNDC;
    Answers answers;
    answers.print_to(path);
    if (exists) {
        answers.question("Yes");
    }
    answers.during([&] { EXPECT_TRUE(PrintDlgA(&dialog)); });
    EXPECT_NE(dialog.hDC, nullptr);
    return dialog.hDC;
}

} // namespace pelmora_test
