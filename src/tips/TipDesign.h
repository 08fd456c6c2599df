#pragma once

#include <span>
#include <string_view>

#include "Design.h"

namespace mirvalde {

// The tip window's controls in the order of its design.
std::span<const ControlDesign> TipDesign();

inline constexpr std::string_view kTipCaption = "Astuce du jour";
inline constexpr double kTipClientWidth = 5895;
inline constexpr double kTipClientHeight = 3285;

}  // namespace mirvalde
