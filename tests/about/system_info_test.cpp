#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <thread>

#include "Fakes.h"
#include "RegistryFile.h"
#include "SystemInfo.h"

namespace mirvalde {
namespace {

namespace fs = std::filesystem;
using testing::RecordingShell;
constexpr auto HKLM = MachineRegistry::HKEY_LOCAL_MACHINE;
const std::string kMsinfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const std::string kLocation = "SOFTWARE\\Microsoft\\Shared Tools Location";

// Serves values as raw bytes with their types, and records how keys are opened and closed.
class FakeRegistry final : public MachineRegistry {
  public:
    struct Value {
        std::uint32_t type;
        std::string data;
    };
    std::map<std::string, std::map<std::string, Value>> keys;
    std::vector<std::string> opened;
    std::uint32_t access = 0;
    int open = 0;

    long RegOpenKeyEx(Key root, const std::string& subKey, std::uint32_t, std::uint32_t mask,
                      Key& key) override {
        opened.push_back(subKey);
        access = mask;
        if (root != HKEY_LOCAL_MACHINE || !keys.contains(subKey)) return ERROR_FILE_NOT_FOUND;
        key = 100 + opened.size() - 1;
        ++open;
        return ERROR_SUCCESS;
    }
    long RegQueryValueEx(Key key, const std::string& name, std::uint32_t& type, char* data,
                         std::uint32_t& size) override {
        const auto& values = keys.at(opened.at(key - 100));
        const auto found = values.find(name);
        if (found == values.end()) return ERROR_FILE_NOT_FOUND;
        type = found->second.type;
        const auto length = static_cast<std::uint32_t>(found->second.data.size());
        if (length > size) return ERROR_MORE_DATA;
        std::memcpy(data, found->second.data.data(), length);
        size = length;
        return ERROR_SUCCESS;
    }
    long RegCloseKey(Key) override {
        --open;
        return ERROR_SUCCESS;
    }
};

// What the registry holds, read back as the about window reads it.
TEST(GetKeyValueTest, ReadsTextsAndNumbersAndEmptiesTheResultOnFailure) {
    FakeRegistry registry;
    registry.keys["K"] = {{"nul", {1, std::string("/usr/bin/outil\0", 15)}},
                          {"bare", {1, "/usr/bin/outil"}},
                          {"number", {4, std::string("\x2a\x00\x01\xff", 4)}},
                          {"binary", {3, "ab"}},
                          {"empty", {1, ""}},
                          {"huge", {1, std::string(1025, 'x')}},
                          {"full", {1, std::string(1024, 'y')}}};
    std::string value = "avant";
    EXPECT_TRUE(GetKeyValue(registry, HKLM, "K", "nul", value));
    EXPECT_EQ(value, "/usr/bin/outil");
    EXPECT_EQ(registry.access, 0x2003Fu);
    EXPECT_TRUE(GetKeyValue(registry, HKLM, "K", "bare", value));
    EXPECT_EQ(value, "/usr/bin/outil");
    EXPECT_TRUE(GetKeyValue(registry, HKLM, "K", "number", value));
    EXPECT_EQ(value, "&hFF01002A");
    EXPECT_TRUE(GetKeyValue(registry, HKLM, "K", "binary", value));
    EXPECT_EQ(value, "&hFF01002A");  // another type leaves the value as it was
    EXPECT_TRUE(GetKeyValue(registry, HKLM, "K", "full", value));
    EXPECT_EQ(value.size(), 1024u);
    EXPECT_FALSE(GetKeyValue(registry, HKLM, "K", "huge", value));
    EXPECT_EQ(value, "");
    value = "avant";
    EXPECT_FALSE(GetKeyValue(registry, HKLM, "K", "absent", value));
    EXPECT_EQ(value, "");
    value = "avant";
    EXPECT_FALSE(GetKeyValue(registry, HKLM, "Nulle part", "PATH", value));
    EXPECT_EQ(value, "");
    EXPECT_THROW(GetKeyValue(registry, HKLM, "K", "empty", value), RunTimeError);
    EXPECT_EQ(registry.open, 0);  // every key opened was closed
}

// The same values read from a registry file, as a packager writes it.
TEST(RegistryFileTest, ServesWhatTheFileSaysAndPassesOverWhatItCannotRead) {
    RegistryFile registry = RegistryFile::FromText(
        "Windows Registry Editor Version 5.00\r\n"
        "\r\n"
        "; the system information program\r\n"
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO]\r\n"
        "\"PATH\"=\"C:\\\\Outils\\\\\\\"infos\\\".exe\"\r\n"
        "\"Compte\"=dword:0000002a\r\n"
        "\"Brut\"=hex(2):2f,75,\\\r\n"
        "  73,72,00\r\n"
        "\"Cassé\"=dword:zz\r\n"
        "\"Sans fin\"=\"pas de guillemet\r\n"
        "[HKEY_CURRENT_USER\\Ailleurs]\r\n"
        "\"PATH\"=\"non\"\r\n");
    std::string value;
    EXPECT_TRUE(
        GetKeyValue(registry, HKLM, "software\\microsoft\\shared tools\\msinfo", "path", value));
    EXPECT_EQ(value, "C:\\Outils\\\"infos\".exe");
    // A number's high zero byte goes with the cut of a final NUL, as for a text.
    EXPECT_TRUE(GetKeyValue(registry, HKLM, kMsinfo, "Compte", value));
    EXPECT_EQ(value, "&h00002A");
    EXPECT_TRUE(GetKeyValue(registry, HKLM, kMsinfo, "Brut", value));
    EXPECT_EQ(value, "&h00002A");  // a type of its own: left as it was
    MachineRegistry::Key key = 0;
    ASSERT_EQ(registry.RegOpenKeyEx(HKLM, kMsinfo, 0, 0x2003F, key), 0);
    char data[16];
    std::uint32_t type = 0;
    std::uint32_t size = sizeof data;
    ASSERT_EQ(registry.RegQueryValueEx(key, "Brut", type, data, size), 0);
    EXPECT_EQ(type, 2u);
    EXPECT_EQ(std::string(data, size), std::string("/usr\0", 5));
    registry.RegCloseKey(key);
    EXPECT_FALSE(GetKeyValue(registry, HKLM, kMsinfo, "Cassé", value));
    EXPECT_FALSE(GetKeyValue(registry, HKLM, kMsinfo, "Sans fin", value));
    EXPECT_FALSE(GetKeyValue(registry, HKLM, "Ailleurs", "PATH", value));
    RegistryFile garbage = RegistryFile::FromText("n'importe quoi\n[\n\"x\"=\n");
    EXPECT_FALSE(GetKeyValue(garbage, HKLM, kMsinfo, "PATH", value));
    RegistryFile missing("/nulle/part/registry.reg");
    EXPECT_FALSE(GetKeyValue(missing, HKLM, kMsinfo, "PATH", value));
}

class StartSysInfoTest : public ::testing::Test {
  protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("mirvalde-sysinfo-" + std::to_string(std::random_device()()));
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }
    fs::path folder;
    FakeRegistry registry;
    RecordingShell shell;
};

TEST_F(StartSysInfoTest, StartsTheToolTheRegistryNamesOrSaysItIsNotToBeHad) {
    // The first value names the program: the second key is never consulted.
    registry.keys[kMsinfo] = {{"PATH", {1, std::string("/usr/bin/infos\0", 15)}}};
    registry.keys[kLocation] = {{"MSINFO", {1, folder.string()}}};
    EXPECT_TRUE(StartSysInfo(registry, shell));
    EXPECT_EQ(shell.started, std::vector<std::string>{"/usr/bin/infos"});
    EXPECT_EQ(registry.opened, std::vector<std::string>{kMsinfo});

    // Only the folder: the program must stand in it.
    registry.keys.erase(kMsinfo);
    EXPECT_FALSE(StartSysInfo(registry, shell));
    std::ofstream(folder / "MSINFO32.EXE") << "#!/bin/sh\n";
    EXPECT_TRUE(StartSysInfo(registry, shell));
    EXPECT_EQ(shell.started.back(), (folder / "MSINFO32.EXE").string());
    fs::remove(folder / "MSINFO32.EXE");
    fs::create_directory(folder / "MSINFO32.EXE");  // a folder of that name is no program
    EXPECT_FALSE(StartSysInfo(registry, shell));

    // Nothing configured, a value without data, a number, a program that will not start.
    registry.keys.clear();
    EXPECT_FALSE(StartSysInfo(registry, shell));
    registry.keys[kMsinfo] = {{"PATH", {1, ""}}};
    EXPECT_FALSE(StartSysInfo(registry, shell));
    shell.starts = false;
    registry.keys[kMsinfo] = {{"PATH", {1, "/usr/bin/infos"}}};
    EXPECT_FALSE(StartSysInfo(registry, shell));
    EXPECT_EQ(shell.started.size(), 3u);
}

// The registry editor of Windows saves UTF-16; the system's file is read at every lookup, so
// that a packager's file counts without a restart.
TEST(RegistryFileTest, ReadsUtf16AndTheSystemFileAsItIsNow) {
    std::string utf16 = "\xFF\xFE";
    for (const char c : std::string("Windows Registry Editor Version 5.00\r\n[HKEY_LOCAL_MACHINE\\"
                                    "K]\r\n\"PATH\"=\"/opt/\xC3\xA9t\xC3\xA9\"\r\n")) {
        // Every character of this text but é is ASCII: é is written as its code unit.
        if (c == '\xC3') continue;
        utf16 += c == '\xA9' ? '\xE9' : c;
        utf16 += '\0';
    }
    RegistryFile saved = RegistryFile::FromText(utf16);
    std::string value;
    EXPECT_TRUE(GetKeyValue(saved, HKLM, "K", "PATH", value));
    EXPECT_EQ(value, "/opt/été");

#ifndef _WIN32
    const fs::path folder =
        fs::temp_directory_path() / ("mirvalde-xdg-" + std::to_string(std::random_device()()));
    fs::create_directories(folder / "mirvalde");
    ::setenv("XDG_CONFIG_DIRS", ("/nulle/part:" + folder.string()).c_str(), 1);
    RegistryFile system = RegistryFile::System();
    EXPECT_FALSE(GetKeyValue(system, HKLM, kMsinfo, "PATH", value));
    std::ofstream(folder / "mirvalde" / "registry.reg")
        << "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\" << kMsinfo
        << "]\n\"PATH\"=\"/usr/bin/infos\"\n";
    EXPECT_TRUE(GetKeyValue(system, HKLM, kMsinfo, "PATH", value));
    EXPECT_EQ(value, "/usr/bin/infos");
    fs::remove_all(folder);
    EXPECT_FALSE(GetKeyValue(system, HKLM, kMsinfo, "PATH", value));
    ::unsetenv("XDG_CONFIG_DIRS");
#endif
}

#ifdef MIRVALDE_DESKTOP_SHELL
// A folder with a blank in its name, as program folders often have: the program found in it
// really starts.
TEST_F(StartSysInfoTest, AProgramInAFolderWithABlankStarts) {
    const fs::path programs = folder / "outils système";
    fs::create_directories(programs);
    const fs::path marker = folder / "started";
    std::ofstream(programs / "MSINFO32.EXE") << "#!/bin/sh\ntouch '" << marker.string() << "'\n";
    fs::permissions(programs / "MSINFO32.EXE", fs::perms::owner_all);
    registry.keys[kLocation] = {{"MSINFO", {1, programs.string()}}};
    DesktopShell desktop;
    ASSERT_TRUE(StartSysInfo(registry, desktop));
    for (int i = 0; i < 100 && !fs::exists(marker); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    EXPECT_TRUE(fs::exists(marker));
}
#endif

TEST(ContactTest, AddressesOpenWithTheirSchemeAndAnEmptyCaptionOpensNothing) {
    EXPECT_EQ(MailTarget("contact@example.org"), "MailTo:contact@example.org");
    EXPECT_EQ(MailTarget(""), "");
    EXPECT_EQ(UrlTarget("www.example.org/mirvalde"), "http://www.example.org/mirvalde");
    EXPECT_EQ(UrlTarget("http://example.org"), "http://example.org");
    EXPECT_EQ(UrlTarget("HTTP://example.org"), "http://HTTP://example.org");
    EXPECT_EQ(UrlTarget(""), "");
    EXPECT_EQ(AboutCaption(), "À propos de Mirvalde");
    EXPECT_EQ(VersionLine(), "Version 5.0.0");
}

}  // namespace
}  // namespace mirvalde
