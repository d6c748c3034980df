#include "bench/figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace pelmora_bench {
namespace {

class Collector : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) {
                continue;
            }
            const auto iterations = static_cast<double>(run.iterations);
            const double time = run.cpu_accumulated_time * 1e9 / iterations;
            const double unit = run.counters.at("unit").value;
            const auto [known, fresh] = times.try_emplace(run.run_name.function_name, time / unit);
            known->second = std::min(known->second, time / unit);
        }
    }

    Times times;
};

double time_of(const Times& times, const std::string& name) {
    const auto found = times.find(name);
    if (found == times.end()) {
        std::fprintf(stderr, "there is no benchmark \"%s\"\n", name.c_str());
        std::exit(1);
    }
    return found->second;
}

double value_of(const Figure& figure, const Times& times) {
    if (figure.measure != nullptr) {
        return figure.measure(times);
    }
    double logs = 0;
    for (const Ratio& ratio : figure.ratios) {
        logs += std::log(time_of(times, ratio.top) / time_of(times, ratio.bottom));
    }
    return std::exp(logs / static_cast<double>(figure.ratios.size()));
}

} // namespace

Times run_benchmarks() {
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    return collector.times;
}

Figure figure_of_seeds(const std::string& text, double target, int seeds, const SeededRun& top,
                       const SeededRun& bottom) {
    Figure figure{text, {}, target};
    for (int seed = 0; seed < seeds; ++seed) {
        const auto add = [seed](const SeededRun& run) {
            std::string name = run.first + ", seed " + std::to_string(seed);
            if (run.second != nullptr) {
                benchmark::RegisterBenchmark(name.c_str(), run.second, seed);
            }
            return name;
        };
        figure.ratios.push_back({add(top), add(bottom)});
    }
    return figure;
}

void check_same_run(const char* loop, const pelmora::DrawContext& bare, const RECT& bare_bounds,
                    const pelmora::DrawContext& run, const RECT& bounds) {
    // Padding is the same, too. NOLINTNEXTLINE(*-comparison,cert-*)
    if (std::memcmp(&bare, &run, sizeof bare) != 0 ||
        std::memcmp(&bare_bounds, &bounds, sizeof bounds) != 0) {
        std::fprintf(stderr, "the loop %s does other work than its program\n", loop);
        std::exit(1);
    }
}

void print_figures(const std::vector<Figure>& figures, const Times& times) {
    std::printf("%-66s %8s %8s\n", "figure (a ratio, if it names no unit)", "target", "reached");
    for (const Figure& figure : figures) {
        const double value = value_of(figure, times);
        if (figure.target == 0) {
            std::printf("%-66s %8s %8.2f\n", figure.text.c_str(), "", value);
            continue;
        }
        const bool pass = value <= figure.target;
        std::printf("%-66s %8.2f %8.2f  %s\n", figure.text.c_str(), figure.target, value,
                    pass ? "pass" : "SHORT");
    }
    std::printf("\n%-66s %17s\n", "time", "ns");
    for (const auto& [name, time] : times) {
        std::printf("%-66s %17.2f\n", name.c_str(), time);
    }
}

} // namespace pelmora_bench
