#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <random>

#include "SettingsStore.h"
#include "TipGame.h"
#include "TipsFile.h"

namespace mirvalde {
namespace {

namespace fs = std::filesystem;

// A folder of the test's own, where it writes the tips file as the player would. In the file's
// place stands a folder at first, which is no file either.
class TipsTest : public ::testing::Test {
  protected:
    void SetUp() override { fs::create_directories(file); }
    void TearDown() override { fs::remove_all(folder); }
    void Write(const std::string& bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
    // The tips as the window shows them: the first, then each "Astuce suivante".
    std::vector<std::string> Shown(int presses) const {
        std::vector<std::string> shown{game->Controls().lblTipText};
        for (int i = 0; i < presses; ++i) {
            game->cmdNextTip_Click();
            shown.push_back(game->Controls().lblTipText);
        }
        return shown;
    }

    const fs::path folder =
        fs::temp_directory_path() / ("mirvalde-tips-" + std::to_string(std::random_device()()));
    const fs::path file = folder / "TIPOFDAY.TXT";
    MemorySettingsStore settings;
    std::unique_ptr<TipGame> game = std::make_unique<TipGame>(settings, folder.string());
};

using Lines = std::vector<std::string>;

// Every opening reads the file again and goes on where the last one stopped. A file missing (a
// folder in its place) or unreadable shows how to make one, and the tips read before are kept;
// an empty file shows nothing at all.
TEST_F(TipsTest, EachOpeningGoesOnInTheFileOrAMissingFileSaysHowToMakeOne) {
    const std::string missing = kMissingTipsText;
    EXPECT_TRUE(missing.starts_with("Le fichier TIPOFDAY.TXT n'a pas été trouvé? \r\n\r\nCréez"));
    EXPECT_TRUE(missing.ends_with("même dossier que l'application."));
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(Shown(1), (Lines{missing, missing}));  // nothing to show: the text stays
    fs::remove(file);
    Write("A\r\nB\r\nC\r\n");
    // "Astuce suivante", pressed while the file was missing, moved on: the second tip.
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(Shown(3), (Lines{"B", "C", "A", "B"}));
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, "C");
#ifndef _WIN32  // Windows has no such bits: its unreadable files are denied by their rights
    fs::permissions(file, fs::perms::none);
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, missing);
    EXPECT_EQ(game->Module().TipList.Count(), 3u);
    fs::permissions(file, fs::perms::owner_all);
#endif
    Write("");
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(Shown(1), (Lines{"", ""}));
}

TEST_F(TipsTest, TheStartUpSettingIsWrittenByTheBoxAndKeptWhenThePlayerAsks) {
    ASSERT_TRUE(game->Form_Load(false));  // nothing stored: shown, the box ticked (FrmTipTest)
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "1");
    game->chkLoadTipsAtStartup_Click(false);
    EXPECT_FALSE(game->Form_Load(false));  // start-up: not shown
    // Asked for through the menu: shown, the box unticked, the player's choice kept.
    ASSERT_TRUE(game->Form_Load(true));
    EXPECT_FALSE(game->Controls().chkLoadTipsAtStartup);
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "0");
}

// French typography in the game's own tips: a blank before ":", ";", "?", "!" and inside the
// quotes that never breaks, or a line of the window could begin with a lone ":".
TEST(GameTipsTest, KeepTheirPunctuationWithTheWordBeforeIt) {
    const std::optional<TipsFile> tips = TipsFile::Read(MIRVALDE_TIPS_FILE);
    ASSERT_TRUE(tips && tips->Count() >= 12u);
    for (std::size_t i = 0; i < tips->Count(); ++i) {
        const std::string tip = tips->Line(i);
        EXPECT_FALSE(tip.empty()) << "tip " << i + 1;
        for (const char* breakable : {" :", " ;", " ?", " !", " »", "« "})
            EXPECT_EQ(tip.find(breakable), std::string::npos) << "tip " << i + 1 << ": " << tip;
    }
}

}  // namespace
}  // namespace mirvalde
