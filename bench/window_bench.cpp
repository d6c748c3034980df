#include "bench/bare_lines.h"
#include "bench/bare_run.h"
#include "bench/figures.h"
#include "bench/generations.h"
#include "evolve/random.h"
#include "ui/breeding_commands.h"
#include "ui/population_window.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <algorithm>
#include <cstring>

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

std::vector<Terminals> all_terminals(BredWindow& bred) {
    std::vector<Terminals> all;
    for (int i = 0; i < bred.bred().size; ++i) {
        all.push_back(terminals_of(bred.bred().lifers[i].program, *bred.context()));
    }
    return all;
}

void evolve_by_command(benchmark::State& state, int seed) {
    BredWindow& bred = bred_window(seed);
    for ([[maybe_unused]] auto _ : state) {
        bred.evolve();
    }
    state.counters["unit"] = 1;
}

constexpr platform::PixelRect kWholeCell{0, 0, kCell, kCell};

// What an Evolve cannot do without: the cells are cleared, the lines walked, the cells copied. The
// lines are all that the programs draw; or the terminals are executed, too, and the lines are those
// that can be seen.
template <bool kRuns>
void evolve_bare(benchmark::State& state, int seed) {
    BredWindow& bred = bred_window(seed);
    const Pictures pictures = kRuns ? seen_lines(bred) : all_lines(bred);
    const std::vector<Terminals> runs = all_terminals(bred);
    DrawContext context = context_of(bred.bred());
    std::vector<std::uint32_t> drawing(kCellPixels);
    std::vector<std::uint32_t> cells(kCellPixels * kLifers);
    for ([[maybe_unused]] auto _ : state) {
        std::uint32_t* cell = cells.data();
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            if (kRuns) {
                benchmark::DoNotOptimize(bare_run(runs[i], &context));
            }
            std::fill(drawing.begin(), drawing.end(), 0xFFFFFFFFU);
            walk(pictures[i], {drawing.data(), kCell}, kWholeCell);
            std::memcpy(cell, drawing.data(), kCellPixels * sizeof *cell);
            cell += kCellPixels;
        }
        benchmark::ClobberMemory();
    }
    state.counters["unit"] = 1;
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
    figures->push_back(figure_of_seeds("Evolve of 48 / clearing, walking, copying alone", 2.5,
                                       kSeeds, {kEvolve, evolve_by_command},
                                       {"Evolve of 48, bare", evolve_bare<false>}));
    figures->push_back(figure_of_seeds("the same / walking what can be seen, and the bare loop", 0,
                                       kSeeds, {kEvolve, nullptr},
                                       {"Evolve of 48, bare with runs", evolve_bare<true>}));
    figures->push_back(
        {"milliseconds of an Evolve of 48, a frame of the screen having 16.7", {}, 16.7, slowest});
    benchmark::RegisterBenchmark("grid of 48 painted", paint);
    benchmark::RegisterBenchmark("cells of 48 copied", copy_cells);
    figures->push_back({"grid of 48 painted anew / its cells copied",
                        {{"grid of 48 painted", "cells of 48 copied"}},
                        4.0});
}

} // namespace pelmora_bench
