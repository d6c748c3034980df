// The windows that the tour visits, and what it does with their alerts.
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

// An alert must show `text`, outlive Escape and go with Return.
void expect_alert(Tour& tour, const std::string& text, const std::string& picture = "");

} // namespace tour
