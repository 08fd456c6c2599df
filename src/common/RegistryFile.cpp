#include "RegistryFile.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace mirvalde {
namespace {

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

struct Root {
    const char* name;
    MachineRegistry::Key key;
};
constexpr Root kRoots[] = {
    {"HKEY_CLASSES_ROOT", 0x80000000},
    {"HKEY_CURRENT_USER", 0x80000001},
    {"HKEY_LOCAL_MACHINE", 0x80000002},
    {"HKEY_USERS", 0x80000003},
    {"HKEY_CURRENT_CONFIG", 0x80000005},
    {"HKLM", 0x80000002},
    {"HKCU", 0x80000001},
};

// A quoted text with \\ and \" escapes, from `at` (on the opening quote); moves `at` past it.
bool ReadQuoted(const std::string& line, std::size_t& at, std::string& out) {
    if (at >= line.size() || line[at] != '"') return false;
    for (++at; at < line.size(); ++at) {
        char c = line[at];
        if (c == '"') {
            ++at;
            return true;
        }
        if (c == '\\' && at + 1 < line.size()) c = line[++at];
        out += c;
    }
    return false;
}

bool ReadHexBytes(std::string_view text, std::string& out) {
    while (!text.empty()) {
        const auto comma = text.find(',');
        std::string_view byte = text.substr(0, comma);
        while (!byte.empty() && byte.front() == ' ') byte.remove_prefix(1);
        while (!byte.empty() && byte.back() == ' ') byte.remove_suffix(1);
        unsigned value = 0;
        const auto [end, ec] = std::from_chars(byte.data(), byte.data() + byte.size(), value, 16);
        if (byte.empty() || byte.size() > 2 || ec != std::errc() ||
            end != byte.data() + byte.size()) {
            return false;
        }
        out += static_cast<char>(value);
        if (comma == std::string_view::npos) break;
        text.remove_prefix(comma + 1);
    }
    return true;
}

// The registry editor of Windows saves its files in UTF-16, little-endian.
std::string Utf16LeToUtf8(std::string_view bytes) {
    std::string out;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t code =
            static_cast<unsigned char>(bytes[i]) | (static_cast<unsigned char>(bytes[i + 1]) << 8);
        if (code >= 0xD800 && code < 0xDC00 && i + 3 < bytes.size()) {
            const char32_t low = static_cast<unsigned char>(bytes[i + 2]) |
                                 (static_cast<unsigned char>(bytes[i + 3]) << 8);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else if (code < 0x10000) {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (code >> 18));
            out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return out;
}

}  // namespace

RegistryFile::RegistryFile(const std::string& path) {
    Read(path);
}

void RegistryFile::Read(const std::string& path) {
    keys_.clear();
    open_.clear();
    std::ifstream file(path, std::ios::binary);
    if (!file) return;
    std::ostringstream text;
    text << file.rdbuf();
    Parse(text.str());
}

RegistryFile RegistryFile::System() {
    RegistryFile registry;
    registry.system_ = true;
    return registry;
}

RegistryFile RegistryFile::FromText(const std::string& text) {
    RegistryFile registry;
    registry.Parse(text);
    return registry;
}

std::string RegistryFile::SystemPath() {
    const char* dirs = std::getenv("XDG_CONFIG_DIRS");
    std::string folders = dirs && *dirs ? dirs : "/etc/xdg";
    std::size_t start = 0;
    while (start <= folders.size()) {
        const std::size_t colon = std::min(folders.find(':', start), folders.size());
        const std::string folder = folders.substr(start, colon - start);
        if (!folder.empty()) {
            const std::filesystem::path candidate =
                std::filesystem::path(folder) / "mirvalde" / "registry.reg";
            std::error_code error;
            if (std::filesystem::is_regular_file(candidate, error)) return candidate.string();
        }
        start = colon + 1;
    }
    return {};
}

void RegistryFile::Parse(std::string text) {
    if (text.starts_with("\xFF\xFE")) text = Utf16LeToUtf8(std::string_view(text).substr(2));
    std::map<std::string, Value>* section = nullptr;
    std::istringstream lines(text);
    std::string line;
    std::string pending;
    while (std::getline(lines, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        // A value may go on over several lines, each but the last ending in a backslash.
        if (!pending.empty()) {
            line.erase(0, line.find_first_not_of(" \t") == std::string::npos
                              ? line.size()
                              : line.find_first_not_of(" \t"));
            line = pending + line;
            pending.clear();
        }
        if (!line.empty() && line.back() == '\\' && line.find('=') != std::string::npos &&
            line.front() != '[') {
            pending = line.substr(0, line.size() - 1);
            continue;
        }
        if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            const auto close = line.rfind(']');
            section = nullptr;
            if (close == std::string::npos || line[1] == '-') continue;
            section = &keys_[Upper(line.substr(1, close - 1))];
            continue;
        }
        if (!section) continue;

        std::string name;
        std::size_t at = 0;
        if (line.front() == '@') {
            at = 1;
        } else if (!ReadQuoted(line, at, name)) {
            continue;
        }
        if (at >= line.size() || line[at] != '=') continue;
        const std::string data = line.substr(at + 1);
        Value value{REG_SZ, {}};
        if (data.starts_with('"')) {
            std::size_t quoted = 0;
            if (!ReadQuoted(data, quoted, value.data) || quoted != data.size()) continue;
            value.data += '\0';  // as the registry stores a text
        } else if (Upper(data).starts_with("DWORD:")) {
            const std::string digits = data.substr(6);
            std::uint32_t number = 0;
            const auto [end, ec] =
                std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
            if (digits.empty() || digits.size() > 8 || ec != std::errc() ||
                end != digits.data() + digits.size()) {
                continue;
            }
            value.type = REG_DWORD;
            for (int i = 0; i < 4; ++i) value.data += static_cast<char>((number >> (8 * i)) & 0xFF);
        } else if (Upper(data).starts_with("HEX")) {
            const auto colon = data.find(':');
            if (colon == std::string::npos) continue;
            const std::string kind = data.substr(3, colon - 3);
            value.type = 3;  // raw bytes
            if (!kind.empty()) {
                if (kind.size() < 3 || kind.front() != '(' || kind.back() != ')') continue;
                const auto [end, ec] =
                    std::from_chars(kind.data() + 1, kind.data() + kind.size() - 1, value.type, 16);
                if (ec != std::errc() || end != kind.data() + kind.size() - 1) continue;
            }
            if (!ReadHexBytes(std::string_view(data).substr(colon + 1), value.data)) continue;
        } else {
            continue;
        }
        (*section)[Upper(name)] = std::move(value);
    }
}

long RegistryFile::RegOpenKeyEx(Key root, const std::string& subKey, std::uint32_t, std::uint32_t,
                                Key& opened) {
    // Read afresh while no key is open: handles point into what was read.
    const bool keysOpen =
        std::any_of(open_.begin(), open_.end(), [](const auto* key) { return key != nullptr; });
    if (system_ && !keysOpen) Read(SystemPath());
    for (const Root& known : kRoots) {
        if (known.key != root) continue;
        const auto found = keys_.find(Upper(std::string(known.name) + "\\" + subKey));
        if (found == keys_.end()) continue;
        open_.push_back(&found->second);
        opened = open_.size();
        return ERROR_SUCCESS;
    }
    return ERROR_FILE_NOT_FOUND;
}

long RegistryFile::RegQueryValueEx(Key key, const std::string& valueName, std::uint32_t& type,
                                   char* data, std::uint32_t& size) {
    if (key == 0 || key > open_.size() || !open_[key - 1]) return 6;  // an invalid handle
    const auto found = open_[key - 1]->find(Upper(valueName));
    if (found == open_[key - 1]->end()) return ERROR_FILE_NOT_FOUND;
    const Value& value = found->second;
    type = value.type;
    const auto length = static_cast<std::uint32_t>(value.data.size());
    if (length > size) {
        size = length;
        return ERROR_MORE_DATA;
    }
    std::memcpy(data, value.data.data(), length);
    size = length;
    return ERROR_SUCCESS;
}

long RegistryFile::RegCloseKey(Key key) {
    if (key == 0 || key > open_.size() || !open_[key - 1]) return 6;
    open_[key - 1] = nullptr;
    return ERROR_SUCCESS;
}

#ifndef _WIN32
MachineRegistry& SystemRegistry() {
    static RegistryFile registry = RegistryFile::System();
    return registry;
}
#endif

}  // namespace mirvalde
