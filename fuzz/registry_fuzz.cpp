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

[[noreturn]] void Fail(const char* what, const std::string& key = {},
                       const std::string& name = {}) {
    std::fprintf(stderr, "registry_fuzz: %s [%s] [%s]\n", what, key.c_str(), name.c_str());
    std::abort();
}

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string CaseSwapped(std::string text) {
    for (char& c : text) {
        const auto u = static_cast<unsigned char>(c);
        c = static_cast<char>(std::islower(u) ? std::toupper(u) : std::tolower(u));
    }
    return text;
}

struct Answer {
    long result = 0;
    std::uint32_t type = 0;
    std::string data;
};

// A query into a heap buffer of exactly `room` bytes, so that a byte written past it is caught.
Answer Query(MachineRegistry& registry, Key key, const std::string& name, std::uint32_t room) {
    const auto buffer = std::make_unique<char[]>(room);
    std::memset(buffer.get(), 0x5A, room);
    std::uint32_t size = room;
    Answer answer;
    answer.result = registry.RegQueryValueEx(key, name, answer.type, buffer.get(), size);
    if (answer.result == MachineRegistry::ERROR_SUCCESS) {
        if (size > room) Fail("success with a size beyond the room", {}, name);
        answer.data.assign(buffer.get(), size);
    } else if (answer.result == MachineRegistry::ERROR_MORE_DATA) {
        if (size <= room) Fail("more data, yet it fits", {}, name);
        if (std::any_of(buffer.get(), buffer.get() + room, [](char c) { return c != 0x5A; }))
            Fail("a refused query wrote into the buffer", {}, name);
        answer.data.resize(size);  // only the length is known
    }
    return answer;
}

void CheckValue(MachineRegistry& registry, Key key, const std::string& subKey,
                const std::string& name) {
    const Answer none = Query(registry, key, name, 0);
    if (none.result == MachineRegistry::ERROR_FILE_NOT_FOUND) return;
    if (none.result != MachineRegistry::ERROR_SUCCESS &&
        none.result != MachineRegistry::ERROR_MORE_DATA) {
        Fail("unexpected result", subKey, name);
    }
    // The length the first query tells is exactly the room needed, and one byte less is short.
    const auto length = static_cast<std::uint32_t>(none.data.size());
    const Answer exact = Query(registry, key, name, length);
    if (exact.result != MachineRegistry::ERROR_SUCCESS || exact.data.size() != length ||
        exact.type != none.type) {
        Fail("the size given is not the size needed", subKey, name);
    }
    if (length > 0 &&
        Query(registry, key, name, length - 1).result != MachineRegistry::ERROR_MORE_DATA)
        Fail("one byte short is not more data", subKey, name);
    const Answer roomy = Query(registry, key, name, length + 64);
    const Answer swapped = Query(registry, key, CaseSwapped(name), length + 64);
    if (roomy.result != MachineRegistry::ERROR_SUCCESS || roomy.data != exact.data ||
        swapped.data != exact.data || swapped.type != exact.type) {
        Fail("the value changes with the room or the case of its name", subKey, name);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    const bool utf16 = text.starts_with("\xFF\xFE");

    // Names to look up: those of the file's sections and values, read roughly here (from the
    // low bytes of UTF-16).
    std::string plain = text;
    if (utf16) std::erase(plain, '\0');
    std::vector<std::string> keys{"HKEY_LOCAL_MACHINE\\FUZZ\\PROBE"};
    std::vector<std::string> names{"", "V"};
    std::istringstream lines(plain);
    std::string line;
    while (std::getline(lines, line) && keys.size() + names.size() < 40) {
        if (line.starts_with('[')) keys.push_back(line.substr(1, line.rfind(']') - 1));
        if (line.starts_with('"')) names.push_back(line.substr(1, line.find('"', 1) - 1));
    }

    // Whatever the file holds, a key written correctly after it is read. A line ending in a
    // backslash goes on over the next one, so enough empty lines come first.
    const std::string blank(std::count(text.begin(), text.end(), '\\') + 1, '\n');
    std::string probe = blank + "[HKEY_LOCAL_MACHINE\\Fuzz\\Probe]\n\"v\"=\"ok\"\n";
    if (utf16) {
        if (text.size() % 2) text += '\0';
        std::string wide;
        for (const char c : probe) wide += std::string{c, '\0'};
        probe = wide;
    }
    mirvalde::RegistryFile registry = mirvalde::RegistryFile::FromText(text + probe);

    struct Root {
        const char* name;
        Key key;
    };
    constexpr Root kRoots[] = {{"HKEY_LOCAL_MACHINE", 0x80000002},
                               {"HKEY_CURRENT_USER", 0x80000001},
                               {"HKEY_CLASSES_ROOT", 0x80000000},
                               {"HKLM", 0x80000002}};
    for (const std::string& full : keys) {
        const auto slash = full.find('\\');
        const std::string rootName = full.substr(0, slash);
        const std::string subKey = slash == std::string::npos ? "" : full.substr(slash + 1);
        for (const Root& root : kRoots) {
            if (Upper(rootName) != root.name) continue;
            Key key = 0;
            Key other = 0;
            const long opened = registry.RegOpenKeyEx(root.key, subKey, 0, 0x2003F, key);
            const long openedSwapped =
                registry.RegOpenKeyEx(root.key, CaseSwapped(subKey), 0, 0x2003F, other);
            if (opened != openedSwapped) Fail("the case of a key's name matters", full);
            if (opened != MachineRegistry::ERROR_SUCCESS) {
                if (full == keys.front() && root.key == 0x80000002)
                    Fail("the key after the file is lost");
                continue;
            }
            if (key == other) Fail("two openings share a handle", full);
            for (const std::string& name : names) CheckValue(registry, key, full, name);
            // A closed handle is closed for good; the other one still answers.
            std::uint32_t type = 0, room = 0;
            if (registry.RegCloseKey(key) != MachineRegistry::ERROR_SUCCESS ||
                registry.RegCloseKey(key) == MachineRegistry::ERROR_SUCCESS ||
                registry.RegQueryValueEx(key, "V", type, nullptr, room) ==
                    MachineRegistry::ERROR_SUCCESS) {
                Fail("a closed handle still answers", full);
            }
            if (full == keys.front()) {
                const Answer probed = Query(registry, other, "V", 16);
                if (probed.result != 0 || probed.type != MachineRegistry::REG_SZ ||
                    probed.data != std::string("ok", 3)) {
                    Fail("the value after the file is lost");
                }
            }
            if (registry.RegCloseKey(other) != MachineRegistry::ERROR_SUCCESS)
                Fail("cannot close", full);
        }
    }
    Key unknown = 0;
    if (registry.RegOpenKeyEx(0x80000009, "Fuzz\\Probe", 0, 0x2003F, unknown) ==
        MachineRegistry::ERROR_SUCCESS)
        Fail("a key opens under an unknown root");
    std::uint32_t type = 0, room = 0;
    for (const Key bad : {Key{0}, Key{0x80000002}, ~Key{0}}) {
        if (registry.RegQueryValueEx(bad, "V", type, nullptr, room) ==
                MachineRegistry::ERROR_SUCCESS ||
            registry.RegCloseKey(bad) == MachineRegistry::ERROR_SUCCESS) {
            Fail("a handle never given answers");
        }
    }
    return 0;
}
