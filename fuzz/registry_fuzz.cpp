// The registry file of the about window, as a hand or the Windows registry editor wrote it.
// Input: the file's bytes, UTF-8 or UTF-16 with a byte-order mark. The keys and value names
// looked up are taken from it, and a known key is appended after it.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "RegistryFile.h"

namespace {

using mirvalde::MachineRegistry;
using Key = MachineRegistry::Key;
constexpr long kOk = MachineRegistry::ERROR_SUCCESS, kMore = MachineRegistry::ERROR_MORE_DATA;

[[noreturn]] void Fail(const char* what, const std::string& name = {}) {
    std::fprintf(stderr, "registry_fuzz: %s [%s]\n", what, name.c_str());
    std::abort();
}

std::string CaseSwapped(std::string text) {
    for (char& c : text) {
        if (std::isalpha(static_cast<unsigned char>(c))) c ^= 0x20;
    }
    return text;
}

struct Answer {
    long result;
    std::uint32_t type, size;
    std::string data;
};

// A query into a heap buffer of exactly `room` bytes, so that a byte written past it is caught.
// A success tells no more than the room; a refused query writes nothing.
Answer Query(MachineRegistry& registry, Key key, const std::string& name, std::uint32_t room) {
    const auto buffer = std::make_unique<char[]>(room);
    std::memset(buffer.get(), 0x5A, room);
    Answer a{0, 0, room, {}};
    a.result = registry.RegQueryValueEx(key, name, a.type, buffer.get(), a.size);
    const bool untouched = std::string(buffer.get(), room) == std::string(room, 0x5A);
    if (a.result == kOk ? a.size > room : !untouched || (a.result == kMore && a.size <= room))
        Fail("a query tells more than its room, or writes when refused", name);
    if (a.result == kOk) a.data.assign(buffer.get(), a.size);
    return a;
}

// The length a query tells is exactly the room needed, and the value is the same with more
// room or another case in its name.
void CheckValue(MachineRegistry& registry, Key key, const std::string& name) {
    const Answer none = Query(registry, key, name, 0);
    if (none.result == MachineRegistry::ERROR_FILE_NOT_FOUND) return;
    const Answer exact = Query(registry, key, name, none.size);
    const Answer roomy = Query(registry, key, CaseSwapped(name), none.size + 64);
    if ((none.result != kOk && none.result != kMore) || exact.result != kOk ||
        exact.size != none.size || exact.type != none.type || roomy.data != exact.data ||
        roomy.type != exact.type) {
        Fail("the value changes with its room or the case of its name", name);
    }
    if (none.size > 0 && Query(registry, key, name, none.size - 1).result != kMore)
        Fail("one byte short is not more data", name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    const bool utf16 = text.starts_with("\xFF\xFE");

    // Names to look up, read roughly here (from the low bytes of UTF-16).
    std::string plain = text;
    if (utf16) std::erase(plain, '\0');
    std::vector<std::string> keys{"HKEY_LOCAL_MACHINE\\FUZZ\\PROBE"}, names{"", "V"};
    std::istringstream lines(plain);
    for (std::string line; std::getline(lines, line) && keys.size() + names.size() < 40;) {
        if (line.starts_with('[')) keys.push_back(line.substr(1, line.rfind(']') - 1));
        if (line.starts_with('"')) names.push_back(line.substr(1, line.find('"', 1) - 1));
    }

    // Whatever the file holds, a key written correctly after it is read. A line ending in a
    // backslash goes on over the next one, so enough empty lines come first.
    std::string probe = std::string(std::count(text.begin(), text.end(), '\\') + 1, '\n') +
                        "[HKEY_LOCAL_MACHINE\\Fuzz\\Probe]\n\"v\"=\"ok\"\n";
    if (utf16 && text.size() % 2) text += '\0';
    for (std::size_t i = probe.size(); utf16 && i > 0; --i) probe.insert(i, 1, '\0');
    mirvalde::RegistryFile registry = mirvalde::RegistryFile::FromText(text + probe);

    for (const std::string& full : keys) {
        if (!full.starts_with("HKEY_LOCAL_MACHINE\\")) continue;
        const std::string subKey = full.substr(19);
        Key key = 0, other = 0;
        const long opened = registry.RegOpenKeyEx(0x80000002, subKey, 0, 0x2003F, key);
        if (opened != registry.RegOpenKeyEx(0x80000002, CaseSwapped(subKey), 0, 0x2003F, other))
            Fail("the case of a key's name matters", full);
        if (opened != kOk && full == keys.front()) Fail("the key after the file is lost");
        if (opened != kOk) continue;
        if (key == other) Fail("two openings share a handle", full);
        for (const std::string& name : names) CheckValue(registry, key, name);
        if (full == keys.front() && Query(registry, key, "V", 16).data != std::string("ok", 3))
            Fail("the value after the file is lost");
        // A closed handle is closed for good; the other one still answers.
        if (registry.RegCloseKey(key) != kOk || registry.RegCloseKey(key) == kOk ||
            Query(registry, key, "V", 16).result == kOk || registry.RegCloseKey(other) != kOk) {
            Fail("a closed handle still answers", full);
        }
    }
    // Neither an unknown root nor a handle never given answers.
    Key unknown = 0;
    if (registry.RegOpenKeyEx(0x80000009, "Fuzz\\Probe", 0, 0x2003F, unknown) == kOk ||
        Query(registry, 0x80000002, "V", 16).result == kOk)
        Fail("a key opens under an unknown root, or a handle never given answers");
    return 0;
}
