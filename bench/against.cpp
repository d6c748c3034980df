// Measures bred turtles for a comparison of two builds, of which the other may be an older one: so
// it is compiled into either, and calls only what both have. Argument: the file for the result, a
// line an age: age, ns a terminal measured, ns a terminal drawn, terminals.
//
// The two run at the same time and take turns: each waits for a byte on its standard input,
// measures once, and hands the byte on. Drawing goes to a device that shows nothing.
#include "bench/generations.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <deque>
#include <limits>
#include <vector>

#include <unistd.h>

extern "C" {

HPEN CreatePen(int /*style*/, int /*width*/, COLORREF /*color*/) {
    return nullptr;
}
HGDIOBJ SelectObject(HDC /*device*/, HGDIOBJ /*object*/) {
    return nullptr;
}
HGDIOBJ GetStockObject(int /*object*/) {
    return nullptr;
}
BOOL DeleteObject(HGDIOBJ /*object*/) {
    return TRUE;
}
BOOL MoveToEx(HDC /*device*/, int /*x*/, int /*y*/, POINT* /*before*/) {
    return TRUE;
}
BOOL LineTo(HDC /*device*/, int /*x*/, int /*y*/) {
    return TRUE;
}
BOOL Polyline(HDC /*device*/, const POINT* /*points*/, int /*count*/) {
    return TRUE;
}

} // extern "C"

namespace {

using namespace pelmora;
using namespace pelmora_bench;

constexpr int kAges[] = {3, 50, 500, 1000};
constexpr int kSeeds = 3;
constexpr int kRounds = 200;
constexpr double kNever = std::numeric_limits<double>::infinity();

// The processor's time alone, as the other one and the rest of the machine take theirs.
double seconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

class Bred {
  public:
    Bred(double seed, int age) : generations_(48, seed, age), pop_(generations_.breed()) {
        for (int i = 0; i < pop_->size; ++i) {
            draw_measure(generations_.context(), pop_->lifers[i].program);
            terminals += generations_.context()->steps;
        }
    }

    void round() {
        const double start = seconds();
        measure(pop_, generations_.context());
        const double half = seconds();
        int something = 0;
        for (int i = 0; i < pop_->size; ++i) {
            draw_fit(reinterpret_cast<HDC>(&something), generations_.context(),
                     pop_->lifers[i].program, 88, 88, FitMode::stretch, 0);
        }
        measured = std::min(measured, half - start);
        drawn = std::min(drawn, seconds() - half);
    }

    double measured = kNever; // the least disturbed round, in seconds
    double drawn = kNever;
    double terminals = 0;

  private:
    Generations generations_;
    Population* pop_;
};

} // namespace

int main(int argc, char* argv[]) {
    std::FILE* result = argc == 2 ? std::fopen(argv[1], "w") : nullptr;
    if (result == nullptr) {
        std::fputs("Usage: pelmora_against RESULT\n", stderr);
        return 2;
    }
    std::signal(SIGPIPE, SIG_IGN); // the one that ends first hears the last turn no more
    std::deque<std::deque<Bred>> all;
    for (const int age : kAges) {
        std::deque<Bred>& seeds = all.emplace_back();
        for (int seed = 0; seed < kSeeds; ++seed) {
            seeds.emplace_back(seed / 8.0, age);
        }
    }
    for (int round = 0; round < kRounds; ++round) {
        char turn = 0;
        if (read(STDIN_FILENO, &turn, 1) != 1) {
            std::fputs("the other one has ended\n", stderr);
            return 1;
        }
        for (std::deque<Bred>& seeds : all) {
            std::for_each(seeds.begin(), seeds.end(), [](Bred& bred) { bred.round(); });
        }
        const bool last = round == kRounds - 1;
        if (write(STDOUT_FILENO, &turn, 1) != 1 && !last) {
            return 1;
        }
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        double measured = 0, drawn = 0, terminals = 0;
        for (const Bred& bred : all[i]) {
            measured += bred.measured * 1e9;
            drawn += bred.drawn * 1e9;
            terminals += bred.terminals;
        }
        std::fprintf(result, "%d %.4f %.4f %.0f\n", kAges[i], measured / terminals,
                     drawn / terminals, terminals);
    }
    return std::fclose(result) == 0 ? 0 : 1;
}
