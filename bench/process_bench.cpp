// What takes processes of their own to measure.
#include "bench/figures.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace pelmora_bench {
namespace {

// As commands; the folders may have blanks in their names.
const std::string kChild = "\"" PELMORA_BENCH_CHILD "\"";
const std::string kEmpty = "\"" PELMORA_BENCH_EMPTY "\"";

[[noreturn]] void fail(const std::string& command) {
    std::fprintf(stderr, "\"%s\" failed\n", command.c_str());
    std::exit(1);
}

double seconds_of(const std::string& command) {
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    if (std::system(command.c_str()) != 0) {
        fail(command);
    }
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// The medians of both, taken in turn. The least of each would be a lucky one: now and then a start
// is an eighth shorter than all others, and it depends on whose luck it is.
double start_ratio(const std::string& other) {
    constexpr int kRuns = 31;
    std::vector<double> program, empty;
    for (int run = 0; run < kRuns; ++run) {
        program.push_back(seconds_of("exec " + kChild + " start"));
        empty.push_back(seconds_of("exec " + other));
    }
    for (std::vector<double>* times : {&program, &empty}) {
        std::nth_element(times->begin(), times->begin() + kRuns / 2, times->end());
    }
    return program[kRuns / 2] / empty[kRuns / 2];
}

double mebibytes_of_the_largest(const Times& /*times*/) {
    const std::string command = kChild + " memory";
    std::FILE* answer = popen(command.c_str(), "r");
    double mebibytes = 0;
    if (answer == nullptr || std::fscanf(answer, "%lf", &mebibytes) != 1 || pclose(answer) != 0) {
        fail(command);
    }
    return mebibytes;
}

double start_with_menu(const Times& /*times*/) {
    return start_ratio(kEmpty + " menu");
}

double start_without_text(const Times& /*times*/) {
    return start_ratio(kEmpty);
}

} // namespace

void add_process_figures(std::vector<Figure>* figures) {
    figures->push_back({"MiB of 32,766 turtles at generation 7, beside the pictures",
                        {},
                        700,
                        mebibytes_of_the_largest});
    figures->push_back({"start to the first painted window / of an empty program with a menu",
                        {},
                        1.1,
                        start_with_menu});
    figures->push_back({"the same / of one without any text", {}, 0, start_without_text});
}

} // namespace pelmora_bench
