#include "FileListing.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <filesystem>
#endif

namespace mirvalde {

bool ListedFileExists(const std::string& path) {
#ifdef _WIN32
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes &
            (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM)) == 0;
#else
    std::error_code error;
    const std::filesystem::path file(path);
    return std::filesystem::is_regular_file(file, error) &&
           !file.filename().string().starts_with('.');
#endif
}

}  // namespace mirvalde
