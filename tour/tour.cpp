// The guided tour: a simulated user drives the real program in its own message loop. Every step is
// checked and pictures are saved. The argument is the folder for the pictures.
#include "tour/tour.h"

#include "evolve/random.h"
#include "ui/shell.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <utility>

#include <unistd.h>

namespace tour {

namespace {

// A fixed seed, for the same turtles on every tour.
std::uint32_t fixed_ticks() {
    return 61;
}

// The log lines of a new population.
std::string listing(const std::string& pcross, const std::string& children,
                    const std::string& depth) {
    return "PCROSS    = " + pcross + "\nPCOLOR    = 0.100000\nPMUTATE   = 0.200000\n" +
           "PFNODE    = 0.750000\nMAX_CHILD = " + children + "\nMAX_DEPTH = " + depth +
           "\nFWDMULT   = 0.500000\nTURNMULT   = 0.300000\nLOOPMULT   = 0.200000\n" +
           "CLRMULT   = 0.100000\nRPTMULT   = 0.100000\nREPMULT   = 0.050000\n";
}

} // namespace

Tour::Tour(const std::string& folder)
    // A copy of the original standard output, as the program redirects its streams to its log
    // files.
    : folder_(std::filesystem::absolute(folder)), out_(::fdopen(::dup(STDOUT_FILENO), "w")),
      script_([this](const std::string& failure) {
          check(failure.empty(), failure);
          PostQuitMessage(0);
      }) {
    // Unbuffered, so that the output is complete when the tour crashes or is killed.
    std::setvbuf(out_, nullptr, _IONBF, 0);
}

Tour::~Tour() {
    std::fclose(out_);
}

void Tour::check(bool holds, const std::string& what) {
    if (!holds) {
        ++failures_;
        std::fprintf(out_, "FAILED at \"%s\": %s\n", step_.c_str(), what.c_str());
    }
}

void Tour::step(const std::string& name, std::function<void()> action) {
    script_.then(name, [this, name, action = std::move(action)] {
        begin(name);
        ++steps_;
        action();
    });
}

void Tour::begin(const std::string& name) {
    step_ = name;
    std::fprintf(out_, "%s\n", name.c_str());
}

void Tour::await(const std::string& what, std::function<bool()> condition) {
    const std::string name = "waiting for " + what;
    script_.await(what, [this, name, condition = std::move(condition)] {
        if (step_ != name) {
            begin(name);
        }
        return condition();
    });
}

void Tour::wait_for(const std::string& title) {
    await("the window \"" + title + "\"", [title] { return user::find_window(title) != nullptr; });
}

void Tour::wait_until_gone(const std::string& title) {
    await("the end of the window \"" + title + "\"",
          [title] { return user::find_window(title) == nullptr; });
}

void Tour::wait_for_system_dialog() {
    await("a system dialog", [] { return !user::system_dialog().empty(); });
}

void Tour::picture(const std::string& name, const std::string& title) {
    step("picture " + name, [this, name, title] {
        const std::string path = file(name + ".png");
        check(user::save_picture(user::find_window(title), path), "cannot write " + path);
    });
}

int Tour::run(HINSTANCE instance) {
    pelmora::rng_set_tick_source(fixed_ticks);
    script_.start();
    const int exit_code = pelmora::PelmoraMain(instance, SW_SHOWNORMAL);
    begin("after the program's end");
    check(exit_code == 0, "the program's exit code is 0");
    check_log_files();
    render_files(*this);
    std::fprintf(out_, "%d steps, %d failures\n", steps_, failures_);
    return failures_ == 0 ? 0 : 1;
}

void Tour::check_log_files() {
    const std::string banner = "------ THIS IS PELMORA ----------\n";
    const auto read = [](const char* path) {
        std::ifstream file(path); // text mode: line ends depend on the system
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    check(read("stdout.txt") == banner, "stdout.txt holds the banner alone");
    const std::string log = read("stderr.txt");
    const auto moved = [](const char* position, const char* part) {
        return std::string("DLG HSCROLL: Min = 0, Max = 100, Pos = ") + position + ", Pct " + part +
               "\n";
    };
    // A page is reported twice, on the key and on TB_ENDTRACK.
    const std::string pages = moved("70", "0.700000") + moved("70", "0.700000") +
                              moved("80", "0.800000") + moved("80", "0.800000");
    const std::string end = moved("100", "1.000000");
    check(log == banner + listing("0.800000", "4", "9") + pages + end + end +
                     listing("1.000000", "63", "1"),
          "stderr.txt holds banner, listing, slider lines and another listing, not: " + log);
}

} // namespace tour

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR command_line, int) {
    tour::Tour tour(command_line);
    tour::visit_main_window(tour);
    tour::visit_first_population(tour);
    tour::visit_breeding(tour);
    tour::visit_editor(tour);
    tour::visit_files(tour);
    tour::visit_clipboard(tour);
    tour::visit_example(tour);
    tour::visit_second_population(tour);
    tour::leave(tour);
    return tour.run(instance);
}
