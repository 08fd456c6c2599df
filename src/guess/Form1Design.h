#pragma once

#include <span>
#include <string_view>

#include "Design.h"

namespace mirvalde {

// The main window's controls in the order of its design.
std::span<const ControlDesign> Form1Design();

inline constexpr std::string_view kForm1Caption = "Mirvalde";
inline constexpr double kForm1ClientWidth = 8820;
inline constexpr double kForm1ClientHeight = 4620;
inline constexpr int kMaxProposalLength = 9;

}  // namespace mirvalde
