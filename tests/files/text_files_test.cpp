// Turtle and population files as text, and how whole files are read and replaced.
#include "files/file_dialog.h"
#include "files/loaded_text.h"
#include "files/population_file.h"
#include "files/turtle_file.h"
#include "model/parse.h"
#include "tests/files/folder.h"
#include "tests/support/failing_new.h"
#include "tests/support/trees.h"
#include "turtle/draw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace pelmora;
using namespace pelmora_test;
namespace fs = std::filesystem;

PopulationOwner population(std::int32_t size, const std::vector<std::string>& programs) {
    EvolveParams params{};
    params.size = size;
    PopulationOwner pop(pop_create(params));
    for (std::size_t i = 0; i < programs.size(); ++i) {
        lifer_set_program(&pop->lifers[i], parse_expr(programs[i].c_str()));
    }
    return pop;
}

std::vector<std::string> lines_of(const Population& pop) {
    std::vector<std::string> lines;
    for (int i = 0; i < pop.size; ++i) {
        lines.push_back(line_of(pop.lifers[i].program));
    }
    return lines;
}

// Stores a text in a population of 4 FWD_1 programs; returns its programs afterwards.
std::vector<std::string> stored(std::string text, int count) {
    const PopulationOwner pop = population(4, std::vector<std::string>(4, "( FWD_1 )"));
    int replaced = 0;
    EXPECT_EQ(store_population_text(text.data(), pop.get(),
                                    [&](const ExprNode* old) {
                                        EXPECT_EQ(line_of(old), "( FWD_1 )");
                                        ++replaced;
                                    }),
              count)
        << text;
    EXPECT_EQ(replaced, count);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(pop->lifers[i].program->slot, &pop->lifers[i].program);
    }
    return lines_of(*pop);
}

TEST(PopulationText, FillsTheLifersInOrderWithWhatParses) {
    const std::string one = "( FWD_1 )";
    const std::string two = "( FWD_2 )";
    const std::string three = "( FWD_3 )";
    using Lines = std::vector<std::string>;
    for (const std::string end : {"\r\n", "\n", "\r", "\n\n\r\n"}) {
        EXPECT_EQ(stored("1" + end + two + end + three + end, 2), (Lines{two, three, one, one}));
        EXPECT_EQ(stored("1" + end + two + end + three, 2), (Lines{two, three, one, one}));
    }
    EXPECT_EQ(stored("1\n" + two + "\n( NONSENSE\n" + three + "\n" + two + "\n", 3),
              (Lines{two, three, two, one}));
    EXPECT_EQ(stored(three + "\n" + two + "\n", 1), (Lines{two, one, one, one}));
    EXPECT_EQ(stored("1\n" + times(10, two + "\n"), 4), Lines(4, two));
    EXPECT_EQ(stored("1", 0), Lines(4, one));
    EXPECT_EQ(stored("1\r\n", 0), Lines(4, one));
    EXPECT_EQ(stored("", 0), Lines(4, one));
}

TEST(PopulationText, ALineBreakAtTheBeginningIsLogged) {
    testing::internal::CaptureStderr();
    stored("\r\n( FWD_2 )\r\nmore than sixteen", 0);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log.find("LOAD POP: improper file at 0: [16]'\r\n( FWD_2 )\r\nmor' ptr x"), 0U)
        << log;
}

TEST(PopulationText, FaultsOfAllLinesShareOneLimit) {
    testing::internal::CaptureStderr();
    stored("1\n" + times(2 * kMaxParseFaults, "( NONSENSE )\n"), 0);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), kMaxParseFaults);
}

TEST(PopulationFile, IsWrittenByteForByteAndReadBack) {
    const Folder folder;
    const std::string path = folder.path("three.lpf");
    const PopulationOwner pop = population(
        4, {"( FWD_1 )", "( BLOCK ( FWD_10 ) ( LEFT_90 ) )", "", "( REPEAT_3 ( RIGHT_45 ) )"});
    ASSERT_TRUE(write_population_file(path, pop.get()));
    std::string text = content_of(path);
    EXPECT_EQ(text, "1\r\n ( FWD_1 ) \r\n ( BLOCK  ( FWD_10 )  ( LEFT_90 )  ) \r\n\r\n"
                    " ( REPEAT_3  ( RIGHT_45 )  ) \r\n");
    // The lifer without a program leaves no gap: the later ones move up.
    const PopulationOwner again = population(4, {});
    EXPECT_EQ(store_population_text(text.data(), again.get(), [](const ExprNode*) {}), 3);
    EXPECT_EQ(lines_of(*again),
              (std::vector<std::string>{"( FWD_1 )", "( BLOCK ( FWD_10 ) ( LEFT_90 ) )",
                                        "( REPEAT_3 ( RIGHT_45 ) )", "none"}));
}

TEST(PopulationFile, AProgramAMillionLevelsDeepIsSavedAndLoaded) {
    const Folder folder;
    const std::string path = folder.path("deep.lpf");
    constexpr int kLevels = 1'000'000;
    const PopulationOwner pop = population(
        2, {times(kLevels, "( BLOCK ") + "( FWD_3 )" + times(kLevels, " )"), "( FWD_5 )"});
    ASSERT_TRUE(write_population_file(path, pop.get()));
    const LoadedText loaded = load_text(path);
    ASSERT_NE(loaded.text, nullptr) << loaded.failure;
    const PopulationOwner again = population(2, {});
    EXPECT_EQ(store_population_text(loaded.text.get(), again.get(), [](const ExprNode*) {}), 2);
    EXPECT_EQ(expr_count_nodes(again->lifers[0].program), kLevels + 1);
    EXPECT_EQ(line_of(again->lifers[1].program), "( FWD_5 )");
}

TEST(TurtleFile, SkipsAFirstLineOnlyIfItHasALineBreak) {
    const std::pair<const char*, const char*> cases[] = {
        {" ( FWD_1 ) ", "( FWD_1 )"},
        {" ( FWD_1 ) \n", "none"},
        {"\n( FWD_1 )", "( FWD_1 )"},
        {"\r\n\r\n( FWD_1 )", "( FWD_1 )"},
        {"version 2\r( BLOCK\r( FWD_1 )\n\r)", "( BLOCK ( FWD_1 ) )"},
        {"( FWD_1 )\n( FWD_2 )\n( FWD_3 )\n", "( FWD_2 )"},
        {"1\nnothing that parses", "none"},
        {"", "none"},
    };
    for (const auto& [text, program] : cases) {
        const ExprTree tree(parse_turtle_file_text(text));
        EXPECT_EQ(line_of(tree.get()), program) << text;
        EXPECT_TRUE(tree == nullptr || tree->slot == nullptr);
    }
    const Folder folder;
    ASSERT_TRUE(write_turtle_file(folder.path("none.txt"), nullptr));
    EXPECT_EQ(content_of(folder.path("none.txt")), "1\r\n");
}

bool draws(const ExprNode* program) {
    DrawContext context{};
    context.max_steps = kDefaultMaxSteps;
    const RECT bounds = draw_measure(&context, program);
    return bounds.right - bounds.left > 4 && bounds.bottom - bounds.top > 4; // 4: the margin
}

TEST(Examples, LoadWithoutAFaultAndDraw) {
    int turtles = 0, populations = 0;
    testing::internal::CaptureStderr();
    for (const auto& file : fs::directory_iterator(path_of(EXAMPLES))) {
        std::string text = content_of(name_of(file.path()));
        if (file.path().extension() == ".txt") {
            const ExprTree tree(parse_turtle_file_text(text.c_str()));
            EXPECT_TRUE(draws(tree.get())) << file.path();
            ++turtles;
        } else if (file.path().extension() == ".lpf") {
            const PopulationOwner pop = population(48, {});
            EXPECT_EQ(store_population_text(text.data(), pop.get(), [](const ExprNode*) {}), 48);
            EXPECT_TRUE(std::any_of(pop->lifers, pop->lifers + 48, [](const Lifer& lifer) {
                return draws(lifer.program);
            })) << file.path();
            ++populations;
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(turtles, 12);
    EXPECT_EQ(populations, 3);
}

TEST(FileNames, GetAnExtensionWhenThereIsNoDotAnywhere) {
    EXPECT_EQ(with_default_extension("/home/me/pop", ".lpf"), "/home/me/pop.lpf");
    EXPECT_EQ(with_default_extension("/home/me/pop.txt", ".lpf"), "/home/me/pop.txt");
    EXPECT_EQ(with_default_extension("/home/me.too/pop", ".lpf"), "/home/me.too/pop");
}

TEST(LoadedText, SaysWhyAFileCannotBeRead) {
    const Folder folder;
    const std::string missing = folder.path("missing '\xC3\xA4");
    EXPECT_EQ(load_text(missing).failure, "Error 2 stat-ing '" + missing + "'.");
    EXPECT_EQ(load_text(folder.path()).failure, "Error 21 stat-ing '" + folder.path() + "'.");

    write_file(folder.path("five"), std::string("12\0"
                                                "45",
                                                5));
    const LoadedText loaded = load_text(folder.path("five"));
    ASSERT_NE(loaded.text, nullptr);
    EXPECT_EQ(std::string(loaded.text.get(), 6), std::string("12\0"
                                                             "45\0",
                                                             6));
    {
        const FailingNew fail(0);
        EXPECT_EQ(load_text(folder.path("five")).failure, "Could not malloc 5 bytes.");
    }
    write_file(folder.path("empty"), "");
    EXPECT_STREQ(load_text(folder.path("empty")).text.get(), "");
}

TEST(SavedFile, ReplacesOnlyByTheWholeNewFile) {
    const Folder folder;
    const std::string path = folder.path("a 'name' Gr\xC3\xB6\xC3\x9F"
                                         "e \xE9\xBE\x9C.lpf");
    ASSERT_TRUE(save(path, "old"));
    fs::permissions(path_of(path), fs::perms::all);
    const fs::perms allowed = fs::status(path_of(path)).permissions();
    {
        SavedFile file(path);
        std::fputs("half", file.stream());
        std::fflush(file.stream());
        EXPECT_EQ(content_of(path), "old");
    } // never completed
    EXPECT_EQ(content_of(path), "old");
    EXPECT_EQ(folder.count(), 1);
    ASSERT_TRUE(save(path, "new"));
    EXPECT_EQ(content_of(path), "new");
    EXPECT_EQ(fs::status(path_of(path)).permissions(), allowed);
    EXPECT_EQ(folder.count(), 1);
    const std::string long_name = folder.path(std::string(255, 'n'));
    EXPECT_TRUE(save(long_name, "long"));
    EXPECT_TRUE(save(long_name, "longer"));
    EXPECT_EQ(content_of(long_name), "longer");
    EXPECT_FALSE(save(folder.path(std::string(4096, 'n')), "too long"));
    EXPECT_FALSE(save(folder.path(), "a folder"));
    EXPECT_FALSE(save(folder.path("none/file"), "no such folder"));
}

} // namespace
