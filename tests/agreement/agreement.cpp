// Grows and breeds populations from a fixed seed and writes down what the program draws, scores and
// saves of them, so that two platforms can be held against each other:
//
//     pelmora_agreement REPORT [POPULATIONS [PROGRAM]]
//
// All populations, the default, are 1,280 programs. What is drawn and saved of the one program is
// saved as well, to look at. Fails when a population is not as it is known to be; where two reports
// differ shows why.
#include "evolve/random.h"
#include "platform/user.h"
#include "resources/resource.h"
#include "services/application.h"
#include "tests/agreement/exchanged.h"
#include "tests/agreement/views.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <sstream>

namespace {

using namespace pelmora;
using namespace pelmora_test;

constexpr std::int32_t kLifers = 64;

// A population, and the digest of its lines in the report, which is the same everywhere. It changes
// with whatever is drawn, scored or saved of any of its programs.
struct Known {
    EvolveParams params;
    std::uint64_t digest;
};
constexpr Known kPopulations[] = {
    {{kLifers, 9, 4, 0.8F, 0.2F, 0.75F, 0.1F, 0.5F, 0.3F, 0.2F, 0.1F, 0.1F, 0.05F},
     0x81FB37D4D4168655U},
    {{kLifers, 6, 3, 0.9, 0.5, 1.0, 0.2, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6}, 0xABC57CE1AE35E861U},
    {{kLifers, 9, 3, 0.7, 0.6, 0.97, 0.2, 1.0, 0.0, 0.0, 0.0, 0.0, 0.0}, 0xB61BBFE0F507CA77U},
    {{kLifers, 4, 12, 1.0, 1.0, 1.0, 0.5, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0}, 0xCE172F7841857BF8U},
    {{kLifers, 6, 5, 1.0, 0.4, 0.96, 0.05, 0.3, 1.0, 0.7, 0.1, 0.1, 0.2}, 0x30F9490A5F770A30U},
    {{kLifers, 3, 63, 0.8, 1.0, 1.0, 0.3, 0.2, 0.2, 0.2, 0.2, 0.2, 0.2}, 0x5F2CDE31114C7584U},
    {{kLifers, 15, 2, 1.0, 0.8, 0.9, 0.15, 0.4, 0.1, 0.9, 0.3, 0.05, 0.01}, 0x48B605FA10C318BFU},
    {{kLifers, 5, 5, 0.9, 0.9, 0.98, 0.1, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0}, 0x8CE898EE73D98895U},
    {{kLifers, 5, 20, 0.8, 0.9, 0.95, 0.1, 0.5, 0.3, 0.2, 0.1, 0.1, 0.05}, 0x51DB11796DA21235U},
    {{kLifers, 7, 4, 0.95, 0.5, 1.0, 0.0, 0.123, 0.456, 0.789, 0.321, 0.654, 0.987},
     0xB8DC72C3510B3C0CU},
};

template <class Record>
Record* record_of(HWND window) {
    return reinterpret_cast<Record*>(GetWindowLongPtrA(window, 0));
}

void report_scores(Report* report, int first, const LogoWindow* record) {
    for (int i = 0; i < record->lifeCount; ++i) {
        report->number(first + i, "score", record->current->lifers[i].score);
        report->number(first + i, "fitness", record->current->lifers[i].fitness);
    }
}

void report_generation(Report* report, int first, HWND window, HWND editor) {
    auto* record = record_of<LogoWindow>(window);
    report_scores(report, first, record);
    report_cells(report, first, window, record);
    report_single_views(report, first, window, record);
    ShowWindow(editor, SW_SHOW);
    report_editors(report, first, editor, record);
    ShowWindow(editor, SW_HIDE);
    for (int i = 0; i < record->lifeCount; ++i) {
        report_exchanged(report, first + i, window,
                         {&record->drawContext, record->current->lifers[i].program, nullptr});
    }
    report_population_file(report, first, record->current.get());
}

// As a user marks lifers: a third is retired, one is selected.
void mark(LogoWindow* record) {
    record->selected = 7;
    for (int i = 0; i < record->lifeCount; i += 3) {
        record->lifeFlags[i] = 0;
    }
}

// Looks at a population when it was grown, and again after it was bred.
void report_population(Report* report, int first, const EvolveParams& params, HWND editor) {
    HWND window = CreateLogoWindow(AppInstance(), params);
    ShowWindow(window, SW_SHOW);
    mark(record_of<LogoWindow>(window));
    report_generation(report, first, window, editor);
    for (const int command : {IDM_EVOLVE, IDM_EVOLVE, IDM_EVOLVE}) {
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(unsigned(command), 0), 0);
    }
    report_generation(report, first + kLifers, window, editor);
    report->number(first, "next random number", rng_draw());
    DestroyWindow(window);
}

// Whether all was as it is known to be.
bool report_all(const std::string& path, std::size_t populations, int chosen) {
    Report report(path, chosen);
    rng_seed(0.25);
    HWND editor = CreateEngineWindow(AppInstance(), nullptr);
    bool known = true;
    int first = 0;
    for (std::size_t i = 0; i < std::min(populations, std::size(kPopulations)); ++i) {
        report_population(&report, first, kPopulations[i].params, editor);
        known = report.digest(first) == kPopulations[i].digest && known;
        first += 2 * kLifers;
    }
    DestroyWindow(editor);
    return report.complete() && known;
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR command_line, int) {
    std::istringstream words(command_line);
    std::string path;
    std::size_t populations = std::size(kPopulations);
    int chosen = -1;
    words >> path >> populations >> chosen;
    SetAppInstance(instance);
    LoadWindowNames(instance);
    RegisterWindowClasses(instance);
    return report_all(path, populations, chosen) ? EXIT_SUCCESS : EXIT_FAILURE;
}
