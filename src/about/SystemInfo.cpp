#include "SystemInfo.h"

#include <array>

#include "AppInfo.h"
#include "FileListing.h"
#include "NumberFormat.h"

namespace mirvalde {
namespace {

// Read control, query value, set value, create subkey, enumerate subkeys, notify, create link:
// a key that this account may not write to is not opened.
constexpr std::uint32_t kAccess = 0x2003F;
constexpr std::uint32_t kBufferSize = 1024;

#ifdef _WIN32
constexpr const char* kToolName = "\\MSINFO32.EXE";
#else
constexpr const char* kToolName = "/MSINFO32.EXE";
#endif

}  // namespace

std::string AboutCaption() {
    return "À propos de " + std::string(kAppTitle);
}

std::string VersionLine() {
    return "Version " + Digits(kVersionMajor) + "." + Digits(kVersionMinor) + "." +
           Digits(kVersionRevision);
}

bool GetKeyValue(MachineRegistry& registry, MachineRegistry::Key KeyRoot,
                 const std::string& KeyName, const std::string& SubKeyRef, std::string& KeyVal) {
    MachineRegistry::Key key = 0;
    if (registry.RegOpenKeyEx(KeyRoot, KeyName, 0, kAccess, key) !=
        MachineRegistry::ERROR_SUCCESS) {
        KeyVal.clear();
        return false;
    }
    std::array<char, kBufferSize> buffer{};
    std::uint32_t size = kBufferSize;
    std::uint32_t type = 0;
    if (registry.RegQueryValueEx(key, SubKeyRef, type, buffer.data(), size) !=
        MachineRegistry::ERROR_SUCCESS) {
        KeyVal.clear();
        registry.RegCloseKey(key);
        return false;
    }
    if (size == 0) {
        registry.RegCloseKey(key);
        throw RunTimeError{};
    }
    // A text stored with its final NUL loses it; one stored without keeps every byte.
    std::string value(buffer.data(), size);
    if (value.back() == '\0') value.pop_back();
    if (type == MachineRegistry::REG_SZ) {
        KeyVal = value;
    } else if (type == MachineRegistry::REG_DWORD) {
        constexpr char kHex[] = "0123456789ABCDEF";
        KeyVal = "&h";
        for (auto byte = value.rbegin(); byte != value.rend(); ++byte) {
            const auto b = static_cast<unsigned char>(*byte);
            KeyVal += kHex[b >> 4];
            KeyVal += kHex[b & 0x0F];
        }
    }
    registry.RegCloseKey(key);
    return true;
}

bool StartSysInfo(MachineRegistry& registry, Shell& shell) {
    try {
        std::string path;
        if (!GetKeyValue(registry, MachineRegistry::HKEY_LOCAL_MACHINE,
                         "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", path)) {
            if (!GetKeyValue(registry, MachineRegistry::HKEY_LOCAL_MACHINE,
                             "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", path)) {
                return false;
            }
            if (!ListedFileExists(path + kToolName)) return false;
            path += kToolName;
        }
        return shell.StartDetached(path);
    } catch (const RunTimeError&) {
        return false;
    }
}

std::string MailTarget(const std::string& caption) {
    return caption.empty() ? std::string() : "MailTo:" + caption;
}

std::string UrlTarget(const std::string& caption) {
    if (caption.empty()) return {};
    return caption.starts_with("http://") ? caption : "http://" + caption;
}

}  // namespace mirvalde
