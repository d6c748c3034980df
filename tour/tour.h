// The guided tour's means: steps, checks and pictures.
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

    // What a user does next, once the program is through with all before.
    void step(const std::string& name, std::function<void()> action);

    // Waits until the condition holds.
    void await(const std::string& what, std::function<bool()> condition);

    // Waits for a window with this title to be there, or to be gone.
    void wait_for(const std::string& title);
    void wait_until_gone(const std::string& title);

    // Waits for a file or print dialog.
    void wait_for_system_dialog();

    // Saves a picture of the window with this title.
    void picture(const std::string& name, const std::string& title);

    // The path of a file that the tour leaves.
    std::string file(const std::string& name) const { return (folder_ / name).string(); }

    // Notes a failure of the current step unless `holds`.
    void check(bool holds, const std::string& what);

    // Starts the program and takes the tour through it. The exit code: 0 when every check held.
    int run(HINSTANCE instance);

  private:
    void begin(const std::string& name); // tells of it, in case it comes to no end
    void check_log_files();

    std::filesystem::path folder_;
    std::FILE* out_;
    user::Script script_;
    std::string step_;
    int steps_ = 0;
    int failures_ = 0;
};

// The parts of the tour, in their order.
void visit_main_window(Tour& tour);
void visit_first_population(Tour& tour);
void visit_breeding(Tour& tour);
void visit_second_population(Tour& tour);
void visit_editor(Tour& tour);
void visit_files(Tour& tour);
void visit_clipboard(Tour& tour);
void leave(Tour& tour);

// Draws the files that the tour has left as pictures, by other programs, where they are installed.
void render_files(Tour& tour);

} // namespace tour
