// The file dialogs: accepted and refused names.
#include "files/file_dialog.h"
#include "resources/resource.h"
#include "services/message.h"
#include "tests/contract/test_windows.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using namespace pelmora_test;
namespace fs = std::filesystem;

constexpr char kFilter[] = "Turtle Files\0*.PMT;*.ltf\0All Files\0*.*\0";

class FileDialogs : public Windows {
  protected:
    FileDialogs() {
        fs::remove_all("names");
        fs::create_directories("names/folder");
        for (const char* name : {"spiral.pmt", "TREE.PmT", "other.ltf", "notes.txt", "nodot"}) {
            std::ofstream(fs::path("names") / name) << "x";
        }
    }

    static std::string in_folder(const std::string& name) {
        return (fs::current_path() / "names" / name).string();
    }

    // Opens a dialog, which the script answers. Returns the chosen name, "" for none.
    std::string ask(BOOL(WINAPI* show)(OPENFILENAMEA*), DWORD flags, user::Script& script) const {
        std::vector<char> name(512);
        OPENFILENAMEA request{};
        request.lStructSize = sizeof request;
        request.hwndOwner = window_;
        request.lpstrFilter = kFilter;
        request.nFilterIndex = 1;
        request.lpstrFile = name.data();
        request.nMaxFile = static_cast<DWORD>(name.size());
        request.Flags = flags | OFN_PATHMUSTEXIST;
        script.start();
        const bool chosen = show(&request) != FALSE;
        EXPECT_EQ(user::system_dialog(), "");
        EXPECT_EQ(user::question(), "");
        return chosen ? name.data() : "";
    }

    // Enters names in one dialog until one is accepted and cancels after the last. Returns for each
    // the message that was shown, or "taken".
    Lines try_names(BOOL(WINAPI* show)(OPENFILENAMEA*), DWORD flags, const Lines& names) {
        Lines told;
        user::Script script([](const std::string& failure) { EXPECT_EQ(failure, ""); });
        script.await("the dialog", [] { return !user::system_dialog().empty(); });
        for (const std::string& name : names) {
            script.then("try " + name, [n = name] { user::choose_file(n); });
            script.then("what it says", [&] {
                const std::string text = user::question();
                told.push_back(text.substr(text.find('\n') + 1));
                if (!text.empty()) {
                    user::answer("OK");
                }
            });
            script.await("the reply", [] { return user::question().empty(); });
        }
        script.then("cancel", [] { user::cancel_system_dialog(); });
        taken_ = ask(show, flags, script);
        if (!taken_.empty()) {
            told.emplace_back("taken");
        }
        return told;
    }

    Lines open(const Lines& names) { return try_names(GetOpenFileNameA, OFN_FILEMUSTEXIST, names); }
    Lines save(const Lines& names) { return try_names(GetSaveFileNameA, 0, names); }

    std::string taken_; // the accepted name of try_names()
};

const char* const kNotFound = "File not found.\nCheck the file name and try again.";
const char* const kNoPath = "Path does not exist.\nCheck the path and try again.";

TEST_F(FileDialogs, OpenAcceptsExistingFiles) {
    ASSERT_EQ(::mkfifo("names/pipe", 0600), 0);
    fs::create_symlink("notes.txt", "names/link");
    fs::create_symlink("missing", "names/dangling");
    for (const char* name :
         {"he said \"x\".txt", "back\\slash", "a b", "Größe ☃.txt", "50%#?.txt"}) {
        std::ofstream(fs::path("names") / name) << "x";
        EXPECT_EQ(open({in_folder(name)}), Lines{"taken"});
        EXPECT_EQ(taken_, in_folder(name));
        // The folder is remembered.
        EXPECT_EQ(open({name}), Lines{"taken"});
        EXPECT_EQ(taken_, in_folder(name));
    }
    for (const char* name : {"pipe", "link", "nodot"}) {
        EXPECT_EQ(open({name}), Lines{"taken"}) << name;
    }
    EXPECT_EQ(open({"/dev/null"}), Lines{"taken"});
    EXPECT_EQ(open({in_folder("\"a b\"")}), Lines{kNotFound});
    EXPECT_EQ(open({in_folder("missing"), in_folder("dangling"), in_folder("no/such"), "",
                    in_folder("folder"), "*.txt", in_folder("notes.txt")}),
              (Lines{kNotFound, kNotFound, kNoPath, "", "", "", "taken"}));
    EXPECT_EQ(open({in_folder("folder"), "../\"notes.txt\"", "\"../notes.txt\""}),
              (Lines{"", kNotFound, "taken"}));
}

TEST_F(FileDialogs, SaveAcceptsNewNamesAsTyped) {
    for (const char* name : {"new", "new.txt", "x.y.z", " spaced ", "notes.txt"}) {
        EXPECT_EQ(save({in_folder(name)}), Lines{"taken"});
        EXPECT_EQ(taken_, in_folder(name));
    }
    EXPECT_EQ(save({"*.txt", "?", "no/such", "folder", ""}), (Lines{"", "", kNoPath, "", ""}));
    EXPECT_EQ(taken_, "");
    fs::create_symlink("missing", "names/dangling");
    EXPECT_EQ(save({in_folder("dangling")}), Lines{"taken"});
}

// The layer's own: the dialog of Windows has other limits.
TEST_F(FileDialogs, NamesTooLongForTheProgramAreRefused) {
    fs::create_directories(in_folder(std::string(60, 'd')));
    const auto of_size = [](std::size_t size) {
        const std::string folder = in_folder(std::string(60, 'd'));
        return folder + '/' + std::string(size - folder.size() - 1, 'n');
    };
    for (const std::size_t size : {259, 260}) {
        std::ofstream(of_size(size)) << "x";
    }
    const auto open_name = [](OPENFILENAMEA* request) -> BOOL {
        const std::string name = pelmora::AskOpenName(request->hwndOwner, kFilter);
        *std::copy(name.begin(), name.end(), request->lpstrFile) = '\0';
        return name.empty() ? FALSE : TRUE;
    };
    const auto save_name = [](OPENFILENAMEA* request) -> BOOL {
        const std::string name =
            pelmora::AskSaveName(request->hwndOwner, kFilter, pelmora::Overwrite::ask, ".txt");
        *std::copy(name.begin(), name.end(), request->lpstrFile) = '\0';
        return name.empty() ? FALSE : TRUE;
    };
    const auto limit = [](int most) {
        return "With its folder it may have " + std::to_string(most) + " characters.";
    };
    EXPECT_EQ(try_names(open_name, 0, {of_size(260), of_size(259)}), (Lines{limit(259), "taken"}));
    EXPECT_EQ(try_names(save_name, 0, {of_size(600), of_size(5000), of_size(512), of_size(511)}),
              (Lines{limit(511), limit(511), limit(511), "taken"}));
}

TEST_F(FileDialogs, FiltersIgnoreCase) {
    const auto sorted = [] {
        Lines names = user::listed_files();
        std::sort(names.begin(), names.end());
        return names;
    };
    open({in_folder("nodot")}); // so that the next dialog starts in the folder
    user::Script script([](const std::string& failure) { EXPECT_EQ(failure, ""); });
    script.await("the dialog", [] { return user::system_dialog() == "Open"; });
    script.await("the turtles", [&] {
        return sorted() == Lines{"TREE.PmT", "folder", "other.ltf", "spiral.pmt"};
    });
    script.then("all files", [] { user::choose_filter(1); });
    script.await("them", [&] {
        return sorted() ==
               Lines{"TREE.PmT", "folder", "nodot", "notes.txt", "other.ltf", "spiral.pmt"};
    });
    script.then("look", [] { user::save_system_dialog_picture("open.png"); });
    script.then("cancel", [] { user::cancel_system_dialog(); });
    EXPECT_EQ(ask(GetOpenFileNameA, OFN_FILEMUSTEXIST, script), "");
}

TEST_F(FileDialogs, OtherWindowsStayActiveAndTheOwnerDestroysTheDialog) {
    HWND other = show_other();
    settle();
    take_log();
    user::Script script([](const std::string& failure) { EXPECT_EQ(failure, ""); });
    script.await("the dialog", [] { return !user::system_dialog().empty(); });
    script.then("both windows", [&] {
        user::click(window_, 9, 9);
        user::press(window_, "Ctrl+E");
        user::click(other, 5, 6);
        InvalidateRect(other, nullptr, FALSE);
    });
    script.then("a name that exists", [] { user::choose_file(in_folder("notes.txt")); });
    script.await("the question", [] { return !user::question().empty(); });
    script.then("end", [&] {
        EXPECT_EQ(take_log(), (Lines{"left 1 at 5,6", "paint"}));
        DestroyWindow(window_);
    });
    script.start();
    EXPECT_EQ(pelmora::AskSaveName(window_, kFilter, pelmora::Overwrite::ask, ".txt"), "");
    DestroyWindow(other);
    settle();
}

TEST_F(FileDialogs, TheOwnerIsUnblockedWhileTheDialogOfAnotherWindowIsOpen) {
    HWND other = show_other();
    settle();
    take_log();
    on_message = [](HWND window, UINT message, WPARAM) -> LRESULT {
        return message == WM_USER ? pelmora::ShowMessage(window, "later") : 0;
    };
    user::Script script([](const std::string& failure) { EXPECT_EQ(failure, ""); });
    const auto alert = [] { return user::find_window("Dialog"); };
    script.await("the dialog", [] { return !user::system_dialog().empty(); });
    script.then("another's alert", [&] { PostMessageA(other, WM_USER, 0, 0); });
    script.await("it", [&] { return alert() != nullptr; });
    script.then("a name", [] { user::choose_file(in_folder("heard.txt")); });
    script.await("the end", [] { return user::system_dialog().empty(); });
    script.then("a click", [&] { user::click(window_, 8, 8); });
    script.then("the other end", [&] {
        EXPECT_EQ(take_log(), (Lines{"user 0", "left 1 at 8,8"}));
        user::press(alert(), "Return");
    });
    script.start();
    EXPECT_EQ(pelmora::AskSaveName(window_, kFilter, pelmora::Overwrite::ask, ".txt"),
              in_folder("heard.txt"));
    DestroyWindow(other);
    settle();
}

} // namespace
