#include "tests/agreement/exchanged.h"

#include "files/clipboard.h"
#include "files/eps.h"
#include "files/metafile.h"
#include "files/population_file.h"
#include "files/turtle_file.h"
#include "platform/user.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace pelmora_test {
namespace {

using namespace pelmora;

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

} // namespace

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

void report_population_file(Report* report, int first, const Population* pop) {
    write_population_file(kFile, pop);
    report->file(first, "population", written());
}

} // namespace pelmora_test
