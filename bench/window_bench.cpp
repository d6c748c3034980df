#include "bench/bare_lines.h"
#include "bench/figures.h"
#include "bench/generations.h"
#include "evolve/random.h"
#include "turtle/interp.h"
#include "turtle/trace.h"
#include "ui/breeding_commands.h"
#include "ui/population_window.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <utility>

namespace pelmora_bench {
namespace {

using namespace pelmora;

constexpr int kCell = 88; // pixels, each way
constexpr std::size_t kCellPixels = std::size_t{kCell} * kCell;
constexpr int kLifers = 48;
constexpr int kSeeds = 3;
constexpr int kAge = 3; // bred generations

// A population window in which the same generation can be bred again and again.
class BredWindow {
  public:
    explicit BredWindow(double seed) {
        rng_seed(seed);
        window_ = CreateLogoWindow(nullptr, first_params(kLifers));
        record_ = reinterpret_cast<LogoWindow*>(GetWindowLongPtrA(window_, 0));
        for (int generation = 0; generation < kAge; ++generation) {
            LogoEvolvePop(window_, record_);
        }
        random_ = rng_save();
        evolve();
    }

    // The command as Ctrl+E gives it. Its result is the record's `previous` then.
    void evolve() {
        rng_restore(random_);
        LogoEvolvePop(window_, record_);
        std::swap(record_->current, record_->previous);
    }

    const Population& bred() const { return *record_->previous; }
    DrawContext* context() { return &record_->drawContext; }
    HDC device() const { return record_->offscreenDC.get(); }
    HWND window() const { return window_; }

  private:
    RandomState random_;
    HWND window_;
    LogoWindow* record_;
};

// Made in order, as a seed leaves something of the stream before it.
BredWindow& bred_window(int seed) {
    static std::vector<BredWindow> all = [] {
        std::vector<BredWindow> windows;
        for (int i = 0; i < kSeeds; ++i) {
            windows.emplace_back(i / 4.0);
        }
        return windows;
    }();
    return all[static_cast<std::size_t>(seed)];
}

// The placement that fits a program into a cell, from the measuring run for it.
DrawContext placed(const ExprNode* program, DrawContext context) {
    const RECT bounds = draw_measure(&context, program);
    draw_place(&context, bounds, kCell, kCell, FitMode::stretch, 0);
    return context;
}

using Pictures = std::vector<std::vector<BareLine>>;

Pictures all_lines(BredWindow& bred) {
    Pictures all;
    for (int i = 0; i < bred.bred().size; ++i) {
        const ExprNode* program = bred.bred().lifers[i].program;
        DrawContext start = placed(program, *bred.context());
        all.push_back(lines_of(program, &start));
    }
    return all;
}

Pictures seen_lines(BredWindow& bred) {
    Pictures all = all_lines(bred);
    for (std::vector<BareLine>& lines : all) {
        lines = seen(std::move(lines));
    }
    return all;
}

double count_of(const Pictures& all) {
    std::size_t count = 0;
    for (const auto& lines : all) {
        count += lines.size();
    }
    return static_cast<double>(count);
}

void evolve_by_command(benchmark::State& state, int seed) {
    BredWindow& bred = bred_window(seed);
    for ([[maybe_unused]] auto _ : state) {
        bred.evolve();
    }
    state.counters["unit"] = 1;
}

constexpr platform::PixelRect kWholeCell{0, 0, kCell, kCell};

template <Pictures (*lines_of_window)(BredWindow&)>
void evolve_bare(benchmark::State& state, int seed) {
    const Pictures all = lines_of_window(bred_window(seed));
    std::vector<std::uint32_t> drawing(kCellPixels);
    std::vector<std::uint32_t> cells(kCellPixels * kLifers);
    for ([[maybe_unused]] auto _ : state) {
        std::uint32_t* cell = cells.data();
        for (const std::vector<BareLine>& lines : all) {
            std::fill(drawing.begin(), drawing.end(), 0xFFFFFFFFU);
            walk(lines, {drawing.data(), kCell}, kWholeCell);
            std::memcpy(cell, drawing.data(), kCellPixels * sizeof *cell);
            cell += kCellPixels;
        }
        benchmark::ClobberMemory();
    }
    state.counters["unit"] = 1;
}

// The drawing of every cell, without the measuring runs before it, which keep the moves for it.
void draw_moves(benchmark::State& state, int seed) {
    BredWindow& bred = bred_window(seed);
    const Population& pop = bred.bred();
    std::vector<DrawContext> places;
    std::vector<Trace> traces(static_cast<std::size_t>(pop.size));
    for (int i = 0; i < pop.size; ++i) {
        const ExprNode* program = pop.lifers[i].program;
        places.push_back(placed(program, *bred.context()));
        DrawContext context = *bred.context();
        draw_reset(&context);
        RECT bounds{};
        interp_trace(&context, program, &bounds, &traces[static_cast<std::size_t>(i)]);
    }
    for ([[maybe_unused]] auto _ : state) {
        for (std::size_t i = 0; i < traces.size(); ++i) {
            trace_draw(bred.device(), &places[i], traces[i]);
        }
    }
    state.counters["unit"] = count_of(seen_lines(bred));
}

// Drawing runs of the programs themselves, as for a device that needs every pen and line.
void draw_all(benchmark::State& state, int seed) {
    BredWindow& bred = bred_window(seed);
    const Population& pop = bred.bred();
    std::vector<DrawContext> places;
    for (int i = 0; i < pop.size; ++i) {
        places.push_back(placed(pop.lifers[i].program, *bred.context()));
    }
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < pop.size; ++i) {
            DrawContext context = places[static_cast<std::size_t>(i)];
            draw_run(bred.device(), &context, pop.lifers[i].program, nullptr);
        }
    }
    state.counters["unit"] = count_of(all_lines(bred));
}

template <Pictures (*lines_of_window)(BredWindow&)>
void walk_all(benchmark::State& state, int seed) {
    const Pictures all = lines_of_window(bred_window(seed));
    std::vector<std::uint32_t> drawing(kCellPixels);
    for ([[maybe_unused]] auto _ : state) {
        for (const std::vector<BareLine>& lines : all) {
            walk(lines, {drawing.data(), kCell}, kWholeCell);
        }
        benchmark::ClobberMemory();
    }
    state.counters["unit"] = count_of(all);
}

// The window as large as it takes to see every cell.
void paint(benchmark::State& state) {
    HWND window = bred_window(0).window();
    MoveWindow(window, 0, 0, 1'240, 760, FALSE);
    ShowWindow(window, SW_SHOWNORMAL);
    UpdateWindow(window);
    for ([[maybe_unused]] auto _ : state) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
        UpdateWindow(window);
    }
    state.counters["unit"] = 1;
}

void copy_cells(benchmark::State& state) {
    std::vector<std::uint32_t> from(kCellPixels * kLifers);
    std::vector<std::uint32_t> to(from.size());
    for ([[maybe_unused]] auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size() * sizeof from[0]);
        benchmark::ClobberMemory();
    }
    state.counters["unit"] = 1;
}

using SeededRun = void (*)(benchmark::State&, int seed);

// A run that is null is one that an earlier figure has.
Figure figure_of_seeds(const char* text, double target, std::pair<const char*, SeededRun> top,
                       std::pair<const char*, SeededRun> bottom) {
    Figure figure{text, {}, target};
    for (int seed = 0; seed < kSeeds; ++seed) {
        const auto add = [seed](const std::pair<const char*, SeededRun>& run) {
            std::string name = std::string(run.first) + ", seed " + std::to_string(seed);
            if (run.second != nullptr) {
                benchmark::RegisterBenchmark(name.c_str(), run.second, seed);
            }
            return name;
        };
        figure.ratios.push_back({add(top), add(bottom)});
    }
    return figure;
}

constexpr const char* kEvolve = "Evolve of 48";

// Of the seeds, in milliseconds.
double slowest(const Times& times) {
    double most = 0;
    for (const auto& [name, time] : times) {
        if (name.rfind(std::string(kEvolve) + ", seed", 0) == 0) {
            most = std::max(most, time / 1e6);
        }
    }
    return most;
}

} // namespace

void add_window_figures(std::vector<Figure>* figures) {
    LoadWindowNames(nullptr);
    RegisterWindowClasses(nullptr);
    bred_window(0);
    figures->push_back(figure_of_seeds("line drawn into a cell / walked alone", 2.0,
                                       {"a line drawn", draw_moves},
                                       {"a line walked", walk_all<seen_lines>}));
    figures->push_back(figure_of_seeds("the same, by a run of the program with all its pens", 0,
                                       {"any line drawn by a run", draw_all},
                                       {"any line walked", walk_all<all_lines>}));
    figures->push_back(figure_of_seeds("Evolve of 48 / clearing, walking, copying alone", 3.0,
                                       {kEvolve, evolve_by_command},
                                       {"Evolve of 48, bare", evolve_bare<all_lines>}));
    figures->push_back(figure_of_seeds("the same, walking those lines alone that have a length", 0,
                                       {kEvolve, nullptr},
                                       {"Evolve of 48, barest", evolve_bare<seen_lines>}));
    figures->push_back(
        {"milliseconds of an Evolve of 48, a frame of the screen having 16.7", {}, 16.7, slowest});
    benchmark::RegisterBenchmark("grid of 48 painted", paint);
    benchmark::RegisterBenchmark("cells of 48 copied", copy_cells);
    figures->push_back({"grid of 48 painted anew / its cells copied",
                        {{"grid of 48 painted", "cells of 48 copied"}},
                        4.0});
}

} // namespace pelmora_bench
