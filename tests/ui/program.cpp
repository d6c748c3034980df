#include "tests/ui/program.h"

#include "evolve/random.h"
#include "tests/support/trees.h"
#include "ui/shell.h"
#include "ui/window_names.h"

#include <gtest/gtest.h>

namespace pelmora_test {

using namespace pelmora;

void prepare_program() {
    static const bool prepared = [] {
        LoadWindowNames(nullptr);
        RegisterWindowClasses(nullptr);
        return true;
    }();
    ASSERT_TRUE(prepared);
}

EvolveParams small_params(std::int32_t size) {
    return {size, 4, 4, 0.8, 0.2, 0.75, 0.1, 0.5, 0.3, 0.2, 0.1, 0.15, 0.05};
}

PopulationWindow::PopulationWindow(const EvolveParams& params) {
    prepare_program();
    rng_seed(0.25);
    window_ = CreateLogoWindow(nullptr, params);
    ShowWindow(window_, SW_SHOWNORMAL);
    settle();
}

PopulationWindow::~PopulationWindow() {
    if (IsWindow(window_)) {
        DestroyWindow(window_);
    }
    settle();
}

LogoWindow* PopulationWindow::record() const {
    return reinterpret_cast<LogoWindow*>(GetWindowLongPtrA(window_, 0));
}

std::vector<std::string> PopulationWindow::programs() const {
    std::vector<std::string> lines;
    for (int i = 0; i < record()->lifeCount; ++i) {
        lines.push_back(line_of(record()->current->lifers[i].program));
    }
    return lines;
}

} // namespace pelmora_test
