#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "SettingsStore.h"
#include "TipGame.h"
#include "TipsFile.h"

namespace mirvalde {
namespace {

namespace fs = std::filesystem;

// A folder of the test's own, where it writes the tips file as the player would.
class TipsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        folder =
            fs::temp_directory_path() /
            ("mirvalde-tips-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
             "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
        NewRun();
    }
    // The tips of a new run of the program: nothing read yet.
    void NewRun() { game = std::make_unique<TipGame>(settings, folder.string()); }
    void TearDown() override {
        std::error_code ignored;
        fs::permissions(File(), fs::perms::owner_all, ignored);
        fs::remove_all(folder, ignored);
    }
    fs::path File() const { return folder / "TIPOFDAY.TXT"; }
    void Write(const std::string& bytes) const { std::ofstream(File(), std::ios::binary) << bytes; }
    // The tips as the window shows them: the first, then each "Astuce suivante".
    std::vector<std::string> Shown(int presses) const {
        std::vector<std::string> shown{game->Controls().lblTipText};
        for (int i = 0; i < presses; ++i) {
            game->cmdNextTip_Click();
            shown.push_back(game->Controls().lblTipText);
        }
        return shown;
    }

    fs::path folder;
    MemorySettingsStore settings;
    std::unique_ptr<TipGame> game;
};

using Lines = std::vector<std::string>;

TEST_F(TipsTest, TipsComeInTheFileOrderAndGoOnWhereTheLastOpeningStopped) {
    Write("A\r\nB\r\nC\r\n");
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(Shown(4), (Lines{"A", "B", "C", "A", "B"}));
    // A second opening in the same run reads the file again and shows the next tip.
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, "C");

    // An empty line shows as an empty label; markup is text like any other.
    Write("<b>gras</b>\n\nfin");
    NewRun();
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(Shown(3), (Lines{"<b>gras</b>", "", "fin", "<b>gras</b>"}));
}

TEST_F(TipsTest, EveryKindOfMissingFileShowsTheSameTextAndKeepsWhatWasRead) {
    const std::string missing = kMissingTipsText;
    EXPECT_TRUE(missing.starts_with("Le fichier TIPOFDAY.TXT n'a pas été trouvé? \r\n\r\nCréez"));
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, missing);
    game->cmdNextTip_Click();  // nothing to show: the text stays
    EXPECT_EQ(game->Controls().lblTipText, missing);
    EXPECT_EQ(game->Module().TipIndex, 1);

    fs::create_directory(File());  // a folder named like the file
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, missing);
    fs::remove(File());

    Write("A\nB\n");
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, "B");  // TipIndex went on from 1
#ifndef _WIN32  // Windows has no such bits: its unreadable files are denied by their rights
    fs::permissions(File(), fs::perms::none);
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, missing);
    EXPECT_EQ(game->Module().TipList.Count(), 2u);  // the tips read before are kept
    fs::permissions(File(), fs::perms::owner_all);
#endif
    EXPECT_FALSE(game->LoadTips(""));

    // An empty file shows nothing at all.
    Write("");
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_EQ(game->Controls().lblTipText, "");
    game->cmdNextTip_Click();
    EXPECT_EQ(game->Controls().lblTipText, "");
}

TEST_F(TipsTest, TheStartUpSettingIsWrittenByTheBoxAndKeptWhenThePlayerAsks) {
    EXPECT_TRUE(game->ShowAtStartup());  // nothing stored: shown
    ASSERT_TRUE(game->Form_Load(false));
    EXPECT_TRUE(game->Controls().chkLoadTipsAtStartup);
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "1");
    game->chkLoadTipsAtStartup_Click(false);
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "0");
    EXPECT_FALSE(game->ShowAtStartup());
    EXPECT_FALSE(game->Form_Load(false));  // start-up: not shown
    // Asked for through the menu: shown, the box unticked, the player's choice kept.
    ASSERT_TRUE(game->Form_Load(true));
    EXPECT_FALSE(game->Controls().chkLoadTipsAtStartup);
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "0");
    settings.Write("Options", "Show Tips at Startup", "peut-être");
    EXPECT_TRUE(game->ShowAtStartup());  // not a number: the default
}

// French typography in the game's own tips: a blank before ":", ";", "?", "!" and inside the
// quotes that never breaks, or a line of the window could begin with a lone ":".
TEST(GameTipsTest, KeepTheirPunctuationWithTheWordBeforeIt) {
    const std::optional<TipsFile> tips = TipsFile::Read(MIRVALDE_TIPS_FILE);
    ASSERT_TRUE(tips);
    EXPECT_GE(tips->Count(), 12u);
    for (std::size_t i = 0; i < tips->Count(); ++i) {
        const std::string tip = tips->Line(i);
        EXPECT_FALSE(tip.empty()) << "tip " << i + 1;
        for (const char* breakable : {" :", " ;", " ?", " !", " »", "« "}) {
            EXPECT_EQ(tip.find(breakable), std::string::npos) << "tip " << i + 1 << ": " << tip;
        }
    }
}

}  // namespace
}  // namespace mirvalde
