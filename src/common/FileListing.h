#pragma once

#include <string>

namespace mirvalde {

// True when a folder listing shows `path` as a file: it exists and is neither a folder, nor
// hidden, nor a system file (on Windows by its attributes, elsewhere a name that starts with a
// dot is hidden). The path is in the system's own encoding: the ANSI code page on Windows.
bool ListedFileExists(const std::string& path);

}  // namespace mirvalde
