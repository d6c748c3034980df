// What is measured in a process of its own. The argument says which:
//   start    the program up to its first painted window
//   memory   a population of 32,766 at generation 7: resident MiB beside its pictures
//   measure  measuring runs: how many terminals were executed
#include "bench/first_paint.h"
#include "bench/generations.h"
#include "evolve/random.h"
#include "ui/breeding_commands.h"
#include "ui/population_window.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <cstdio>
#include <cstring>
#include <fstream>

#include <unistd.h>

namespace {

using namespace pelmora;
using namespace pelmora_bench;

double resident_bytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    file >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

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

void print_terminals() {
    constexpr int kRuns = 20;
    Generations generations(48, 0.5, 3);
    Population* pop = generations.breed();
    for (int run = 0; run < kRuns; ++run) {
        measure(pop, generations.context());
    }
    std::int64_t terminals = 0;
    for (int i = 0; i < pop->size; ++i) {
        draw_measure(generations.context(), pop->lifers[i].program);
        terminals += generations.context()->steps;
    }
    std::printf("%lld\n", static_cast<long long>(terminals * kRuns));
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR what, int show) {
    if (std::strcmp(what, "start") == 0) {
        EndAtFirstPaint end;
        QApplication::instance()->installEventFilter(&end);
        return PelmoraMain(instance, show);
    }
    if (std::strcmp(what, "memory") == 0) {
        print_memory();
    } else if (std::strcmp(what, "measure") == 0) {
        print_terminals();
    } else {
        return 2;
    }
    return 0;
}
