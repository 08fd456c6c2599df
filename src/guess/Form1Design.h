#pragma once

#include <span>
#include <string_view>

#include "Design.h"

namespace mirvalde {

// The main window's controls in the order of its design.
std::span<const ControlDesign> Form1Design();

// The caption a control of the main window has when the window loads.
std::string_view Form1Caption(std::string_view name);

inline constexpr std::string_view kForm1Caption = "Mirvalde";
inline constexpr double kForm1ClientWidth = 8820;
inline constexpr double kForm1ClientHeight = 4620;
inline constexpr int kMaxProposalLength = 9;

}  // namespace mirvalde
