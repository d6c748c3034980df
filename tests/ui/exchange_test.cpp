// The commands that move turtles in and out, by their menu ids and with the desktop's dialogs.
#include "dialogs/metafile_dialog.h"
#include "files/metafile.h"
#include "files/printing.h"
#include "resources/resource.h"
#include "tests/files/folder.h"
#include "tests/support/answers.h"
#include "tests/support/metafile_text.h"
#include "tests/support/trees.h"
#include "tests/ui/program.h"
#include "ui/breeding_commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;
using Texts = std::vector<std::string>;

std::string program(const PopulationWindow& window, int index) {
    return window.programs()[static_cast<std::size_t>(index)];
}

void give_program(const PopulationWindow& window, int index, const std::string& text) {
    window.record()->selected = static_cast<std::int16_t>(index);
    LogoReplaceTurtle(window.handle(), window.record(), tree_of(text).release());
}

TEST(Exchange, EveryCommandForOneTurtleNeedsASelection) {
    const PopulationWindow window(small_params(8));
    const std::pair<int, const char*> refusals[] = {
        {IDM_EDIT_TURTLE, "You must select a turtle to copy."},
        {IDM_COPY, "You must select a turtle to copy."},
        {IDM_LOAD_TURTLE, "You must select a turtle to load into."},
        {IDM_SAVE_TURTLE, "You must select a turtle to save."},
        {IDM_SAVE_EPS, "You must select a turtle to save."},
        {IDM_SAVE_METAFILE, "You must select a turtle to save."},
        {IDM_PASTE, "You must select a turtle to paste onto."},
        {IDM_PRINT_TURTLE, "You must select a turtle to print."},
    };
    for (const auto& [command, text] : refusals) {
        EXPECT_EQ(alerts_of([&, id = command] { window.command(id); }), Texts{text});
    }
}

TEST(Exchange, ATurtleIsSavedAndLoadedOntoAnother) {
    const Folder folder;
    const PopulationWindow window(small_params(8));
    give_program(window, 1, "( BLOCK ( FWD_10 ) ( LEFT_90 ) ( FWD_5 ) )");
    Answers().file(folder.path("spiral")).to(window, IDM_SAVE_TURTLE);
    const std::string text =
        "1\r\n( BLOCK\r\n    ( FWD_10 )\r\n    ( LEFT_90 )\r\n    ( FWD_5 )\r\n)\r\n";
    EXPECT_EQ(content_of(folder.path("spiral.txt")), text);

    window.record()->selected = 6;
    window.record()->current->lifers[6].score = -1.0;
    Answers().file(folder.path("spiral.txt")).to(window, IDM_LOAD_TURTLE);
    EXPECT_EQ(program(window, 6), program(window, 1));
    EXPECT_EQ(window.record()->current->lifers[6].score, window.record()->current->lifers[1].score);
    EXPECT_EQ(window.record()->selected, 6);

    // Replacing a file needs a confirmation; after No it stays.
    give_program(window, 1, "( FWD_1 )");
    Answers().file(folder.path("spiral.txt")).question("No").cancel().to(window, IDM_SAVE_TURTLE);
    EXPECT_EQ(content_of(folder.path("spiral.txt")), text);
    Answers().file(folder.path("spiral.txt")).question("Yes").to(window, IDM_SAVE_TURTLE);
    EXPECT_EQ(content_of(folder.path("spiral.txt")), "1\r\n( FWD_1 )\r\n");

    write_file(folder.path("bad.txt"), "1\r\n( NONSENSE )\r\n");
    Answers().file(folder.path("bad.txt")).to(window, IDM_LOAD_TURTLE);
    EXPECT_EQ(program(window, 1), "( FWD_1 )");
}

TEST(Exchange, ALoadOfFewTurtlesKeepsTheOthersAndRedrawsAll) {
    const Folder folder;
    const PopulationWindow window(small_params(8));
    LogoWindow* record = window.record();
    const Texts before = window.programs();
    write_file(folder.path("two.lpf"), "1\n( FWD_1 )\n( FWD_2 )\n");
    for (int i = 0; i < 8; ++i) {
        record->current->lifers[i].score = -5.0;
    }
    record->zoomTree = record->current->lifers[1].program; // shown alone while it is replaced
    record->showGrid = 0;
    record->selected = 0;
    record->lifeFlags[1] = 0;
    Answers()
        .file(folder.path("two.lpf"))
        .dialog("Dialog",
                [&](HWND alert) {
                    EXPECT_EQ(user::text(alert, IDC_MESSAGE_TEXT), "Loaded 2 turtles.");
                    EXPECT_EQ(record->busy, 1);
                    EXPECT_EQ(line_of(record->zoomTree), "( FWD_1 )");
                    user::resize(window.handle(), 500, 400); // it paints during the alert
                })
        .press("Dialog", "Return")
        .gone("Dialog")
        .to(window, IDM_LOAD_POPULATION);
    Texts wanted = before;
    wanted[0] = "( FWD_1 )";
    wanted[1] = "( FWD_2 )";
    EXPECT_EQ(window.programs(), wanted);
    EXPECT_EQ(record->selected, 0);
    EXPECT_EQ(record->lifeFlags[1], 0);
    EXPECT_EQ(record->busy, 0);
    for (int i = 0; i < 8; ++i) {
        EXPECT_NE(record->current->lifers[i].score, -5.0) << i;
    }
    record->current->lifers[7].score = -5.0;
    Answers().cancel().to(window, IDM_LOAD_POPULATION);
    EXPECT_NE(record->current->lifers[7].score, -5.0);
    EXPECT_EQ(window.programs(), wanted);
}

TEST(Exchange, TheMappingDialogRemembersWhatWasConfirmed) {
    const Folder folder;
    const PopulationWindow window(small_params(8));
    give_program(window, 2, "( BLOCK ( FWD_10 ) ( RED_64 ) ( LEFT_90 ) ( PEN_UP ) ( FWD_5 ) )");
    const std::string title = "Enhanced Metafile Mapping";
    const auto shows = [](HWND dialog, const char* pen, int mode) {
        EXPECT_EQ(user::text(dialog, IDC_PEN_SIZE), pen);
        EXPECT_TRUE(user::checked(dialog, mode));
    };
    const std::string three = std::string(30, '0') + '3'; // the most that is read of the field
    metaPenSize = "1";
    metaMapCode = "LM";
    Answers()
        .file(folder.path("turtle"))
        .dialog(title,
                [&](HWND dialog) {
                    shows(dialog, "1", IDC_LOW_METRIC);
                    user::click_control(dialog, IDC_HIGH_ENGLISH);
                    SetDlgItemTextA(dialog, IDC_PEN_SIZE, (three + "999").c_str());
                })
        .dialog(title, [](HWND dialog) { user::click_control(dialog, IDOK); })
        .to(window, IDM_SAVE_METAFILE);
    const Texts records = metafile_lines(content_of(folder.path("turtle.txt")));
    EXPECT_EQ(records.at(1), "SETMAPMODE 5");
    EXPECT_EQ(records.at(2), "CREATEPEN 1 width 3 color 0x000000");

    // An empty pen size keeps the dialog open; a dismissal after that writes nothing.
    Answers()
        .file(folder.path("none.emf"))
        .dialog(title,
                [&](HWND dialog) {
                    shows(dialog, three.c_str(), IDC_HIGH_ENGLISH);
                    user::type(dialog, IDC_PEN_SIZE, "");
                    user::press(dialog, "Return");
                })
        .press(title, "Esc")
        .to(window, IDM_SAVE_METAFILE);
    EXPECT_FALSE(std::filesystem::exists(folder.path("none.emf")));
    EXPECT_EQ(metaPenSize, "");

    metaPenSize = "1";
    metaMapCode = "LM";
}

// In blocks of 63 children, the most that the text form allows.
TEST(Exchange, AMillionLeavesAreSavedAndLoaded) {
    const Folder folder;
    const PopulationWindow window(small_params(8));
    LogoWindow* record = window.record();
    std::string leaves = "( FWD_1 ) ";
    for (const int children : {63, 63, 63, 4}) {
        leaves = "( BLOCK " + times(children, leaves) + ") ";
    }
    give_program(window, 2, leaves);
    const std::string million = program(window, 2);
    Answers().file(folder.path("million")).to(window, IDM_SAVE_TURTLE);
    Answers().file(folder.path("million")).to(window, IDM_SAVE_EPS);
    Answers()
        .file(folder.path("million.emf"))
        .press("Enhanced Metafile Mapping", "Return")
        .to(window, IDM_SAVE_METAFILE);
    Answers()
        .press("Print Pensize", "Return")
        .print_to(folder.path("million.pdf"))
        .to(window, IDM_PRINT_TURTLE);
    EXPECT_EQ(folder.count(), 4);
    EXPECT_TRUE(std::filesystem::exists(folder.path("million.eps")));
    window.command(IDM_COPY);
    record->selected = 3;
    window.command(IDM_PASTE);
    record->selected = 4;
    Answers().file(folder.path("million.txt")).to(window, IDM_LOAD_TURTLE);
    EXPECT_TRUE(program(window, 3) == million); // EXPECT_EQ would print both
    EXPECT_TRUE(program(window, 4) == million);
}

// A window may be destroyed while a dialog of its command is open.
TEST(Exchange, ClosingTheWindowEndsItsCommand) {
    const Folder folder;
    for (const int command :
         {IDM_LOAD_TURTLE, IDM_SAVE_TURTLE, IDM_SAVE_EPS, IDM_SAVE_METAFILE, IDM_SAVE_POPULATION,
          IDM_LOAD_POPULATION, IDM_PRINT_TURTLE, IDM_REVERT}) {
        const PopulationWindow window(small_params(8));
        window.record()->selected = 1;
        HWND handle = window.handle();
        Answers answers;
        if (command == IDM_PRINT_TURTLE || command == IDM_REVERT) {
            answers.dialog(command == IDM_REVERT ? "Dialog" : "Print Pensize",
                           [handle](HWND) { DestroyWindow(handle); });
        } else {
            answers.then([] {}).then([handle] { DestroyWindow(handle); });
        }
        answers.to(window, command);
        EXPECT_FALSE(IsWindow(handle)) << command;
        EXPECT_EQ(user::system_dialog(), "") << command;
        EXPECT_EQ(user::find_window("Dialog"), nullptr);
    }
}

// A command continues only when every dialog that was opened later is closed; its window may be
// used before that. It writes the turtle as it was when the command started.
TEST(Exchange, TheSelectionMayChangeWhileADialogIsOpen) {
    const Folder folder;
    const PopulationWindow window(small_params(8));
    const auto saved = [&](int command, bool change) {
        give_program(window, 2, "( BLOCK ( FWD_100 ) ( LEFT_90 ) ( FWD_100 ) )");
        const std::string name = folder.path(change ? "changed" : "whole");
        Answers answers;
        if (change) {
            answers.then(
                [&] { window.record()->current->lifers[2].program->children[0]->op = PEN_UP; });
        }
        if (command == IDM_PRINT_TURTLE) {
            answers.press("Print Pensize", "Return").print_to(name).to(window, command);
            return std::to_string(content_of(name).size()); // it contains the time
        }
        answers.file(name);
        if (command == IDM_SAVE_METAFILE) {
            answers.press("Enhanced Metafile Mapping", "Return");
        }
        answers.to(window, command);
        const std::string timed = content_of(name + ".eps"); // contains the time, too
        return command == IDM_SAVE_EPS ? std::to_string(timed.size()) : content_of(name + ".txt");
    };
    for (const int command : {IDM_SAVE_TURTLE, IDM_SAVE_EPS, IDM_SAVE_METAFILE, IDM_PRINT_TURTLE}) {
        EXPECT_EQ(saved(command, true), saved(command, false)) << command;
    }

    // A loaded turtle replaces the one selected at the start; a loaded population replaces the one
    // shown.
    write_file(folder.path("read.txt"), "1\n( FWD_5 )\n");
    window.record()->selected = 3;
    Answers()
        .then([&] { window.record()->selected = 5; })
        .file(folder.path("read.txt"))
        .to(window, IDM_LOAD_TURTLE);
    EXPECT_EQ(program(window, 3), "( FWD_5 )");
    Answers()
        .then([&] { LogoEvolvePop(window.handle(), window.record()); })
        .file(folder.path("read.txt"))
        .alert("Loaded 1 turtles.")
        .to(window, IDM_LOAD_POPULATION);
    EXPECT_EQ(program(window, 0), "( FWD_5 )");
}

} // namespace
