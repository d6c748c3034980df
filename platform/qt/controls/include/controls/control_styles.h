// Control classes and styles in dialog templates and CreateWindowExA, with the values of Windows.
#pragma once

#include <cstdint>

namespace platform {

// Classes named by number
inline constexpr std::uint16_t kButtonClass = 0x80;
inline constexpr std::uint16_t kEditClass = 0x81;
inline constexpr std::uint16_t kStaticClass = 0x82;

// Styles of all windows
inline constexpr std::uint32_t kVisible = 0x10000000;  // WS_VISIBLE
inline constexpr std::uint32_t kDisabled = 0x08000000; // WS_DISABLED
inline constexpr std::uint32_t kBorder = 0x00800000;   // WS_BORDER
inline constexpr std::uint32_t kChild = 0x40000000;    // WS_CHILD
inline constexpr std::uint32_t kGroup = 0x00020000;    // WS_GROUP
inline constexpr std::uint32_t kTabStop = 0x00010000;  // WS_TABSTOP
inline constexpr std::uint32_t kCommonStyles =
    kVisible | kDisabled | kBorder | kChild | kGroup | kTabStop;

// Buttons: the low four bits are the kind.
inline constexpr std::uint32_t kPushButton = 0;
inline constexpr std::uint32_t kDefaultPushButton = 1;
inline constexpr std::uint32_t kGroupBox = 7;
inline constexpr std::uint32_t kAutoRadioButton = 9;

// Statics: the low five bits are the kind.
inline constexpr std::uint32_t kStaticKind = 0x1F;
inline constexpr std::uint32_t kStaticLeft = 0;
inline constexpr std::uint32_t kStaticCenter = 1;
inline constexpr std::uint32_t kStaticRight = 2;
inline constexpr std::uint32_t kStaticIcon = 3;
inline constexpr std::uint32_t kStaticNoPrefix = 0x0080;
inline constexpr std::uint32_t kStaticSunken = 0x1000;

// Edit fields
inline constexpr std::uint32_t kEditAutoScroll = 0x0080;
inline constexpr std::uint32_t kEditNumber = 0x2000;

// Trackbars
inline constexpr std::uint32_t kTrackbarAutoTicks = 0x0001;
inline constexpr std::uint32_t kTrackbarTooltips = 0x0100;

// Up-down controls
inline constexpr std::uint32_t kUpDownArrowKeys = 0x0020;

} // namespace platform
