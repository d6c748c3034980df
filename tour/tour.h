// The framework of the guided tour: steps, checks and pictures.
#pragma once

#include "platform/testing/user.h"

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

namespace tour {

class Tour {
  public:
    explicit Tour(const std::string& folder);
    ~Tour();
    Tour(const Tour&) = delete;
    Tour& operator=(const Tour&) = delete;

    // Adds a step, which runs after the effects of the earlier ones are handled.
    void step(const std::string& name, std::function<void()> action);

    // Adds a step that waits until the condition holds.
    void await(const std::string& what, std::function<bool()> condition);

    // Adds a step that waits until a window with this title is open, or closed.
    void wait_for(const std::string& title);
    void wait_until_gone(const std::string& title);

    // Adds a step that waits for a file or print dialog.
    void wait_for_system_dialog();

    // Adds a step that saves a picture of the window with this title.
    void picture(const std::string& name, const std::string& title);

    // The path of an output file of the tour; an absolute `name` stays what it is.
    std::string file(const std::string& name) const {
        return (folder_ / name).make_preferred().string();
    }

    // Reports a failure of the current step unless `holds`.
    void check(bool holds, const std::string& what);

    // Starts the program and runs the steps. Returns the exit code: 0 when all checks passed.
    int run(HINSTANCE instance);

  private:
    void begin(const std::string& name); // prints the name first, in case the step hangs
    void check_log_files();

    std::filesystem::path folder_;
    std::FILE* out_;
    user::Script script_;
    std::string step_;
    int steps_ = 0;
    int failures_ = 0;
};

// Each adds the steps of one part of the tour.
void visit_main_window(Tour& tour);
void visit_first_population(Tour& tour);
void visit_breeding(Tour& tour);
void visit_second_population(Tour& tour);
void visit_editor(Tour& tour);
void visit_files(Tour& tour);
void visit_clipboard(Tour& tour);
void visit_example(Tour& tour);
void leave(Tour& tour);

// Converts the tour's output files to pictures by other programs, where they are installed.
void render_files(Tour& tour);

} // namespace tour
