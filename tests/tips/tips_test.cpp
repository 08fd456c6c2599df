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

// Files written on either system, with any line ends, give back the lines that were written.
// Generated texts are checked against the lines themselves, encoded here by hand.
TEST(TipsFileTest, LinesComeBackWhateverTheEncodingAndTheLineEnds) {
    struct Letter {
        const char* utf8;
        int windows1252;  // -1: not in the code page
    };
    const Letter letters[] = {{"a", 'a'},  {"Z", 'Z'},  {" ", ' '},  {"?", '?'},  {"é", 0xE9},
                              {"è", 0xE8}, {"à", 0xE0}, {"ç", 0xE7}, {"Ê", 0xCA}, {"œ", 0x9C},
                              {"€", 0x80}, {"’", 0x92}, {"«", 0xAB}, {"»", 0xBB}, {"…", 0x85},
                              {"ж", -1},   {"😀", -1},   {"\t", '\t'}};
    const char* const ends[] = {"\r", "\n", "\r\n"};
    std::mt19937 random(20261123);
    for (int round = 0; round < 3000; ++round) {
        const int kind = round % 3;  // UTF-8, UTF-8 with a byte-order mark, Windows-1252
        Lines lines(random() % 6);
        std::string bytes = kind == 1 ? "\xEF\xBB\xBF" : "";
        bool lastEnded = false;
        for (std::size_t l = 0; l < lines.size(); ++l) {
            const int length = static_cast<int>(random() % 12);
            for (int i = 0; i < length; ++i) {
                const Letter& letter = letters[random() % std::size(letters)];
                if (kind == 2 && letter.windows1252 < 0) continue;
                lines[l] += letter.utf8;
                if (kind == 2) {
                    bytes += static_cast<char>(letter.windows1252);
                    // A letter between accents, as in any real text: the bytes are then
                    // no UTF-8 by chance.
                    if (letter.windows1252 >= 0x80) {
                        lines[l] += 'x';
                        bytes += 'x';
                    }
                } else {
                    bytes += letter.utf8;
                }
            }
            const bool last = l + 1 == lines.size();
            if (!last || random() % 2) {
                // An empty line ended by LF right after a CR would make one CRLF of the two.
                const char* end = ends[random() % 3];
                if (lines[l].empty() && bytes.ends_with('\r') && *end == '\n') end = "\r";
                bytes += end;
                lastEnded = last;
            }
        }
        // A last line left empty and without an end is no line at all.
        if (!lines.empty() && lines.back().empty() && !lastEnded) lines.pop_back();
        const TipsFile file = TipsFile::FromBytes(bytes);
        Lines read;
        for (std::size_t i = 0; i < file.Count(); ++i) read.push_back(file.Line(i));
        ASSERT_EQ(read, lines) << "round " << round << ", kind " << kind;
    }
}

TEST(TipsFileTest, TellsWellFormedUtf8FromAnyOtherText) {
    EXPECT_TRUE(IsValidUtf8("Noël à l'œil €"));
    for (const char* bad : {"\xE9t\xE9", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                            "\x80", "\xE2\x82"}) {
        EXPECT_FALSE(IsValidUtf8(bad)) << bad;
    }
    EXPECT_EQ(Windows1252ToUtf8("\x80\x9C\x92\xE9\x81"), "€œ’é\xC2\x81");
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
