#include <gtest/gtest.h>

#include <cmath>

#include "Fakes.h"
#include "GuessGame.h"
#include "ProportionalLayout.h"

namespace mirvalde {
namespace {

// A round played through the rules alone, with every draw scripted: 0.5 unless told, which
// draws 51 at the first level.
struct Round {
    explicit Round(char separator = ',')
        : game(random, clock, sound, {"gagner", "perdu"}, separator) {
        game.Form_Load();
    }
    // Draws the number of the level with the value u, and its decimals with d.
    void Draw(int level, float u, float d = 0.0f) {
        random.Push({u});
        if (kLevels[level].twoDecimals) random.Push({d});
        game.ChooseLevel(level);
    }
    Proposal Propose(const std::string& text) {
        game.Boxsaisie_Change(text);
        return game.Btgo_Click();
    }
    // The answer, then the numbers found, missed, tried and the average, without the captions'
    // words (the window's test reads them).
    std::string Shown() const {
        std::string shown = Controls().Resultat;
        for (std::string caption :
             {Controls().Label3[0], Controls().Label3[1], Controls().Coup, Controls().Label4}) {
            std::erase_if(caption, [](char c) { return c < '0' || c > '9'; });
            shown += '|' + caption;
        }
        return shown;
    }
    const Form1Controls& Controls() const { return game.Controls(); }

    testing::ScriptedRandom random;
    testing::FakeClock clock;
    testing::RecordingSound sound;
    GuessGame game;
};

TEST(GuessGameTest, EveryLevelDrawsFromItsLowestToItsHighestValueSeededByTheTimeOfDay) {
    const double bounds[][2] = {{1, 100}, {100, 1000}, {1000, 10000}, {100000, 1000000}, {1, 100}};
    for (int level = 0; level < 5; ++level) {
        Round round;
        round.clock.seconds = 45000.5;
        round.Draw(level, 0.0f, 0.0f);
        EXPECT_EQ(round.game.Module().Nombre, bounds[level][0]) << "level " << level;
        round.Draw(level, testing::kLargestUniform, testing::kLargestUniform);  // 99,99999: 100
        EXPECT_EQ(round.game.Module().Nombre, bounds[level][1]) << "level " << level;
        EXPECT_EQ(round.random.seeds, (std::vector<double>{36000.25, 45000.5, 45000.5}));
    }
}

TEST(GuessGameTest, AnswerSentencesShowTheProposalGroupedAndJudgeTheExactValue) {
    // clang-format off
    const struct { int level; char separator; double nombre; const char *proposal, *sentence; }
    cases[] = {
        {0, ',', 53, "52,6", "  53 est trop petit."}, {0, ',', 53, "052,", "  52 est trop petit."},
        {0, '.', 53, "54", "  54 est trop grand."}, {4, ',', 52.01, ",5", "  0,5 est trop petit."},
        {2, ',', 1234, "1234", " 1 234 est la bonne réponse."},
        {3, ',', 1000000, "1000000", "1 000 000 est la bonne réponse."},
        {3, '.', 500000, "999999999", "999 999 999 est trop grand."},
        {4, ',', 52.01, "52", "  52 est trop petit."},
        {4, ',', 52.01, "52,5", "  52,5 est trop grand."},
        {4, ',', 52.01, "52,011", "  52,01 est trop grand."},
        {4, ',', 52.01, "52,010", "  52,01 est la bonne réponse."},
        {4, '.', 52.01, "52.01", "  52.01 est la bonne réponse."},
    };
    // clang-format on
    for (const auto& c : cases) {
        Round round(c.separator);
        const Level& level = kLevels[c.level];
        const double whole = std::floor(c.nombre);
        const auto u = static_cast<float>((whole - level.low + 0.5) / (level.high - level.low + 1));
        round.Draw(c.level, u, static_cast<float>(c.nombre - whole + 0.001));
        EXPECT_EQ(round.game.GetPhraseResultat(c.proposal), c.sentence) << c.proposal;
    }
}

// "Go!" counts the tries of the round; giving up shows the numbers played in all instead, and
// leaves the average as it was. A number found waits for "Encore ?", a new one already drawn,
// which "Solution" then reveals.
TEST(GuessGameTest, ARoundCountsItsTriesMissesAndAverageAsThePlayerSeesThem) {
    Round round;
    round.random.Push({0.5f, 0.5f, 0.1f});  // 51 at every draw, but 11 after the second found
    // clang-format off
    // An action is a proposal sent with "Go!", or a button's caption.
    const struct { const char *action, *shown; bool won; } steps[] = {
        {"10", "  10 est trop petit.|0|1|1|", false},
        {"90", "  90 est trop grand.|0|2|2|", false},
        {"50", "  50 est trop petit.|0|3|3|", false},
        {"51", "  51 est la bonne réponse.|1|3|4|4", true},
        {"Encore ?", "|1|3|0|4", false},
        {"51", "  51 est la bonne réponse.|2|3|1|3", true},  // 5 / 2 = 2.5 shows as 3
        {"Solution", "  11 est la bonne réponse.|2|4|6|3", true},
        {"Encore ?", "|2|4|0|3", false},
        {"30", "  30 est trop petit.|2|5|1|3", false},
        {"Solution", "  51 est la bonne réponse.|2|6|8|3", false},
        {"40", "  40 est trop petit.|2|7|2|3", false},
    };
    // clang-format on
    for (const auto& s : steps) {
        const std::string action = s.action;
        if (action == "Encore ?") round.game.btEncore_Click();
        if (action == "Solution") round.game.CmdSolution_Click();
        if (action != "Encore ?" && action != "Solution") round.Propose(action);
        EXPECT_EQ(round.Shown(), s.shown) << action;
        EXPECT_EQ(round.Controls().btEncoreVisible, s.won) << action;
        EXPECT_EQ(round.Controls().BtgoEnabled, !s.won) << action;
    }
    EXPECT_EQ(round.sound.played,
              (std::vector<std::string>{"perdu", "perdu", "perdu", "gagner", "gagner", "perdu",
                                        "perdu", "perdu", "perdu"}));
}

// Text pasted into the box can hold anything: like an empty proposal it is answered by a
// message, counted as a try but not as a miss, and the box is emptied for the next one. The
// count of tries stops at its ceiling rather than turn negative.
TEST(GuessGameTest, AProposalThatIsNoNumberCountsATryButNotAMiss) {
    Round round;
    for (const char* text : {",", "abc", "5,5,5", "12 3"}) {
        EXPECT_EQ(round.Propose(text), Proposal::NotANumber) << text;
        EXPECT_EQ(round.Controls().Boxsaisie, "");
    }
    EXPECT_EQ(round.Propose(""), Proposal::Empty);
    EXPECT_EQ(round.Shown(), "Comparaison|0|0|5|");
    for (int i = 0; i < 32770; ++i) round.game.Btgo_Click();
    EXPECT_EQ(round.Shown(), "Comparaison|0|0|32767|");
    EXPECT_TRUE(round.sound.played.empty());
}

// "Solution" waits for something typed in the box, then reveals the number in the player's
// notation and draws again at its level, which greys it until the next character.
TEST(GuessGameTest, SolutionWaitsForACharacterRevealsTheNumberAndDrawsAgain) {
    Round round(',');
    round.Draw(4, 51.5f / 99.0f, 0.0105f);  // 52.01
    round.game.Boxsaisie_Change("7");
    round.game.Boxsaisie_Change("");
    EXPECT_TRUE(round.Controls().CmdSolutionEnabled);
    round.game.CmdSolution_Click();
    EXPECT_EQ(round.Shown(), "  52,01 est la bonne réponse.|0|1|1|");
    EXPECT_FALSE(round.Controls().ResultatVisible);  // until the first proposal
    EXPECT_FALSE(round.Controls().CmdSolutionEnabled);
    EXPECT_EQ(round.game.Module().Niveau, 4);
}

// A new load of the window rebuilds its controls but keeps the counts; the tenth number found
// is due for the hand-over to the blocks game, which resets them.
TEST(GuessGameTest, TheCountsOutliveALoadAndTheHandOverAtTheTenthNumberFoundResetsThem) {
    Round round;
    for (int i = 0; i < 20; ++i) round.Propose(i % 2 ? "51" : "3");  // ten misses, ten found
    round.Draw(2, 0.5f);
    round.game.Form_Load();
    EXPECT_EQ(round.Shown(), "Comparaison|0|0||");
    EXPECT_EQ(round.game.Module().Niveau, 0);
    EXPECT_TRUE(round.game.HandOverDue());
    round.game.HandOver();
    const Form1Module& m = round.game.Module();
    EXPECT_EQ(std::vector<int>({m.NbTrouves, m.NbRates, m.NbCoups}), std::vector<int>(3, 0));
}

// Backspace, digits and one separator, the player's whichever is typed, get through; the rest
// of what can be typed is typed into the window (Form1Test).
TEST(GuessGameTest, TheKeyFilterLetsDigitsAndOneSeparatorInThePlayersNotationThrough) {
    const Round comma(','), point('.');
    EXPECT_EQ(comma.game.Boxsaisie_KeyPress(8, "52"), 8);
    EXPECT_EQ(comma.game.Boxsaisie_KeyPress(0x16, ""), 0);  // Ctrl+V
    EXPECT_EQ(comma.game.Boxsaisie_KeyPress(0x03, ""), 0);  // Ctrl+C
    EXPECT_EQ(point.game.Boxsaisie_KeyPress(u',', "52"), u'.');
    EXPECT_EQ(point.game.Boxsaisie_KeyPress(u'.', ""), u'.');
    EXPECT_EQ(point.game.Boxsaisie_KeyPress(u',', "5."), 0);
}

// Maximising and restoring are measured on the window itself (Form1DesignTest); a minimised
// window moves nothing, and neither does the restore that follows.
TEST(ProportionalLayoutTest, MinimisingChangesNothingAndTheRestoreThatFollowsNeither) {
    ProportionalLayout layout;
    layout.Add("Regle", {1223, 0, 2000, 500});
    layout.SetPreviousSize(8910, 5235);
    EXPECT_FALSE(layout.Form_Resize(2400, 300, true));
    EXPECT_FALSE(layout.Form_Resize(8910, 5235, false));
    EXPECT_DOUBLE_EQ(layout.Places().at("Regle").left, 1223);
}

}  // namespace
}  // namespace mirvalde
