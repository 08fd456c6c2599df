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
constexpr auto HKLM = MachineRegistry::HKEY_LOCAL_MACHINE;
const std::string kMsinfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";

// A registry file as a packager writes it, read as the about window reads it: each read starts
// from what the one before left, which a value of another type keeps and a failure empties.
TEST(GetKeyValueTest, ReadsTextsAndNumbersAndPassesOverWhatTheFileCannotSay) {
    RegistryFile registry = RegistryFile::FromText(
        "Windows Registry Editor Version 5.00\r\n\r\n; the system information program\r\n"
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO]\r\n"
        "\"PATH\"=\"C:\\\\Outils\\\\\\\"infos\\\".exe\"\r\n\"Court\"=hex(1):2f,75\r\n"
        "\"Compte\"=dword:0000002a\r\n\"Brut\"=hex(2):2f,75,\\\r\n  73,72,00\r\n"
        "\"Nombre\"=dword:ff01002a\r\n\"Vide\"=hex(1):\r\n\"Cassé\"=dword:zz\r\n"
        "\"Sans fin\"=\"pas de guillemet\r\n\"Plein\"=\"" +
        std::string(1023, 'y') + "\"\r\n\"Trop\"=\"" + std::string(1024, 'x') +
        "\"\r\n[HKEY_CURRENT_USER\\Ailleurs]\r\n\"PATH\"=\"non\"\r\n");
    const struct {
        std::string key, name, value;  // no value: not found
    } reads[] = {
        {"software\\microsoft\\shared tools\\msinfo", "path", "C:\\Outils\\\"infos\".exe"},
        {kMsinfo, "Court", "/u"},         // a text without its final NUL keeps every byte
        {kMsinfo, "Compte", "&h00002A"},  // a number's high zero byte is cut as a final NUL
        {kMsinfo, "Nombre", "&hFF01002A"},
        {kMsinfo, "Plein", std::string(1023, 'y')},
        {kMsinfo, "Trop", ""},
        {kMsinfo, "Cassé", ""},
        {kMsinfo, "Sans fin", ""},
        {"Ailleurs", "PATH", ""},
        {"Nulle part", "PATH", ""},
    };
    std::string value;
    for (const auto& r : reads) {
        if (r.value.empty()) value = "avant";
        EXPECT_EQ(GetKeyValue(registry, HKLM, r.key, r.name, value), !r.value.empty()) << r.name;
        EXPECT_EQ(value, r.value) << r.name;
    }
    EXPECT_THROW(GetKeyValue(registry, HKLM, kMsinfo, "Vide", value), RunTimeError);
}

// The registry editor of Windows saves UTF-16; the system's file is read at every lookup, so
// that a packager's file counts without a restart.
TEST(RegistryFileTest, ReadsUtf16AndTheSystemFileAsItIsNow) {
    std::string utf16 = "\xFF\xFE";
    for (const char16_t c : std::u16string_view(u"[HKEY_LOCAL_MACHINE\\K]\r\n\"PATH\"=\"/été\""))
        utf16 += {static_cast<char>(c & 0xFF), static_cast<char>(c >> 8)};
    RegistryFile saved = RegistryFile::FromText(utf16);
    std::string value;
    EXPECT_TRUE(GetKeyValue(saved, HKLM, "K", "PATH", value));
    EXPECT_EQ(value, "/été");
#ifndef _WIN32
    const fs::path folder =
        fs::temp_directory_path() / ("mirvalde-xdg-" + std::to_string(std::random_device()()));
    fs::create_directories(folder / "mirvalde");
    ::setenv("XDG_CONFIG_DIRS", ("/nulle/part:" + folder.string()).c_str(), 1);
    RegistryFile system = RegistryFile::System();
    EXPECT_FALSE(GetKeyValue(system, HKLM, kMsinfo, "PATH", value));
    std::ofstream(folder / "mirvalde" / "registry.reg")
        << "[HKEY_LOCAL_MACHINE\\" << kMsinfo << "]\n\"PATH\"=\"/usr/bin/infos\"\n";
    EXPECT_TRUE(GetKeyValue(system, HKLM, kMsinfo, "PATH", value));
    fs::remove_all(folder);
    EXPECT_FALSE(GetKeyValue(system, HKLM, kMsinfo, "PATH", value));
    ::unsetenv("XDG_CONFIG_DIRS");
#endif
}

// The registry names the system information program, or else the folder it stands in: the
// test's own, with a blank in its name as program folders often have.
class StartSysInfoTest : public ::testing::Test {
  protected:
    void SetUp() override { fs::create_directories(folder); }
    void TearDown() override { fs::remove_all(folder); }
    bool Start(const std::string& path, Shell* through = nullptr) {
        std::string where = folder.string();  // backslashes doubled, as the file writes them
        for (auto at = where.find('\\'); at != std::string::npos; at = where.find('\\', at + 2))
            where.insert(at, 1, '\\');
        RegistryFile registry = RegistryFile::FromText(
            "[HKEY_LOCAL_MACHINE\\" + kMsinfo + "]\n" + path +
            "\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools Location]\n\"MSINFO\"=\"" +
            where + "\"\n");
        return StartSysInfo(registry, through ? *through : shell);
    }
    const fs::path folder =
        fs::temp_directory_path() / ("mirvalde infos-" + std::to_string(std::random_device()()));
    const fs::path program = folder / "MSINFO32.EXE";
    testing::RecordingShell shell;
};

TEST_F(StartSysInfoTest, StartsTheToolTheRegistryNamesOrSaysItIsNotToBeHad) {
    // The first value names the program: the folder is never looked at.
    EXPECT_TRUE(Start("\"PATH\"=\"/usr/bin/infos\""));
    EXPECT_EQ(shell.started, std::vector<std::string>{"/usr/bin/infos"});
    // Only the folder: the program must stand in it, and be no folder.
    EXPECT_FALSE(Start(""));
    std::ofstream(program) << "#!/bin/sh\n";
    EXPECT_TRUE(Start(""));
    EXPECT_EQ(shell.started.back(), program.string());
    fs::remove(program);
    fs::create_directory(program);
    EXPECT_FALSE(Start(""));
    // A value without data, a program that will not start.
    EXPECT_FALSE(Start("\"PATH\"=hex(1):"));
    shell.starts = false;
    EXPECT_FALSE(Start("\"PATH\"=\"/usr/bin/infos\""));
    EXPECT_EQ(shell.started.size(), 3u);
}

#ifdef MIRVALDE_DESKTOP_SHELL
TEST_F(StartSysInfoTest, TheProgramOfAFolderWithABlankReallyStarts) {
    const fs::path marker = folder / "started";
    std::ofstream(program) << "#!/bin/sh\ntouch '" << marker.string() << "'\n";
    fs::permissions(program, fs::perms::owner_all);
    DesktopShell desktop;
    ASSERT_TRUE(Start("", &desktop));
    for (int i = 0; i < 100 && !fs::exists(marker); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_TRUE(fs::exists(marker));
}
#endif

}  // namespace
}  // namespace mirvalde
