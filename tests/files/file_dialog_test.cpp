// What the program asks in the file dialogs, and which names it refuses there.
#include "files/file_dialog.h"
#include "tests/contract/test_windows.h"
#include "tests/files/folder.h"
#include "tests/support/answers.h"

#include <string>

namespace {

using namespace pelmora;
using namespace pelmora_test;

constexpr char kFilter[] = "Turtle Programs\0*.TXT\0All Files\0*.*\0";

class NameDialogs : public Windows {
  protected:
    std::string save(Answers& answers, Overwrite overwrite = Overwrite::ask) const {
        std::string name;
        answers.during([&] { name = AskSaveName(window_, kFilter, overwrite, ".txt"); });
        return name;
    }

    // Expects a message and answers it with `button`; empty: with Return.
    static void expect_message(Answers& answers, const std::string& text,
                               const std::string& button) {
        answers.question([text, button] {
            EXPECT_EQ(user::question(), text);
            button.empty() ? user::answer_with_return() : user::answer(button);
        });
    }

    const Folder folder_;
};

TEST_F(NameDialogs, AskAboutTheFileThatWillBeReplaced) {
    const std::string path = folder_.path("spiral.txt");
    const std::string question = path + " already exists.\nDo you want to replace it?";
    write_file(path, "old");
    write_file(folder_.path("nodot"), "another");
    {
        Answers answers;
        expect_message(answers.file(folder_.path("spiral")), question, "");
        expect_message(answers.file(path), question, "No");
        expect_message(answers.file(folder_.path("spiral")), question, "Yes");
        EXPECT_EQ(save(answers), path);
    }
    {
        Answers answers;
        answers.file(folder_.path("nodot")); // which is not the file that will be written
        EXPECT_EQ(save(answers), folder_.path("nodot.txt"));
    }
    Answers answers;
    answers.file(path);
    EXPECT_EQ(save(answers, Overwrite::silently), path);
}

} // namespace
