#include "ui/new_population.h"

#include "dialogs/population_dialog.h"
#include "evolve/params.h"
#include "evolve/random.h"
#include "services/application.h"
#include "services/status.h"
#include "ui/population_window.h"

#include <cstdio>

namespace pelmora {

void NewPopulation() {
    EvolveParams params{};
    if (!AskPopulation(&params)) {
        SetStatusText("User canceled.");
        return;
    }
    rng_seed(rng_clock_seed());
    newPopParams = params;
    params_list(newPopParams, stderr);
    HWND window = CreateLogoWindow(AppInstance(), newPopParams);
    if (window != nullptr) {
        ShowWindow(window, SW_SHOWNORMAL);
        UpdateWindow(window);
    }
}

} // namespace pelmora
