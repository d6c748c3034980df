// Runs every benchmark and prints one table of figures. A target that is missed is no failure, as
// the machine may be busy.
#include "bench/figures.h"

#include "platform/win32.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    // Interleaved repetitions, so that a busy moment of the machine disturbs no ratio as a whole.
    char program[] = "pelmora_bench";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char repetitions[] = "--benchmark_repetitions=20";
    char duration[] = "--benchmark_min_time=0.02"; // short: each finds quiet moments
    char* arguments[] = {program, interleaving, repetitions, duration, nullptr};
    int count = 4;
    benchmark::Initialize(&count, arguments);

    std::vector<pelmora_bench::Figure> figures;
    pelmora_bench::add_bred_figures(&figures);
    pelmora_bench::add_turtle_figures(&figures);
    pelmora_bench::add_evolve_figures(&figures);
    pelmora_bench::add_window_figures(&figures);
    pelmora_bench::add_process_figures(&figures);
    pelmora_bench::print_figures(figures, pelmora_bench::run_benchmarks());
    return 0;
}
