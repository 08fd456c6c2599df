// Windows' own registry and file listing, on Windows (under wine in the tests) only.
#include <gtest/gtest.h>

#include "Fakes.h"
#include "SystemInfo.h"

// Last: it makes macros of names that the game's registry has as its own.
#include <windows.h>
#undef HKEY_LOCAL_MACHINE

namespace mirvalde {
namespace {

constexpr auto HKLM = MachineRegistry::HKEY_LOCAL_MACHINE;
const std::string kLocation = "SOFTWARE\\Microsoft\\Shared Tools Location";

// What tools/windows/test-rules.sh wrote with `reg add`, read through Windows' own calls: a
// text, a number, a value without data; and a key that is not there.
const std::string kWritten = "SOFTWARE\\Mirvalde\\Essai";

TEST(WindowsRegistryTest, ReadsWhatRegAddWrote) {
    MachineRegistry& registry = SystemRegistry();
    std::string value = "avant";
    EXPECT_TRUE(GetKeyValue(registry, HKLM, kWritten, "Texte", value));
    EXPECT_EQ(value, "C:\\Program Files\\Infos\\infos.exe");
    EXPECT_TRUE(GetKeyValue(registry, HKLM, kWritten, "Nombre", value));
    EXPECT_EQ(value, "&h12345678");
    EXPECT_FALSE(GetKeyValue(registry, HKLM, "SOFTWARE\\Mirvalde\\Absente", "Texte", value));
    EXPECT_EQ(value, "");
    EXPECT_THROW(GetKeyValue(registry, HKLM, kWritten, "Vide", value), RunTimeError);
}

TEST(WindowsRegistryTest, StartsTheProgramThatThePathValueNames) {
    testing::RecordingShell shell;
    EXPECT_TRUE(StartSysInfo(SystemRegistry(), shell));
    EXPECT_EQ(shell.started, std::vector<std::string>{"C:\\Program Files\\Infos\\infos.exe"});
}

// Run once the script has taken the first value away: the folder of the second must show the
// program in its listing, neither hidden nor a system file.
TEST(WindowsRegistryTest, WithoutThePathValueStartsTheProgramOfTheFolder) {
    std::string folder;
    ASSERT_TRUE(GetKeyValue(SystemRegistry(), HKLM, kLocation, "MSINFO", folder));
    const std::string program = folder + "\\MSINFO32.EXE";
    testing::RecordingShell shell;
    EXPECT_TRUE(StartSysInfo(SystemRegistry(), shell));
    EXPECT_EQ(shell.started, std::vector<std::string>{program});
    const DWORD attributes = GetFileAttributesA(program.c_str());
    for (const DWORD hidden : {FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_SYSTEM}) {
        ASSERT_TRUE(SetFileAttributesA(program.c_str(), attributes | hidden));
        EXPECT_FALSE(StartSysInfo(SystemRegistry(), shell));
    }
    SetFileAttributesA(program.c_str(), attributes);
    EXPECT_EQ(shell.started.size(), 1u);
}
}  // namespace
}  // namespace mirvalde
