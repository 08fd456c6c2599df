#pragma once

#include <string_view>

namespace mirvalde {

// The program's title and version, given once, by the build.
inline constexpr std::string_view kAppTitle = MIRVALDE_TITLE;
inline constexpr int kVersionMajor = MIRVALDE_VERSION_MAJOR;
inline constexpr int kVersionMinor = MIRVALDE_VERSION_MINOR;
inline constexpr int kVersionRevision = MIRVALDE_VERSION_PATCH;

}  // namespace mirvalde
