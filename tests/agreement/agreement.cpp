// Grows and breeds populations from a fixed seed and writes down what the program draws, scores and
// saves of them, so that two platforms can be compared:
//
//     pelmora_agreement REPORT [POPULATIONS]
//
// The default is all populations, 1,280 programs. Fails when a digest is not the known one; where
// two reports differ shows why.
#include "dialogs/metafile_dialog.h"
#include "evolve/random.h"
#include "files/clipboard.h"
#include "files/eps.h"
#include "files/metafile.h"
#include "files/population_file.h"
#include "files/turtle_file.h"
#include "platform/testing/user.h"
#include "resources/resource.h"
#include "services/application.h"
#include "ui/engine_window.h"
#include "ui/population_view.h"
#include "ui/population_window.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace pelmora;

constexpr std::int32_t kLifers = 64;

// A population, and the digest of its lines in the report, which is the same everywhere. It changes
// when anything that is drawn, scored or saved of a program changes.
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

// Fowler, Noll and Vo's hash, on whole values: a single different value always changes it.
template <class Values>
std::uint64_t hash_of(const Values& values) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (auto value : values) {
        hash = (hash ^ static_cast<std::make_unsigned_t<decltype(value)>>(value)) * 0x100000001B3U;
    }
    return hash;
}

// Writes a line for each result of a program, such as "12 single 640x480 6d5f…": its kind with
// parameters, and its hash.
class Report {
  public:
    explicit Report(const std::string& path) : file_(path, std::ios::binary) {}

    void number(int program, const std::string& kind, double value) {
        line(program, kind, std::bit_cast<std::uint64_t>(value));
    }
    void pixels(int program, const std::string& kind, const std::vector<std::uint32_t>& pixels) {
        line(program, kind, hash_of(pixels));
    }
    void file(int program, const std::string& kind, const std::string& bytes) {
        line(program, kind + " " + std::to_string(bytes.size()), hash_of(bytes));
    }
    // Clears what depends on the size and the resolution of the screen, in the header: bounds and
    // frame; the screen in pixels, in millimetres, in micrometres.
    void metafile(int program, const std::string& kind, std::string bytes) {
        for (const auto& [first, end] : {std::pair(8, 40), {72, 88}, {100, 108}}) {
            if (bytes.size() >= 108) {
                std::fill(bytes.begin() + first, bytes.begin() + end, '\0');
            }
        }
        file(program, kind, bytes);
    }

    // A hash of all lines since the last call, which becomes a line itself.
    std::uint64_t digest(int program) {
        const std::uint64_t digest = hash_of(values_);
        line(program, "all of the population", digest);
        values_.clear();
        return digest;
    }

    // False when a line could not be written.
    [[nodiscard]] bool complete() { return file_.flush().good(); }

  private:
    void line(int program, const std::string& kind, std::uint64_t value) {
        values_.push_back(value);
        file_ << program << ' ' << kind << ' ' << std::hex << std::setfill('0') << std::setw(16)
              << value << std::dec << '\n';
    }

    std::ofstream file_;
    std::vector<std::uint64_t> values_; // of the lines since the last digest
};

template <class Record>
Record* record_of(HWND window) {
    return reinterpret_cast<Record*>(GetWindowLongPtrA(window, 0));
}

// --- What the windows show ----------------------------------------------------------------------

// The editor's controls and their frame, which look different on each platform, end above this.
constexpr LONG kEditorTop = 38;

// Of a client area, in pixels.
struct Size {
    int width, height;
};
constexpr Size kGrid{1010, 710};
constexpr Size kSingleViews[] = {{640, 480}, {1180, 700}, {150, 601}};
constexpr Size kEditors[] = {{392, 341}, {1100, 300}, {160, 700}};

std::string name_of(const Size& size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

bool has_size(HWND window, const Size& client) {
    RECT now{};
    GetClientRect(window, &now);
    return now.right == client.width && now.bottom == client.height;
}

// Runs the event loop until the window's client area has this size.
void settle(HWND window, const Size& client) {
    user::Script script([](const std::string& failure) {
        if (!failure.empty()) {
            std::fprintf(stderr, "%s\n", failure.c_str());
            std::exit(EXIT_FAILURE);
        }
        PostQuitMessage(0);
    });
    script.await("the size " + name_of(client), [&] { return has_size(window, client); });
    script.start();
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

void resize(HWND window, const Size& size) {
    // A window manager may change a new window's size a little later.
    do {
        user::resize(window, size.width, size.height);
        settle(window, size);
    } while (!has_size(window, size));
}

void redraw(HWND window) {
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    UpdateWindow(window);
}

// Shows the whole pictures of the cells: their frames hide a part.
void uncover(HWND window, const LogoWindow* record) {
    const WindowDevice device(window);
    for (int i = 0; i < record->lifeCount; ++i) {
        const RECT cell = LogoCellRect(record, i);
        BitBlt(device.get(), cell.left, cell.top, cell.right - cell.left, cell.bottom - cell.top,
               record->cellDCs[i].get(), 0, 0, SRCCOPY);
    }
}

// The grid with its frames, and the cells' own pictures; `first` is the program of the first cell.
void report_cells(Report* report, int first, HWND window, const LogoWindow* record) {
    constexpr int kAround = 6; // frames and gaps
    resize(window, kGrid);
    std::vector<std::vector<std::uint32_t>> framed;
    for (int i = 0; i < record->lifeCount; ++i) {
        const RECT cell = LogoCellRect(record, i);
        framed.push_back(user::pixels(window, {cell.left - kAround, cell.top - kAround,
                                               cell.right + kAround, cell.bottom + kAround}));
    }
    uncover(window, record);
    for (int i = 0; i < record->lifeCount; ++i) {
        report->pixels(first + i, "cell", user::pixels(window, LogoCellRect(record, i)));
        report->pixels(first + i, "framed cell", framed[static_cast<std::size_t>(i)]);
    }
}

// Each program of the current population alone, at several client sizes.
void report_single_views(Report* report, int first, HWND window, LogoWindow* record) {
    record->showGrid = 0;
    for (const Size& size : kSingleViews) {
        resize(window, size);
        for (int i = 0; i < record->lifeCount; ++i) {
            record->zoomTree = record->current->lifers[i].program;
            redraw(window);
            report->pixels(first + i, "single " + name_of(size),
                           user::pixels(window, {0, 0, size.width, size.height}));
        }
    }
    record->showGrid = 1;
}

// The editor's drawing area below its controls, likewise.
void report_editors(Report* report, int first, HWND editor, const LogoWindow* record) {
    auto* engine = record_of<EngineWindow>(editor);
    for (const Size& size : kEditors) {
        resize(editor, size);
        for (int i = 0; i < record->lifeCount; ++i) {
            engine->tree.reset(expr_copy_tree(record->current->lifers[i].program));
            redraw(editor);
            report->pixels(first + i, "editor " + name_of(size),
                           user::pixels(editor, {0, kEditorTop, size.width, size.height}));
        }
    }
}

// --- What is exchanged --------------------------------------------------------------------------

constexpr char kFile[] = "agreement.tmp";
constexpr const char* kMapModes[] = {"LM", "HM", "LE", "HE", "TX"};
constexpr const char* kPenWidths[] = {"0", "1", "3", "20"};

std::string written() {
    std::ifstream file(kFile, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    file.close();
    if (std::remove(kFile) != 0) {
        std::fprintf(stderr, "nothing was written\n");
        std::exit(EXIT_FAILURE);
    }
    return bytes;
}

void write_eps(const SelectedTurtle& turtle) {
    const RECT bounds = draw_measure(turtle.drawContext, turtle.program);
    std::FILE* file = std::fopen(kFile, "wb");
    if (file != nullptr) {
        eps_write(file, turtle.program, bounds, turtle.drawContext->max_steps);
        std::fclose(file);
    }
}

std::string without_date(std::string eps) {
    const std::size_t start = eps.find("%%CreationDate:");
    return eps.erase(start, eps.find('\n', start) - start);
}

void report_metafiles(Report* report, int program, const SelectedTurtle& turtle) {
    int pen = program;
    for (const char* mode : kMapModes) {
        metaMapCode = mode;
        metaPenSize = kPenWidths[static_cast<std::size_t>(pen++) % std::size(kPenWidths)];
        write_metafile(kFile, turtle);
        std::string kind = "metafile ";
        kind.append(metaMapCode).append(" ").append(metaPenSize);
        report->metafile(program, kind, written());
    }
}

// Turtle file, PostScript without its date, metafiles in all map modes, and the copied text and
// picture of a turtle.
void report_exchanged(Report* report, int program, HWND window, const SelectedTurtle& turtle) {
    write_turtle_file(kFile, turtle.program);
    report->file(program, "turtle", written());
    write_eps(turtle);
    report->file(program, "eps", without_date(written()));
    report_metafiles(report, program, turtle);
    CopyTurtle(window, turtle);
    report->file(program, "copied text", user::copied("text/plain"));
    report->metafile(program, "copied picture", user::copied("image/x-emf"));
}

// --- Populations --------------------------------------------------------------------------------

void report_generation(Report* report, int first, HWND window, HWND editor) {
    auto* record = record_of<LogoWindow>(window);
    for (int i = 0; i < record->lifeCount; ++i) {
        report->number(first + i, "score", record->current->lifers[i].score);
        report->number(first + i, "fitness", record->current->lifers[i].fitness);
    }
    report_cells(report, first, window, record);
    report_single_views(report, first, window, record);
    ShowWindow(editor, SW_SHOW);
    report_editors(report, first, editor, record);
    ShowWindow(editor, SW_HIDE);
    for (int i = 0; i < record->lifeCount; ++i) {
        report_exchanged(report, first + i, window,
                         {&record->drawContext, record->current->lifers[i].program, nullptr});
    }
    write_population_file(kFile, record->current.get());
    report->file(first, "population", written());
}

// As a user marks lifers: a third is retired, one is selected.
void mark(LogoWindow* record) {
    record->selected = 7;
    for (int i = 0; i < record->lifeCount; i += 3) {
        record->lifeFlags[i] = 0;
    }
}

// Reports a population after it was grown, and again after it was bred.
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

// True when all digests are the known ones.
bool report_all(const std::string& path, std::size_t populations) {
    Report report(path);
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
    words >> path >> populations;
    SetAppInstance(instance);
    LoadWindowNames(instance);
    RegisterWindowClasses(instance);
    return report_all(path, populations) ? EXIT_SUCCESS : EXIT_FAILURE;
}
