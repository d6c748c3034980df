// What is measured in a process of its own. The argument says which:
//   start    the program up to its first painted window
//   memory   a population of 32,766 at generation 7: resident MiB beside its pictures
//   breed AGE FILE  writes a generation of 48 of this age as a population file
//   measure FILE    measuring runs of its programs: how many terminals were executed
//   window SIZE DEPTH CHILDREN PROBABILITY GENERATIONS
//            a population window with these parameters, all probabilities being the same: a line
//            for each thing done in it
#include "bench/first_paint.h"
#include "bench/generations.h"
#include "bench/resident.h"
#include "evolve/random.h"
#include "files/loaded_text.h"
#include "files/population_file.h"
#include "ui/breeding_commands.h"
#include "ui/population_window.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

#include <sys/resource.h>

namespace {

using namespace pelmora;
using namespace pelmora_bench;

void print_memory() {
    constexpr double kPicture = 88.0 * 88.0 * 4.0;
    LoadWindowNames(nullptr);
    RegisterWindowClasses(nullptr);
    rng_seed(0.5);
    HWND window = CreateLogoWindow(nullptr, first_params(kMaxPopulation));
    auto* record = reinterpret_cast<LogoWindow*>(GetWindowLongPtrA(window, 0));
    for (int generation = 0; generation < 7; ++generation) {
        LogoEvolvePop(window, record);
    }
    std::printf("%.1f\n", (resident_bytes() - kMaxPopulation * kPicture) / 1048576.0);
}

// Its instructions are counted by its name.
[[gnu::noinline]] void run_often(Population* pop, DrawContext* context, int runs) {
    for (int run = 0; run < runs; ++run) {
        measure(pop, context);
    }
}

bool try_breeding(std::istringstream& arguments) {
    int age = 0;
    std::string file;
    return arguments >> age >> file &&
           write_population_file(file, Generations(48, 0.5, age).breed());
}

// Bred in another process, as counting makes one fifty times slower.
bool try_measuring(std::istringstream& arguments) {
    constexpr int kRuns = 3;
    std::string file;
    arguments >> file;
    const LoadedText loaded = load_text(file);
    const PopulationOwner pop(pop_create(first_params(48)));
    if (loaded.text == nullptr ||
        store_population_text(loaded.text.get(), pop.get(), [](const ExprNode*) {}) != pop->size) {
        return false;
    }
    DrawContext context = context_of(*pop);
    run_often(pop.get(), &context, kRuns);
    std::int64_t terminals = 0;
    for (int i = 0; i < pop->size; ++i) {
        draw_measure(&context, pop->lifers[i].program);
        terminals += context.steps;
    }
    std::printf("%lld\n", static_cast<long long>(terminals * kRuns));
    return true;
}

class Stages {
  public:
    void report(const char* what) {
        const std::chrono::duration<double> time = Clock::now() - last_;
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::printf("  %-12s %12zu nodes %10.2f s %10.0f MiB at most\n", what, expr_live().nodes,
                    time.count(), static_cast<double>(usage.ru_maxrss) / 1024.0);
        std::fflush(stdout);
        last_ = Clock::now();
    }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point last_ = Clock::now();
};

// The numbers are those that the dialog would hand on for what is asked.
// False when they cannot be read.
bool try_window(std::istringstream& arguments) {
    std::int32_t size = 0, depth = 0, children = 0;
    double chance = 0;
    int generations = 0;
    if (!(arguments >> size >> depth >> children >> chance >> generations)) {
        return false;
    }
    EvolveParams params = first_params(params_population_size(size));
    params.MAX_DEPTH = params_max_depth(depth);
    params.MAX_CHILD = params_max_child(children);
    params.PCROSS = params.PMUTATE = params.PFNODE = params.PCOLOR = chance;
    LoadWindowNames(nullptr);
    RegisterWindowClasses(nullptr);
    rng_seed(0.5);
    Stages stages;
    HWND window = CreateLogoWindow(nullptr, params);
    if (window == nullptr) {
        std::puts("  refused");
        return true;
    }
    stages.report("window");
    auto* record = reinterpret_cast<LogoWindow*>(GetWindowLongPtrA(window, 0));
    for (int generation = 0; generation < generations; ++generation) {
        LogoEvolvePop(window, record);
        stages.report("Evolve");
    }
    LogoRevertPop(window, record);
    stages.report("Revert");
    DestroyWindow(window);
    stages.report("closed");
    return true;
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR command_line, int show) {
    std::istringstream arguments(command_line);
    std::string what;
    arguments >> what;
    if (what == "start") {
        EndAtFirstPaint end;
        QApplication::instance()->installEventFilter(&end);
        return PelmoraMain(instance, show);
    }
    if (what == "memory") {
        print_memory();
        return 0;
    }
    const bool done = (what == "breed" && try_breeding(arguments)) ||
                      (what == "measure" && try_measuring(arguments)) ||
                      (what == "window" && try_window(arguments));
    if (!done) {
        std::fputs("wrong arguments\n", stderr);
        return 2;
    }
    return 0;
}
