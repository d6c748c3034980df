#include "dialogs/population_dialog.h"

#include "dialogs/settings_dialog.h"
#include "resources/resource.h"
#include "services/application.h"
#include "services/desktop.h"
#include "services/typed_number.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace pelmora {
namespace {

// What the dialog shows when it opens. Moved sliders are stored at once, the texts when the dialog
// is accepted.
struct NewPopulationSettings {
    char turtles[32];
    char max_children[32];
    char max_depth[32];
    float PCROSS, PCOLOR, PMUTATE, PFNODE;
    float FWDMULT, REPMULT, RPTMULT, CLRMULT, LOOPMULT, TURNMULT;
};

// The settings of this run.
NewPopulationSettings settings = {
    .turtles = "48",
    .max_children = "4",
    .max_depth = "9",
    .PCROSS = 0.8F,
    .PCOLOR = 0.1F,
    .PMUTATE = 0.2F,
    .PFNODE = 0.75F,
    .FWDMULT = 0.5F,
    .REPMULT = 0.05F,
    .RPTMULT = 0.1F,
    .CLRMULT = 0.1F,
    .LOOPMULT = 0.2F,
    .TURNMULT = 0.3F,
};

using SettingText = char[sizeof settings.turtles];

// A field with the arrows that step it, and its setting.
struct NumberField {
    int edit;
    int arrows;
    SettingText& text;
};
const NumberField kNumberFields[] = {
    {IDC_TURTLES, IDC_TURTLES_SPIN, settings.turtles},
    {IDC_MAX_CHILDREN, IDC_MAX_CHILDREN_SPIN, settings.max_children},
    {IDC_MAX_DEPTH, IDC_MAX_DEPTH_SPIN, settings.max_depth},
};

struct Slider {
    int id;
    float& value;        // 0 to 1
    int known = 0;       // the position last shown or read
    bool moving = false; // a move was notified, its end not yet
};
Slider sliders[] = {
    {IDC_FWDMULT, settings.FWDMULT},   {IDC_TURNMULT, settings.TURNMULT},
    {IDC_LOOPMULT, settings.LOOPMULT}, {IDC_CLRMULT, settings.CLRMULT},
    {IDC_RPTMULT, settings.RPTMULT},   {IDC_REPMULT, settings.REPMULT},
    {IDC_PCROSS, settings.PCROSS},     {IDC_PCOLOR, settings.PCOLOR},
    {IDC_PMUTATE, settings.PMUTATE},   {IDC_PFNODE, settings.PFNODE},
};
constexpr int kSliderTop = 100;

// --- Messages of the dialog ----------------------------------------------------------------------

void set_up_slider(HWND trackbar, Slider* slider) {
    constexpr int kTick = 5;
    constexpr int kLine = 5;
    constexpr int kPage = 10;
    // In double: a float product would round up some values that must be truncated.
    const int position = static_cast<int>(double{slider->value} * kSliderTop);
    SendMessageA(trackbar, TBM_SETTICFREQ, kTick, 0);
    SendMessageA(trackbar, TBM_SETLINESIZE, 0, kLine);
    SendMessageA(trackbar, TBM_SETPAGESIZE, 0, kPage);
    SendMessageA(trackbar, TBM_SETRANGE, FALSE, MAKELPARAM(0, kSliderTop));
    SendMessageA(trackbar, TBM_SETPOS, TRUE, position);
    slider->known = position;
    slider->moving = false;
}

void on_open(HWND dialog) {
    for (Slider& slider : sliders) {
        set_up_slider(GetDlgItem(dialog, slider.id), &slider);
    }
    for (const NumberField& field : kNumberFields) {
        SendMessageA(GetDlgItem(dialog, field.arrows), UDM_SETBUDDY,
                     reinterpret_cast<WPARAM>(GetDlgItem(dialog, field.edit)), 0);
    }
    for (const NumberField& field : kNumberFields) {
        SetDlgItemTextA(dialog, field.edit, field.text);
    }
    CenterOnDesktop(dialog);
}

// A key that is released here may have been pressed on another slider. A slider that did not move
// keeps its value, which may lie between two positions.
void take_slider(HWND trackbar, Slider* slider) {
    const auto low = static_cast<long>(SendMessageA(trackbar, TBM_GETRANGEMIN, 0, 0));
    const auto high = static_cast<long>(SendMessageA(trackbar, TBM_GETRANGEMAX, 0, 0));
    const auto position = static_cast<long>(SendMessageA(trackbar, TBM_GETPOS, 0, 0));
    if (slider->moving || position != slider->known) {
        slider->value = static_cast<float>(static_cast<double>(position - low) /
                                           static_cast<double>(high - low));
    }
    std::fprintf(stderr, "DLG HSCROLL: Min = %ld, Max = %ld, Pos = %ld, Pct %f\n", low, high,
                 position, double{slider->value});
    slider->known = static_cast<int>(position);
}

// A slider may still be moving when the dialog ends, with a key or the mouse button down.
void take_moved_sliders(HWND dialog) {
    for (Slider& slider : sliders) {
        HWND trackbar = GetDlgItem(dialog, slider.id);
        if (SendMessageA(trackbar, TBM_GETPOS, 0, 0) != slider.known) {
            take_slider(trackbar, &slider);
        }
    }
}

// False for a notification that is not a slider's or does not change its value.
bool on_slider(HWND trackbar, WORD code) {
    auto* slider =
        std::find_if(std::begin(sliders), std::end(sliders),
                     [id = GetDlgCtrlID(trackbar)](const Slider& s) { return s.id == id; });
    if (slider == std::end(sliders)) {
        return false;
    }
    const bool ended = code == TB_ENDTRACK;
    slider->moving = slider->moving || !ended;
    if (code != TB_PAGEUP && code != TB_PAGEDOWN && !ended) {
        return false;
    }
    take_slider(trackbar, slider);
    slider->moving = !ended;
    return true;
}

void on_step(HWND dialog, const NMUPDOWN& proposal) {
    const auto field =
        reinterpret_cast<HWND>(SendMessageA(proposal.hdr.hwndFrom, UDM_GETBUDDY, 0, 0));
    const int id = GetDlgCtrlID(field);
    SettingText text;
    if (GetDlgItemTextA(dialog, id, text, sizeof text) == 0) {
        return;
    }
    std::snprintf(text, sizeof text, "%d", SteppedNumber(TypedNumber(text), proposal.iDelta));
    SetDlgItemTextA(dialog, id, text);
}

// False when a field is empty.
bool take_texts(HWND dialog) {
    return std::all_of(
        std::begin(kNumberFields), std::end(kNumberFields), [dialog](const NumberField& field) {
            return GetDlgItemTextA(dialog, field.edit, field.text, sizeof field.text) != 0;
        });
}

INT_PTR on_command(HWND dialog, WORD command) {
    if (command == IDOK || command == IDCANCEL) {
        take_moved_sliders(dialog);
    }
    return answer_button(dialog, command);
}

void fill_params(EvolveParams* params) {
    params->size = params_population_size(TypedNumber(settings.turtles));
    params->MAX_CHILD = params_max_child(TypedNumber(settings.max_children));
    params->MAX_DEPTH = params_max_depth(TypedNumber(settings.max_depth));
    params->PCROSS = settings.PCROSS;
    params->PMUTATE = settings.PMUTATE;
    params->PFNODE = settings.PFNODE;
    params->PCOLOR = settings.PCOLOR;
    params->FWDMULT = settings.FWDMULT;
    params->TURNMULT = settings.TURNMULT;
    params->LOOPMULT = settings.LOOPMULT;
    params->CLRMULT = settings.CLRMULT;
    params->RPTMULT = settings.RPTMULT;
    params->REPMULT = settings.REPMULT;
}

} // namespace

INT_PTR CALLBACK PopulationDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG:
        begin_answer(dialog, lparam);
        on_open(dialog);
        return TRUE;
    case WM_HSCROLL:
        return on_slider(reinterpret_cast<HWND>(lparam), LOWORD(wparam)) ? TRUE : FALSE;
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lparam)->code == UDN_DELTAPOS) {
            on_step(dialog, *reinterpret_cast<const NMUPDOWN*>(lparam));
        }
        return FALSE; // lets the arrows update their own position
    case WM_COMMAND:
        return on_command(dialog, LOWORD(wparam));
    default:
        return FALSE;
    }
}

bool AskPopulation(EvolveParams* params) {
    const auto take = [params](HWND dialog) {
        const bool complete = take_texts(dialog);
        fill_params(params);
        return complete;
    };
    return ask_settings(MainWindow(), IDD_POPULATION, PopulationDlgProc, take);
}

} // namespace pelmora
