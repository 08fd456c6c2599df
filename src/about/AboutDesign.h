#pragma once

#include <span>

#include "Design.h"

namespace mirvalde {

// The about window's controls in the order of its design.
std::span<const ControlDesign> AboutDesign();

inline constexpr double kAboutClientWidth = 5730;
inline constexpr double kAboutClientHeight = 4785;
// The client area's top-left corner on the screen: the window is not centred.
inline constexpr double kAboutLeft = 2340;
inline constexpr double kAboutTop = 1935;

inline constexpr std::string_view kContactMail = "contact@example.org";
inline constexpr std::string_view kContactWeb = "www.example.org/mirvalde";

}  // namespace mirvalde
