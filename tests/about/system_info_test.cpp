#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
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

// A registry of one key, "K", holding the values given in the file's own notation.
RegistryFile Registry(const std::string& key, const std::string& values) {
    return RegistryFile::FromText("Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\" +
                                  key + "]\n" + values);
}

// What the registry holds, read back as the about window reads it: each read starts from what
// the one before left, which a value of another type keeps.
TEST(GetKeyValueTest, ReadsTextsAndNumbersAndEmptiesTheResultOnFailure) {
    RegistryFile registry =
        Registry("K",
                 "\"nul\"=\"/usr/bin/outil\"\n\"bare\"=hex(1):2f,75\n"
                 "\"number\"=dword:ff01002a\n\"binary\"=hex:61,62\n"
                 "\"empty\"=hex(1):\n\"full\"=\"" +
                     std::string(1023, 'y') + "\"\n\"huge\"=\"" + std::string(1024, 'x') + "\"\n");
    const struct {
        const char* key;
        const char* name;
        bool found;
        std::string value;
    } reads[] = {{"K", "nul", true, "/usr/bin/outil"},
                 {"K", "bare", true, "/u"},
                 {"K", "number", true, "&hFF01002A"},
                 {"K", "binary", true, "&hFF01002A"},
                 {"K", "full", true, std::string(1023, 'y')},
                 {"K", "huge", false, ""},
                 {"K", "absent", false, ""},
                 {"Nulle part", "PATH", false, ""}};
    std::string value = "avant";
    for (const auto& r : reads) {
        EXPECT_EQ(GetKeyValue(registry, HKLM, r.key, r.name, value), r.found) << r.name;
        EXPECT_EQ(value, r.value) << r.name;
        if (!r.found) value = "avant";
    }
    EXPECT_THROW(GetKeyValue(registry, HKLM, "K", "empty", value), RunTimeError);
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
    // The program that the system information key names, and the folder that the other names.
    bool Start(const std::string& path) {
        std::string where = folder.string();  // backslashes doubled, as the file writes them
        for (auto at = where.find('\\'); at != std::string::npos; at = where.find('\\', at + 2))
            where.insert(at, 1, '\\');
        const std::string text = "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\" +
                                 kMsinfo + "]\n" + path + "\n[HKEY_LOCAL_MACHINE\\" + kLocation +
                                 "]\n\"MSINFO\"=\"" + where + "\"\n";
        RegistryFile registry = RegistryFile::FromText(text);
        return StartSysInfo(registry, shell);
    }
    fs::path folder;
    RecordingShell shell;
};

TEST_F(StartSysInfoTest, StartsTheToolTheRegistryNamesOrSaysItIsNotToBeHad) {
    // The first value names the program: the folder is never looked at.
    EXPECT_TRUE(Start("\"PATH\"=\"/usr/bin/infos\""));
    EXPECT_EQ(shell.started, std::vector<std::string>{"/usr/bin/infos"});

    // Only the folder: the program must stand in it, and be no folder.
    EXPECT_FALSE(Start(""));
    std::ofstream(folder / "MSINFO32.EXE") << "#!/bin/sh\n";
    EXPECT_TRUE(Start(""));
    EXPECT_EQ(shell.started.back(), (folder / "MSINFO32.EXE").string());
    fs::remove(folder / "MSINFO32.EXE");
    fs::create_directory(folder / "MSINFO32.EXE");
    EXPECT_FALSE(Start(""));

    // A value without data, a program that will not start.
    EXPECT_FALSE(Start("\"PATH\"=hex(1):"));
    shell.starts = false;
    EXPECT_FALSE(Start("\"PATH\"=\"/usr/bin/infos\""));
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
    RegistryFile registry = RegistryFile::FromText("[HKEY_LOCAL_MACHINE\\" + kLocation +
                                                   "]\n\"MSINFO\"=\"" + programs.string() + "\"\n");
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
