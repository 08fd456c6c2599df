#include <gtest/gtest.h>

#include "Fakes.h"
#include "GuessGame.h"
#include "NumberFormat.h"

namespace mirvalde {
namespace {

using testing::FakeClock;
using testing::kLargestUniform;
using testing::RecordingSound;
using testing::ScriptedRandom;

// A round played through the rules alone, with every draw scripted.
class Round {
  public:
    explicit Round(char separator = ',', std::initializer_list<float> draws = {})
        : random(draws, 0.5f), game(random, clock, sound, {"gagner", "perdu"}, separator) {
        game.Form_Load();
    }

    // Draws the number of the given level with the value u.
    void Draw(int level, float u, float decimals = 0.0f) {
        random.Push({u});
        if (kLevels[level].twoDecimals) random.Push({decimals});
        game.ChooseLevel(level);
    }
    Proposal Propose(const std::string& text) {
        game.Boxsaisie_Change(text);
        return game.Btgo_Click();
    }
    const Form1Controls& Shown() const { return game.Controls(); }
    const Form1Module& State() const { return game.Module(); }

    ScriptedRandom random;
    FakeClock clock;
    RecordingSound sound;
    GuessGame game;
};

TEST(GuessGameTest, EveryLevelDrawsFromItsLowestToItsHighestValue) {
    const struct {
        int level;
        double lowest;
        double highest;
    } levels[] = {
        {0, 1, 100}, {1, 100, 1000}, {2, 1000, 10000}, {3, 100000, 1000000}, {4, 1.00, 100.00}};
    for (const auto& l : levels) {
        Round round;
        round.Draw(l.level, 0.0f, 0.0f);
        EXPECT_EQ(round.State().Nombre, l.lowest) << "level " << l.level;
        round.Draw(l.level, kLargestUniform, kLargestUniform);
        EXPECT_EQ(round.State().Nombre, l.highest) << "level " << l.level;
        EXPECT_EQ(round.State().Niveau, l.level);
    }
}

// Over many real draws every number stays in its level, and level 4 has two decimals at
// most, exactly as the player types them.
TEST(GuessGameTest, RealDrawsStayWithinTheirLevel) {
    MersenneRandom random;
    FakeClock clock;
    RecordingSound sound;
    GuessGame game(random, clock, sound, {}, ',');
    game.Form_Load();
    for (int level = 0; level < 5; ++level) {
        for (int i = 0; i < 5000; ++i) {
            clock.seconds += 0.001;
            game.ChooseLevel(level);
            const double n = game.Module().Nombre;
            ASSERT_GE(n, level == 4 ? 1.0 : static_cast<double>(kLevels[level].low));
            ASSERT_LE(n, level == 4 ? 100.0 : static_cast<double>(kLevels[level].high));
            ASSERT_EQ(ReadNumber(Format(n, "0.00", ','), ','), n) << n;
            if (level < 4) {
                ASSERT_EQ(n, static_cast<double>(static_cast<std::int64_t>(n)));
            }
        }
    }
}

TEST(GuessGameTest, TheGeneratorIsSeededFromTheTimeOfDayBeforeEveryDraw) {
    Round round;
    round.clock.seconds = 45000.5;
    round.Draw(2, 0.5f);
    round.clock.seconds = 45001.75;
    round.Draw(4, 0.5f, 0.25f);
    ASSERT_EQ(round.random.seeds.size(), 3u);  // the load draws too
    EXPECT_EQ(round.random.seeds[1], 45000.5);
    EXPECT_EQ(round.random.seeds[2], 45001.75);
}

struct Answer {
    int level;
    char separator;
    double nombre;
    const char* proposal;
    const char* sentence;
};

TEST(GuessGameTest, AnswerSentencesShowTheProposalGroupedAndJudgeTheExactValue) {
    const Answer cases[] = {
        {0, ',', 53, "52,6", "  53 est trop petit."},
        {0, ',', 53, "052", "  52 est trop petit."},
        {0, '.', 53, "54", "  54 est trop grand."},
        {2, ',', 1234, "1234", " 1 234 est la bonne réponse."},
        {3, ',', 1000000, "1000000", "1 000 000 est la bonne réponse."},
        {3, '.', 500000, "999999999", "999 999 999 est trop grand."},
        {4, ',', 52.01, "52", "  52 est trop petit."},
        {4, ',', 52.01, "52,011", "  52,01 est trop grand."},
        {4, ',', 52.01, "52,010", "  52,01 est la bonne réponse."},
        {4, '.', 52.01, "52.01", "  52.01 est la bonne réponse."},
        {4, ',', 52.01, "52,5", "  52,5 est trop grand."},
        {4, ',', 52.01, ",5", "  0,5 est trop petit."},
    };
    for (const Answer& c : cases) {
        Round round(c.separator);
        // Scripts the draw of `nombre` at its level.
        const Level& level = kLevels[c.level];
        const double whole = std::floor(c.nombre);
        const auto u = static_cast<float>((whole - level.low + 0.5) / (level.high - level.low + 1));
        round.Draw(c.level, u, static_cast<float>(c.nombre - whole + 0.001));
        ASSERT_EQ(round.State().Nombre, c.nombre);
        EXPECT_EQ(round.game.GetPhraseResultat(c.proposal), c.sentence) << c.proposal;
    }
}

TEST(GuessGameTest, MissesThenWinsCountAndAverageAsThePlayerSeesThem) {
    Round round;  // 51 at level 0
    ASSERT_EQ(round.State().Nombre, 51);
    EXPECT_FALSE(round.Shown().ResultatVisible);
    EXPECT_FALSE(round.Shown().CmdSolutionEnabled);

    EXPECT_EQ(round.Propose("10"), Proposal::TooSmall);
    EXPECT_TRUE(round.Shown().CmdSolutionEnabled);
    EXPECT_EQ(round.Propose("90"), Proposal::TooBig);
    EXPECT_EQ(round.Propose("50"), Proposal::TooSmall);
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 3");
    EXPECT_EQ(round.Shown().Label3[1], "3");
    EXPECT_EQ(round.Shown().Boxsaisie, "");

    EXPECT_EQ(round.Propose("51"), Proposal::Found);
    EXPECT_EQ(round.Shown().Resultat, "  51 est la bonne réponse.");
    EXPECT_EQ(round.Shown().Label4, "Tu trouves en 4 fois, en moyenne.");
    EXPECT_EQ(round.Shown().Label3[0], "1");
    EXPECT_EQ(round.Shown().Label3[1], "3");
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 4");
    // Won: "Go!" waits for "Encore ?", and a new number is already drawn.
    EXPECT_FALSE(round.Shown().BtgoEnabled);
    EXPECT_TRUE(round.Shown().btEncoreVisible);
    EXPECT_FALSE(round.Shown().CmdSolutionEnabled);
    EXPECT_EQ(round.sound.played, (std::vector<std::string>{"perdu", "perdu", "perdu", "gagner"}));

    round.game.btEncore_Click();
    EXPECT_TRUE(round.Shown().BtgoEnabled);
    EXPECT_FALSE(round.Shown().btEncoreVisible);
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 0");
    EXPECT_EQ(round.Shown().Resultat, "");
    EXPECT_EQ(round.State().NbCoups, 0);

    // Found at once: (2 + 3) / 2 = 2.5 shows as 3.
    EXPECT_EQ(round.Propose("51"), Proposal::Found);
    EXPECT_EQ(round.Shown().Label4, "Tu trouves en 3 fois, en moyenne.");
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 1");
}

TEST(GuessGameTest, EmptyProposalsCountAsClicksButNotAsMisses) {
    Round round;
    EXPECT_EQ(round.Propose(""), Proposal::Empty);
    EXPECT_TRUE(round.Shown().ResultatVisible);
    EXPECT_EQ(round.Shown().Resultat, "Comparaison");
    EXPECT_EQ(round.Propose(""), Proposal::Empty);
    EXPECT_EQ(round.Propose("7"), Proposal::TooSmall);
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 3");
    EXPECT_EQ(round.State().NbRates, 1);
    EXPECT_EQ(round.sound.played.size(), 1u);
}

// Text pasted into the box can hold anything: it is answered like an empty proposal, and
// the box is emptied for the next one.
TEST(GuessGameTest, AProposalThatIsNoNumberIsRefusedWithoutCountingAMiss) {
    Round round;
    for (const char* text : {",", "abc", "5,5,5", "12 3"}) {
        EXPECT_EQ(round.Propose(text), Proposal::NotANumber) << text;
        EXPECT_EQ(round.Shown().Boxsaisie, "");
    }
    EXPECT_EQ(round.State().NbRates, 0);
    EXPECT_EQ(round.State().NbCoups, 4);
    EXPECT_TRUE(round.sound.played.empty());
}

TEST(GuessGameTest, GivingUpRevealsTheNumberCountsAMissAndDrawsAnother) {
    Round round(',');
    round.Draw(4, 51.5f / 99.0f, 0.0105f);  // 52.01
    ASSERT_EQ(round.State().Nombre, 52.01);
    round.game.CmdSolution_Click();
    // Giving up before any proposal leaves the sentence hidden.
    EXPECT_FALSE(round.Shown().ResultatVisible);
    EXPECT_EQ(round.Shown().Resultat, "  52,01 est la bonne réponse.");
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 1");
    EXPECT_EQ(round.Shown().Label3[1], "1");
    EXPECT_EQ(round.sound.played, std::vector<std::string>{"perdu"});
    EXPECT_EQ(round.State().NbCoups, 0);
    EXPECT_EQ(round.State().Niveau, 4);
    EXPECT_FALSE(round.Shown().CmdSolutionEnabled);
}

TEST(GuessGameTest, GivingUpShowsFoundPlusMissesWhileGoShowsItsOwnCount) {
    Round round;  // 51 each draw
    round.Propose("1");
    round.Propose("51");  // 1 found, 1 miss
    round.game.btEncore_Click();
    round.Propose("1");
    round.Propose("2");
    round.Propose("51");  // 2 found, 3 misses
    round.game.btEncore_Click();
    round.Propose("3");  // 4 misses, NbCoups 1
    round.game.CmdSolution_Click();
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 7");
    EXPECT_EQ(round.Shown().Label3[0], "2");
    EXPECT_EQ(round.Shown().Label3[1], "5");
    EXPECT_EQ(round.Shown().Label4, "Tu trouves en 3 fois, en moyenne.");  // not recomputed
    round.Propose("4");
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 2");

    // Giving up after a win reveals the number drawn at the win, the next round's, and
    // stays in the won state.
    round.random.Push({0.1f});  // drawn at the win: 11
    round.Propose("51");
    round.game.Boxsaisie_Change("9");
    EXPECT_TRUE(round.Shown().CmdSolutionEnabled);
    round.game.CmdSolution_Click();
    EXPECT_EQ(round.Shown().Resultat, "  11 est la bonne réponse.");
    EXPECT_FALSE(round.Shown().BtgoEnabled);
    EXPECT_TRUE(round.Shown().btEncoreVisible);
}

TEST(GuessGameTest, ChangingLevelMidRoundDrawsAgainWithoutResettingAnyCount) {
    Round round;
    round.Propose("10");
    round.Propose("");
    round.game.Boxsaisie_Change("5");
    round.Draw(3, 0.0f);
    EXPECT_EQ(round.State().Nombre, 100000);
    EXPECT_EQ(round.State().NbCoups, 2);
    EXPECT_EQ(round.State().NbRates, 1);
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 2");
    EXPECT_FALSE(round.Shown().CmdSolutionEnabled);
    EXPECT_EQ(round.Shown().Option1, 3);
    // Emptying the box does not disable "Solution" again.
    round.game.Boxsaisie_Change("7");
    round.game.Boxsaisie_Change("");
    EXPECT_TRUE(round.Shown().CmdSolutionEnabled);
}

TEST(GuessGameTest, TheClickCountStopsAtItsCeilingInsteadOfTurningNegative) {
    Round round;
    for (int i = 0; i < 32770; ++i) round.game.Btgo_Click();
    EXPECT_EQ(round.State().NbCoups, 32767);
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 32767");
}

TEST(GuessGameTest, TheTenthNumberFoundIsDueForTheHandOverWhichResetsTheCounts) {
    Round round;
    for (int found = 1; found <= 10; ++found) {
        EXPECT_FALSE(round.game.HandOverDue());
        round.Propose("3");
        round.Propose("51");
        round.game.btEncore_Click();
    }
    EXPECT_TRUE(round.game.HandOverDue());
    round.game.HandOver();
    EXPECT_EQ(round.State().NbTrouves, 0);
    EXPECT_EQ(round.State().NbRates, 0);
    EXPECT_EQ(round.State().NbCoups, 0);
    EXPECT_EQ(round.Shown().Coup, "Nombre de coups joués : 0");
}

TEST(GuessGameTest, ALoadRebuildsTheControlsButKeepsTheCounts) {
    Round round;
    round.Propose("3");
    round.Draw(2, 0.5f);
    round.game.Form_Load();
    EXPECT_EQ(round.Shown().Option1, 0);
    EXPECT_EQ(round.State().Niveau, 0);
    EXPECT_EQ(round.Shown().Coup, "Nombre total de coups joués");
    EXPECT_FALSE(round.Shown().ResultatVisible);
    EXPECT_EQ(round.State().NbRates, 1);
}

struct Key {
    char separator;
    char16_t typed;
    const char* kept;
    char16_t received;
};

TEST(GuessGameTest, TheKeyFilterLetsDigitsAndTheUsersSeparatorThrough) {
    const Key cases[] = {
        {',', u'5', "", u'5'},   {',', u'.', "52", u','},
        {',', u',', "52", u','}, {'.', u',', "52", u'.'},
        {'.', u'.', "", u'.'},   {',', 8, "52", 8},
        {',', u'a', "", 0},      {',', u' ', "", 0},
        {',', u'-', "", 0},      {',', u'+', "", 0},
        {',', 0x16, "", 0},  // Ctrl+V
        {',', 0x03, "", 0},      {',', u'é', "", 0},
        {',', u'.', "52,0", 0},  // a second separator would make the proposal unreadable
        {'.', u',', "5.", 0},    {'.', u'5', "5.", u'5'},
    };
    for (const Key& k : cases) {
        Round round(k.separator);
        EXPECT_EQ(round.game.Boxsaisie_KeyPress(k.typed, k.kept), k.received)
            << "typed " << static_cast<int>(k.typed) << " after \"" << k.kept << "\" with '"
            << k.separator << "'";
    }
}

}  // namespace
}  // namespace mirvalde
