#include "tour/places.h"

#include "resources/resource.h"

namespace tour {

HWND main_window() {
    return user::find_window(kMain);
}
HWND population() {
    return user::find_window(kPopulation);
}
HWND dialog() {
    return user::find_window(kDialog);
}

void show_four_rows() {
    user::resize(population(), 1210, 410);
}

void expect_alert(Tour& tour, const std::string& text, const std::string& picture) {
    tour.wait_for(kAlert);
    tour.step("Escape at an alert", [&tour, text] {
        tour.check(user::text(user::find_window(kAlert), IDC_MESSAGE_TEXT) == text,
                   "the alert says: " + text);
        user::press(user::find_window(kAlert), "Esc");
    });
    if (!picture.empty()) {
        tour.picture(picture, kAlert);
    }
    tour.step("Return at an alert", [&tour] {
        tour.check(user::find_window(kAlert) != nullptr, "Escape leaves the alert open");
        user::press(user::find_window(kAlert), "Return");
    });
    tour.wait_until_gone(kAlert);
}

} // namespace tour
