// The figures by which the program's speed is judged: ratios of times taken in one run, so that
// they say the same on every machine.
#pragma once

#include "turtle/draw_context.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace pelmora_bench {

// Nanoseconds per unit of every benchmark that ran, by its name.
using Times = std::map<std::string, double>;

// Runs the registered benchmarks, interleaved, and takes the least disturbed run of each. What
// counts as the unit each benchmark says in its counter "unit": how many an iteration has.
Times run_benchmarks();

struct Ratio {
    std::string top, bottom; // names of benchmarks
};

struct Figure {
    std::string text;
    std::vector<Ratio> ratios;                 // with several, the figure is their geometric mean
    double target;                             // at most this; 0: none
    double (*measure)(const Times&) = nullptr; // when there are no ratios
};

// Registers two benchmarks for each seed, from 0 on; the figure is the mean of their ratios. One
// without a function is one that an earlier figure has.
using SeededRun = std::pair<std::string, std::function<void(benchmark::State&, int seed)>>;
Figure figure_of_seeds(const std::string& text, double target, int seeds, const SeededRun& top,
                       const SeededRun& bottom);

// Ends the benchmark when a bare loop comes to something else than the run that it stands for. Both
// contexts began as the same bytes.
void check_same_run(const char* loop, const pelmora::DrawContext& bare, const RECT& bare_bounds,
                    const pelmora::DrawContext& run, const RECT& bounds);

// Prints the table of the figures and, below it, the times.
void print_figures(const std::vector<Figure>& figures, const Times& times);

// Register the benchmarks of their kind and append their figures.
void add_bred_figures(std::vector<Figure>* figures);
void add_turtle_figures(std::vector<Figure>* figures);
void add_evolve_figures(std::vector<Figure>* figures);
void add_window_figures(std::vector<Figure>* figures);
void add_process_figures(std::vector<Figure>* figures);

} // namespace pelmora_bench
