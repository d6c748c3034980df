// The figures by which the program's speed is judged: ratios of times taken in one run, so that
// they say the same on every machine.
#pragma once

#include <map>
#include <string>
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

// Prints the table of the figures and, below it, the times.
void print_figures(const std::vector<Figure>& figures, const Times& times);

// Register the benchmarks of their kind and append their figures.
void add_turtle_figures(std::vector<Figure>* figures);
void add_evolve_figures(std::vector<Figure>* figures);
void add_window_figures(std::vector<Figure>* figures);
void add_process_figures(std::vector<Figure>* figures);

} // namespace pelmora_bench
