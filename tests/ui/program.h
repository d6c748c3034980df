// The program's windows for tests, without its start-up.
#pragma once

#include "tests/support/user_loop.h"
#include "ui/population_record.h"
#include "ui/population_window.h"

#include <string>
#include <vector>

namespace pelmora_test {

// Registers the program's window classes once.
void prepare_program();

// Parameters for `size` lifers with small programs; the six weights differ.
pelmora::EvolveParams small_params(std::int32_t size);

// A shown population window, grown from a fixed seed; closed at the end.
class PopulationWindow {
  public:
    explicit PopulationWindow(const pelmora::EvolveParams& params);
    ~PopulationWindow();
    PopulationWindow(const PopulationWindow&) = delete;
    PopulationWindow& operator=(const PopulationWindow&) = delete;

    HWND handle() const { return window_; }
    pelmora::LogoWindow* record() const;

    // The programs of its current population, each as one line.
    std::vector<std::string> programs() const;

    // Sends a command as its menu does.
    void command(int id) const {
        SendMessageA(window_, WM_COMMAND, MAKEWPARAM(unsigned(id), 0), 0);
    }

  private:
    HWND window_;
};

} // namespace pelmora_test
