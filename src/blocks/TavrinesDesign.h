#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Design.h"

namespace mirvalde {

// The falling-blocks window's controls in the order of its design.
std::span<const ControlDesign> TavrinesDesign();

// The caption a control of the window has when the window loads.
std::string_view TavrinesCaption(std::string_view name);

// "lblStatCouleur(i)" and "shpCarre(i)": the counter and the legend square of colour code i + 1.
std::string StatCouleurName(int index);
std::string CarreName(int index);

inline constexpr std::string_view kTavrinesCaption = "Tavrines";
inline constexpr double kTavrinesClientWidth = 3645;
inline constexpr double kTavrinesClientHeight = 4620;

}  // namespace mirvalde
