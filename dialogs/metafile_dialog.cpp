#include "dialogs/metafile_dialog.h"

#include "dialogs/pen_size.h"
#include "dialogs/settings_dialog.h"
#include "resources/resource.h"

namespace pelmora {

// Strings this short are not allocated, so nothing is thrown.
// NOLINTBEGIN(cert-err58-cpp)
std::string metaPenSize = "1";
std::string metaMapCode = "LM";
// NOLINTEND(cert-err58-cpp)

namespace {

struct MapMode {
    const char* code;
    int button;
    int mode;
};
// The first is the default for an unknown code.
constexpr MapMode kMapModes[] = {
    {"LM", IDC_LOW_METRIC, MM_LOMETRIC},   {"HM", IDC_HIGH_METRIC, MM_HIMETRIC},
    {"LE", IDC_LOW_ENGLISH, MM_LOENGLISH}, {"HE", IDC_HIGH_ENGLISH, MM_HIENGLISH},
    {"TX", IDC_TEXT_MODE, MM_TEXT},
};

void show_settings(HWND dialog) {
    SetDlgItemTextA(dialog, IDC_PEN_SIZE, metaPenSize.c_str());
    for (const MapMode& mode : kMapModes) {
        CheckDlgButton(dialog, mode.button, metaMapCode == mode.code ? BST_CHECKED : BST_UNCHECKED);
    }
}

// False when the pen's width is missing.
bool take_settings(HWND dialog) {
    for (const MapMode& mode : kMapModes) {
        if (IsDlgButtonChecked(dialog, mode.button) == BST_CHECKED) {
            metaMapCode = mode.code;
            break;
        }
    }
    return take_pen_size(dialog, &metaPenSize);
}

} // namespace

bool AskMetafileSettings(HWND owner) {
    return ask_settings(owner, IDD_METAFILE, MetafileMappingDlgProc, take_settings);
}

int MetafileMapMode() {
    for (const MapMode& mode : kMapModes) {
        if (metaMapCode.compare(0, 2, mode.code) == 0) {
            return mode.mode;
        }
    }
    return kMapModes[0].mode;
}

INT_PTR CALLBACK MetafileMappingDlgProc(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        begin_answer(dialog, lparam);
        show_settings(dialog);
        return TRUE;
    }
    return message == WM_COMMAND ? answer_button(dialog, LOWORD(wparam)) : FALSE;
}

} // namespace pelmora
