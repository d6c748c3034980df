// The tour's steps for the editor, files, printing and the clipboard.
#include "resources/resource.h"
#include "services/status.h"
#include "tour/grid.h"
#include "tour/places.h"
#include "tour/tour.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace tour {

namespace {

constexpr int kSelected = 21;

const char* const kExample = PELMORA_EXAMPLES "/generation-10.lpf";
const char* const kPopulationFile = "generation.lpf";
const char* const kExampleFile = "example.lpf";
const char* const kTurtleFile = "turtle.txt";
const char* const kEpsFile = "turtle.eps";
const char* const kMetafile = "turtle.emf";
const char* const kPrintedFile = "printed.pdf";

HWND editor() {
    return user::find_window(kEditor);
}

void choose(Tour& tour, const std::string& entry) {
    tour.step(entry, [&tour, entry] {
        tour.check(user::choose(population(), "File", entry), "the menu entry " + entry);
    });
}

void name_file(Tour& tour, const char* name, const std::string& picture = "") {
    tour.wait_for_system_dialog();
    if (!picture.empty()) {
        tour.step("picture " + picture, [&tour, picture] {
            tour.check(user::save_system_dialog_picture(tour.file(picture + ".png")), picture);
        });
    }
    tour.step(name, [&tour, name] { user::choose_file(tour.file(name)); });
}

void expect_status(Tour& tour, const std::string& text) {
    tour.step("the status line", [&tour, text] {
        tour.check(pelmora::StatusText() == text, "the status line says: " + text);
    });
}

std::string content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void show_limit(Tour& tour, const std::string& limit) {
    tour.step("limit " + limit, [limit] { user::type(editor(), IDC_LIMIT, limit); });
    tour.step("Redraw", [] { user::click_control(editor(), IDC_REDRAW); });
    tour.picture("editor-" + limit, kEditor);
}

} // namespace

void visit_editor(Tour& tour) {
    tour.step("a wide window", show_four_rows);
    tour.step("edit a turtle", [] {
        click_cell(population(), kSelected);
        user::press(population(), "Ctrl+D");
    });
    tour.wait_for(kEditor);
    tour.step("Ctrl+W", [] { user::press(editor(), "Ctrl+W"); });
    tour.wait_until_gone(kEditor);
    tour.step("edit it again", [] { user::press(population(), "Ctrl+D"); });
    tour.wait_for(kEditor);
    auto drawings = std::make_shared<std::vector<std::vector<std::uint32_t>>>();
    for (const char* limit : {"500", "3000", "10240"}) {
        show_limit(tour, limit);
        tour.step("what is drawn", [drawings] {
            drawings->push_back(user::pixels(editor(), {0, 40, 300, 300}));
        });
    }
    tour.step("shortcuts are not for the limit field", [&tour, drawings] {
        tour.check((*drawings)[0] != (*drawings)[1] && (*drawings)[1] != (*drawings)[2],
                   "three limits, three drawings");
        user::focus(editor(), IDC_LIMIT);
        user::press(editor(), "Ctrl+W");
    });
    tour.step("but its menu is", [&tour] {
        tour.check(editor() != nullptr, "the editor is still open");
        tour.check(user::choose(editor(), "File", "Close"), "the editor's menu");
    });
    tour.wait_until_gone(kEditor);
}

namespace {

void visit_population_file(Tour& tour) {
    auto grid = std::make_shared<Grid>();
    choose(tour, "Save Population...");
    name_file(tour, kPopulationFile, "save-population");
    expect_status(tour, "Sucessfully saved turtle population.");
    tour.step("Ctrl+E", [grid] {
        *grid = Grid(population());
        user::press(population(), "Ctrl+E");
    });
    tour.step("another generation", [&tour, grid] {
        tour.check(Grid(population()).changed_from(*grid) >= 30, "the pictures are new");
    });
    choose(tour, "Load Population...");
    name_file(tour, kPopulationFile);
    expect_alert(tour, "Loaded 48 turtles.");
    tour.step("the saved generation", [&tour, grid] {
        tour.check(Grid(population()).changed_from(*grid) == 0, "every picture is back");
    });
}

void visit_turtle_files(Tour& tour) {
    tour.step("Ctrl+S", [] { user::press(population(), "Ctrl+S"); });
    name_file(tour, kTurtleFile);
    expect_status(tour, "Sucessfully saved turtle expression.");
    choose(tour, "Save Turtle EPS...");
    name_file(tour, kEpsFile);
    expect_status(tour, "Sucessfully saved turtle PostScript.");
    choose(tour, "Save Turtle Metafile");
    name_file(tour, kMetafile);
    tour.wait_for("Enhanced Metafile Mapping");
    tour.picture("metafile-mapping", "Enhanced Metafile Mapping");
    tour.step("Return",
              [] { user::press(user::find_window("Enhanced Metafile Mapping"), "Return"); });
    tour.wait_until_gone("Enhanced Metafile Mapping");
}

void visit_printer(Tour& tour) {
    tour.step("Ctrl+P", [] { user::press(population(), "Ctrl+P"); });
    tour.wait_for("Print Pensize");
    tour.picture("print-pensize", "Print Pensize");
    tour.step("a pen of 4 pixels", [] {
        user::type(user::find_window("Print Pensize"), IDC_PEN_SIZE, "4");
        user::press(user::find_window("Print Pensize"), "Return");
    });
    tour.wait_for_system_dialog();
    tour.step("print into a file", [&tour] {
        tour.check(user::save_system_dialog_picture(tour.file("print.png")), "print.png");
        user::print_to_file(tour.file(kPrintedFile));
    });
    tour.step("what was written", [&tour] {
        for (const char* name : {kPopulationFile, kTurtleFile, kEpsFile, kMetafile, kPrintedFile}) {
            std::error_code error;
            const auto size = std::filesystem::file_size(tour.file(name), error);
            tour.check(!error && size > 30, name);
        }
    });
}

} // namespace

void visit_files(Tour& tour) {
    // Removes the files of an earlier tour, as the dialogs would ask about them.
    for (const char* name :
         {kPopulationFile, kExampleFile, kTurtleFile, kEpsFile, kMetafile, kPrintedFile}) {
        std::filesystem::remove(tour.file(name));
    }
    visit_population_file(tour);
    visit_turtle_files(tour);
    visit_printer(tour);
    auto grid = std::make_shared<Grid>();
    tour.step("another turtle", [grid] {
        *grid = Grid(population());
        click_cell(population(), kSelected + 1);
    });
    tour.step("Ctrl+O", [] { user::press(population(), "Ctrl+O"); });
    name_file(tour, kTurtleFile);
    tour.step("the saved turtle", [&tour, grid] {
        const Grid now(population());
        tour.check(now.changed_from(*grid) == 1, "one picture has changed");
        tour.check(now.same_picture(kSelected, kSelected + 1), "to that of the saved turtle");
    });
}

void visit_clipboard(Tour& tour) {
    tour.step("Ctrl+C", [] {
        click_cell(population(), kSelected);
        user::press(population(), "Ctrl+C");
    });
    tour.step("Ctrl+V", [] {
        click_cell(population(), kSelected + 2);
        user::press(population(), "Ctrl+V");
    });
    tour.step("the copied turtle", [&tour] {
        tour.check(Grid(population()).same_picture(kSelected, kSelected + 2), "twice the same");
    });
    tour.picture("copied", kPopulation);
}

void visit_example(Tour& tour) {
    auto grid = std::make_shared<Grid>();
    tour.step("before the example", [grid] { *grid = Grid(population()); });
    choose(tour, "Load Population...");
    name_file(tour, kExample);
    expect_alert(tour, "Loaded 48 turtles.");
    tour.step("the example", [&tour, grid] {
        tour.check(Grid(population()).changed_from(*grid) >= 40, "the pictures are new");
    });
    tour.picture("example", kPopulation);
    choose(tour, "Save Population...");
    name_file(tour, kExampleFile);
    expect_status(tour, "Sucessfully saved turtle population.");
    tour.step("the file", [&tour] {
        tour.check(content(tour.file(kExampleFile)) == content(tour.file(kExample)),
                   "an unchanged population is saved as it was loaded");
    });
}

void render_files(Tour& tour) {
    // NOLINTBEGIN(cert-env33-c): runs those of these programs that are installed
    const auto render = [&tour](const std::string& program, const std::string& command,
                                const char* picture) {
        if (std::system(("command -v " + program + " >/dev/null").c_str()) == 0) {
            const bool done = std::system((command + " >/dev/null 2>&1").c_str()) == 0;
            tour.check(done && std::filesystem::exists(tour.file(picture)), command);
        }
    };
    // NOLINTEND(cert-env33-c)
    const auto quoted = [&tour](const char* name) { return " '" + tour.file(name) + "'"; };
    std::filesystem::remove(tour.file("turtle-eps.png"));
    render("gs",
           "gs -q -dBATCH -dNOPAUSE -dEPSCrop -sDEVICE=png16m -r72 -o" + quoted("turtle-eps.png") +
               quoted(kEpsFile),
           "turtle-eps.png");
    render("pdftoppm",
           "pdftoppm -png -singlefile -aaVector no -r 75" + quoted(kPrintedFile) +
               quoted("printed"),
           "printed.png");
    render("emf2svg-conv",
           "emf2svg-conv -i" + quoted(kMetafile) + " -o" + quoted("turtle-emf.svg") +
               " && rsvg-convert -w 500 -o" + quoted("turtle-emf.png") + quoted("turtle-emf.svg"),
           "turtle-emf.png");
}

} // namespace tour
