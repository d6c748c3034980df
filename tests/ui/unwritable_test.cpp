// Files that can be opened, but not written: a device that is always full.
#include "services/status.h"
#include "tests/files/folder.h"
#include "tests/support/answers.h"
#include "tests/ui/program.h"

#include <filesystem>

namespace {

using namespace pelmora;
using namespace pelmora_test;

TEST(Unwritable, FailuresAreNotReported) {
    const Folder folder;
    const PopulationWindow window(small_params(8));
    window.record()->selected = 0;
    SetStatusText("before");
    const std::string full = folder.path("full.txt");
    std::filesystem::create_symlink("/dev/full", full);
    for (const int command : {IDM_SAVE_TURTLE, IDM_SAVE_POPULATION, IDM_SAVE_EPS}) {
        Answers answers;
        answers.file(full);
        if (command != IDM_SAVE_EPS) {
            answers.question("Yes");
        }
        answers.to(window, command);
        EXPECT_STREQ(StatusText(), "before");
    }
    Answers().file(full).press("Enhanced Metafile Mapping", "Return").to(window, IDM_SAVE_METAFILE);
    EXPECT_EQ(folder.count(), 1);
}

} // namespace
