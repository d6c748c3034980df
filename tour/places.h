// The windows of the tour, and the handling of alerts.
#pragma once

#include "tour/tour.h"

#include <string>

namespace tour {

inline const char* const kMain = "Pelmora Main Window";
inline const char* const kPopulation = "Pelmora Logo Window";
inline const char* const kDialog = "Population Description";
inline const char* const kEditor = "Turtle Editor";
inline const char* const kAlert = "Dialog";

HWND main_window();
HWND population(); // the newest
HWND dialog();

// Resizes the newest population window to four rows of twelve cells.
void show_four_rows();

// Adds steps for an alert, which must show `text`, ignore Escape and close on Return.
void expect_alert(Tour& tour, const std::string& text, const std::string& picture = "");

} // namespace tour
