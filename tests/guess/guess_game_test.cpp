#include <gtest/gtest.h>

#include <cmath>

#include "Fakes.h"
#include "GuessGame.h"

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
    // The answer, then the numbers found, missed, tried and the average, the captions' fixed
    // words left out: a caption worded otherwise shows whole.
    std::string Shown() const {
        const auto inner = [](const std::string& text, std::string_view head,
                              std::string_view tail) {
            if (!text.starts_with(head) || !text.ends_with(tail)) return text;
            return text.substr(head.size(), text.size() - head.size() - tail.size());
        };
        const Form1Controls& c = game.Controls();
        return c.Resultat + '|' + c.Label3[0] + '|' + c.Label3[1] + '|' +
               inner(c.Coup, "Nombre de coups joués : ", "") + '|' +
               inner(c.Label4, "Tu trouves en ", " fois, en moyenne.");
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
        {0, ',', 53, "52,6", "  53 est trop petit."}, {0, ',', 53, "052", "  52 est trop petit."},
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
// leaves the average as it was. A number found waits for "Encore ?", a new one already drawn.
TEST(GuessGameTest, ARoundCountsItsTriesMissesAndAverageAsThePlayerSeesThem) {
    Round round;  // 51 at every draw
    const struct {
        const char* action;  // a proposal sent with "Go!", or a button's caption
        const char* shown;
        bool won;
    } steps[] = {
        {"10", "  10 est trop petit.|0|1|1|", false},
        {"90", "  90 est trop grand.|0|2|2|", false},
        {"50", "  50 est trop petit.|0|3|3|", false},
        {"51", "  51 est la bonne réponse.|1|3|4|4", true},
        {"Encore ?", "|1|3|0|4", false},
        {"51", "  51 est la bonne réponse.|2|3|1|3", true},  // 5 / 2 = 2.5 shows as 3
        {"Encore ?", "|2|3|0|3", false},
        {"30", "  30 est trop petit.|2|4|1|3", false},
        {"Solution", "  51 est la bonne réponse.|2|5|7|3", false},
        {"40", "  40 est trop petit.|2|6|2|3", false},
    };
    for (const auto& s : steps) {
        const std::string action = s.action;
        if (action == "Encore ?") round.game.btEncore_Click();
        if (action == "Solution") round.game.CmdSolution_Click();
        if (action != "Encore ?" && action != "Solution") round.Propose(action);
        EXPECT_EQ(round.Shown(), s.shown) << action;
        EXPECT_EQ(round.Controls().btEncoreVisible, s.won) << action;
        EXPECT_EQ(round.Controls().BtgoEnabled, !s.won) << action;
    }
    EXPECT_EQ(round.sound.played, (std::vector<std::string>{"perdu", "perdu", "perdu", "gagner",
                                                            "gagner", "perdu", "perdu", "perdu"}));
    // Given up after a win, the number revealed is the next round's, and the round stays won.
    round.random.Push({0.1f});  // drawn at the win: 11
    round.Propose("51");
    round.game.CmdSolution_Click();
    EXPECT_EQ(round.Controls().Resultat, "  11 est la bonne réponse.");
    EXPECT_TRUE(round.Controls().btEncoreVisible);
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

TEST(GuessGameTest, GivingUpRevealsTheNumberInThePlayersNotationAndDrawsAgainAtItsLevel) {
    Round round(',');
    round.Draw(4, 51.5f / 99.0f, 0.0105f);  // 52.01
    round.game.CmdSolution_Click();
    EXPECT_EQ(round.Shown(), "  52,01 est la bonne réponse.|0|1|1|");
    EXPECT_FALSE(round.Controls().ResultatVisible);  // until the first proposal
    EXPECT_EQ(round.game.Module().Niveau, 4);
}

// "Solution" waits for something in the box, and every draw greys it again.
TEST(GuessGameTest, SolutionIsOfferedFromTheFirstCharacterTypedUntilTheNextDraw) {
    Round round;
    round.game.Boxsaisie_Change("7");
    round.game.Boxsaisie_Change("");
    EXPECT_TRUE(round.Controls().CmdSolutionEnabled);
    round.Draw(3, 0.0f);
    EXPECT_FALSE(round.Controls().CmdSolutionEnabled);
}

TEST(GuessGameTest, TheTenthNumberFoundIsDueForTheHandOverWhichResetsTheCounts) {
    Round round;
    for (int i = 0; i < 20; ++i) round.Propose(i % 2 ? "51" : "3");  // ten misses, ten found
    EXPECT_TRUE(round.game.HandOverDue());
    round.game.HandOver();
    const Form1Module& m = round.game.Module();
    EXPECT_EQ(std::vector<int>({m.NbTrouves, m.NbRates, m.NbCoups}), std::vector<int>(3, 0));
}

TEST(GuessGameTest, ALoadRebuildsTheControlsButKeepsTheCounts) {
    Round round;
    round.Propose("3");
    round.Draw(2, 0.5f);
    round.game.Form_Load();
    EXPECT_EQ(round.Shown(), "Comparaison|0|0|Nombre total de coups joués|");
    EXPECT_EQ(round.game.Module().Niveau, 0);
    EXPECT_EQ(round.game.Module().NbRates, 1);
}

TEST(GuessGameTest, TheKeyFilterLetsDigitsAndTheUsersSeparatorThrough) {
    // A second separator would make the proposal unreadable. 8 is Backspace, 0x16 Ctrl+V.
    // clang-format off
    const struct { char separator; char16_t typed; const char* kept; char16_t received; } keys[] = {
        {',', u'5', "", u'5'},  {',', u'.', "52", u','}, {',', u',', "52", u','},
        {'.', u',', "52", u'.'}, {'.', u'.', "", u'.'},  {',', 8, "52", 8},
        {',', u'a', "", 0},     {',', u' ', "", 0},      {',', u'-', "", 0},
        {',', u'+', "", 0},     {',', 0x16, "", 0},      {',', 0x03, "", 0},
        {',', u'é', "", 0},     {',', u'.', "52,0", 0},  {'.', u',', "5.", 0},
        {'.', u'5', "5.", u'5'},
    };
    // clang-format on
    for (const auto& k : keys) {
        Round round(k.separator);
        EXPECT_EQ(round.game.Boxsaisie_KeyPress(k.typed, k.kept), k.received)
            << "typed " << static_cast<int>(k.typed) << " after \"" << k.kept << "\" with '"
            << k.separator << "'";
    }
}

}  // namespace
}  // namespace mirvalde
