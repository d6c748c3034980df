#include "bench/figures.h"
#include "evolve/breed.h"
#include "evolve/population.h"
#include "evolve/random.h"
#include "platform/win32.h"
#include "turtle/draw.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace pelmora_bench {
namespace {

using namespace pelmora;

constexpr double kSeed = 0.5; // every run sees the same turtles
constexpr int kCell = 88;     // pixels, each way

EvolveParams first_params(std::int32_t size) {
    return {size, 9, 4, 0.8F, 0.2F, 0.75F, 0.1F, 0.5F, 0.3F, 0.2F, 0.1F, 0.1F, 0.05F};
}

DrawContext context_of(const Population& pop) {
    DrawContext ctx{};
    ctx.max_steps = kDefaultMaxSteps;
    ctx.multipliers = {pop.FWDMULT, pop.TURNMULT, pop.LOOPMULT,
                       pop.CLRMULT, pop.RPTMULT,  pop.REPMULT};
    return ctx;
}

void measure(HDC device, Population* pop, DrawContext* ctx) {
    RECT bounds;
    for (int i = 0; i < pop->size; ++i) {
        draw_reset(ctx);
        draw_run(device, ctx, pop->lifers[i].program, &bounds);
        pop->lifers[i].score = draw_score(ctx);
    }
}

// A generation that was bred a few times, and room for the one that is bred from it.
class Generations {
  public:
    // Those of this size, made when first asked for.
    static Generations& of(std::int32_t size) {
        static std::map<std::int32_t, Generations> all;
        return all.try_emplace(size, size).first->second;
    }

    explicit Generations(std::int32_t size)
        : current_(pop_create(first_params(size))), next_(pop_create(first_params(size))),
          ctx_(context_of(*current_)) {
        rng_seed(kSeed);
        pop_randomize(current_.get());
        rate(current_.get());
        for (int generation = 0; generation < 3; ++generation) {
            pop_breed(current_.get(), next_.get());
            rate(next_.get());
            current_.swap(next_);
            pop_free_programs(next_.get());
        }
    }

    // The step to the next generation, always from the same one.
    Population* breed() {
        rng_seed(kSeed);
        pop_free_programs(next_.get());
        pop_breed(current_.get(), next_.get());
        return next_.get();
    }

    DrawContext* context() { return &ctx_; }

  private:
    void rate(Population* pop) {
        measure(nullptr, pop, &ctx_);
        pop_statistics(pop);
    }

    PopulationOwner current_, next_;
    DrawContext ctx_;
};

// A memory device and the bitmap that it draws on.
class Surface {
  public:
    Surface(int width, int height) : device_(CreateCompatibleDC(screen_)) {
        bitmap_ = CreateCompatibleBitmap(screen_, width, height);
        SelectObject(device_, bitmap_);
    }
    ~Surface() {
        DeleteDC(device_);
        DeleteObject(bitmap_);
        ReleaseDC(nullptr, screen_);
    }
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;

    [[nodiscard]] HDC device() const { return device_; }

  private:
    HDC screen_ = GetDC(nullptr);
    HDC device_;
    HBITMAP bitmap_;
};

void evolve_without_pictures(benchmark::State& state) {
    const auto size = static_cast<std::int32_t>(state.range(0));
    Generations& generations = Generations::of(size);
    for ([[maybe_unused]] auto _ : state) {
        Population* pop = generations.breed();
        measure(nullptr, pop, generations.context());
        pop_statistics(pop);
    }
    state.counters["unit"] = size;
}

void measure_alone(benchmark::State& state) {
    const auto size = static_cast<std::int32_t>(state.range(0));
    Generations& generations = Generations::of(size);
    Population* pop = generations.breed();
    for ([[maybe_unused]] auto _ : state) {
        measure(nullptr, pop, generations.context());
    }
    state.counters["unit"] = size;
}

void make_picture(const Surface& drawing, const Surface& cell, Lifer* lifer, DrawContext* ctx) {
    const RECT area{0, 0, kCell, kCell};
    const auto white = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    FillRect(drawing.device(), &area, white);
    draw_fit(drawing.device(), ctx, lifer->program, kCell, kCell, FitMode::stretch, 0);
    lifer->score = draw_score(ctx);
    FillRect(cell.device(), &area, white);
    BitBlt(cell.device(), 0, 0, kCell, kCell, drawing.device(), 0, 0, SRCCOPY);
}

void evolve_with_pictures(benchmark::State& state) {
    const auto size = static_cast<std::int32_t>(state.range(0));
    Generations& generations = Generations::of(size);
    const Surface drawing(kCell, kCell);
    const DevicePen pen(drawing.device());
    std::vector<std::unique_ptr<Surface>> cells;
    cells.reserve(static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i) {
        cells.push_back(std::make_unique<Surface>(kCell, kCell));
    }
    for ([[maybe_unused]] auto _ : state) {
        Population* pop = generations.breed();
        for (int i = 0; i < size; ++i) {
            make_picture(drawing, *cells[static_cast<std::size_t>(i)], &pop->lifers[i],
                         generations.context());
        }
        pop_statistics(pop);
    }
    state.counters["unit"] = size;
}

std::string add(const std::string& what, void (*run)(benchmark::State&), int size) {
    std::string name = "a lifer of " + std::to_string(size) + ": " + what;
    // As many lifers as it takes for a quiet moment; the large populations have them in one go.
    benchmark::RegisterBenchmark(name.c_str(), run)->Arg(size)->Repetitions(2 + 2000 / size);
    return name;
}

} // namespace

void add_evolve_figures(std::vector<Figure>* figures) {
    const std::string pictures = add("Evolve with pictures", evolve_with_pictures, 48);
    const std::string measuring = add("measuring run alone", measure_alone, 48);
    figures->push_back(
        {"Evolve of 48 with pictures / measuring alone", {{pictures, measuring}}, 0});

    const std::string bare = "Evolve without pictures";
    const std::string small = add(bare, evolve_without_pictures, 48);
    figures->push_back(
        {"Evolve of 48 without pictures / measuring alone", {{small, measuring}}, 0});
    for (const int size : {1000, 32766}) {
        const std::string large = add(bare, evolve_without_pictures, size);
        figures->push_back(
            {"Evolve without pictures, a lifer of " + std::to_string(size) + " / a lifer of 48",
             {{large, small}},
             0});
    }
}

} // namespace pelmora_bench
