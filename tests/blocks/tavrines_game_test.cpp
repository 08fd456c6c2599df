#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Fakes.h"
#include "SettingsStore.h"
#include "TavrinesGame.h"

namespace mirvalde {
namespace {

using testing::FakeClock;
using testing::kLargestUniform;
using testing::ScriptedRandom;

// The keys by the codes the keyboard sends.
constexpr int kLeft = 37, kUp = 38, kRight = 39, kDown = 40, kSpace = 32, kQ = 81;

using Grid = decltype(TavrinesModule::Grille);
// A well as text, top row first: '.' empty, the colours by their initials (K black), 'C' the
// blink, '?' anything else. Fewer than 18 lines are the bottom of the well, empty above.
using Board = std::vector<std::string>;
constexpr std::string_view kLetters = "RKGBYM";

Board Full(Board bottom) {
    bottom.insert(bottom.begin(), kLignes - bottom.size(), "......");
    return bottom;
}

void LayOn(Grid& grid, const Board& bottom) {
    const Board rows = Full(bottom);
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) {
            const char letter = rows[r - 1][c - 1];
            grid[c][r] = letter == '.' ? COULEUR_VIDE : kCouleurs[kLetters.find(letter)];
        }
    }
}

char LetterOf(Couleur couleur) {
    if (couleur == COULEUR_VIDE) return '.';
    if (couleur == kCouleurClignote) return 'C';
    const auto found = std::find(kCouleurs.begin(), kCouleurs.end(), couleur);
    return found == kCouleurs.end() ? '?' : kLetters[found - kCouleurs.begin()];
}

Board Drawn(const Grid& grid) {
    Board rows(kLignes, std::string(kColonnes, ' '));
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) rows[r - 1][c - 1] = LetterOf(grid[c][r]);
    }
    return rows;
}

// A column stacked from row `top` to the floor, red and green in turn: no line.
Board Stack(int column, int top) {
    Board rows(kLignes, "......");
    for (int r = top; r <= kLignes; ++r) rows[r - 1][column - 1] = r % 2 ? 'R' : 'G';
    return rows;
}

// The well with a trio (bottom, middle, top) whose bottom square is in row `bottom`.
Board Put(Board rows, int column, int bottom, const std::string& trio) {
    rows = Full(rows);
    for (int i = 0; i < 3 && bottom - i >= 1; ++i) rows[bottom - i - 1][column - 1] = trio[i];
    return rows;
}

// The rows given, then odd and even rows in turn down to the floor.
Board Filled(Board rows, const std::string& odd, const std::string& even) {
    for (int r = static_cast<int>(rows.size()) + 1; r <= kLignes; ++r) {
        rows.push_back(r % 2 ? odd : even);
    }
    return rows;
}

// The well as the window shows it, each picture shown by a Refresh, and the time slept then.
class RecordingPicture final : public WellPicture {
  public:
    explicit RecordingPicture(const FakeClock& clock) : clock_(clock) {
        for (auto& column : cells) column.fill(0x00808080);  // never painted
    }
    void FillBox(int x1, int y1, int x2, int y2, Couleur couleur) override {
        ++boxes;
        if (x1 == 0 && y1 == 0 && x2 == kWellWidthTwips && y2 == kWellHeightTwips) {
            for (auto& column : cells) column.fill(couleur);
            return;
        }
        const int c = x1 / kCellTwips + 1, r = y1 / kCellTwips + 1;
        ASSERT_TRUE(x1 % kCellTwips == 0 && y1 % kCellTwips == 0 && x2 == x1 + kCellTwips &&
                    y2 == y1 + kCellTwips && c >= 1 && c <= kColonnes && r >= 1 && r <= kLignes)
            << "box " << x1 << ',' << y1 << ' ' << x2 << ',' << y2;
        cells[c][r] = couleur;
    }
    void Refresh() override { shown.push_back({Drawn(cells), clock_.slept}); }
    void Forget() {
        boxes = 0;
        shown.clear();
    }

    Grid cells{};
    int boxes = 0;
    std::vector<std::pair<Board, std::uint32_t>> shown;

  private:
    const FakeClock& clock_;
};

// The window's rules with every draw scripted, loaded and painting into a recorded well.
struct Tavrine {
    Tavrine() : game(random, clock, settings) {
        game.SetPicture(&picture);
        game.Form_Load();
    }
    // A game under way: its first trio above the well, over squares laid by hand.
    Tavrine(const std::string& trio, int column, const Board& well = {}) : Tavrine() {
        NewGame(trio, column);
        Lay(well);
    }
    void Load(const std::string& nom, const std::string& score) {
        settings.Write("Meilleur Score", "Nom", nom);
        settings.Write("Meilleur Score", "Score", score);
        game.Form_Load();
    }
    // The next trio: its colours by their initials, bottom first, and its column.
    void Next(const std::string& trio, int column) {
        for (char letter : trio) random.Push({(kLetters.find(letter) + 0.5f) / 6});
        random.Push({(column - 0.5f) / 5});
    }
    void NewGame(const std::string& trio = "RGB", int column = 3) {
        Next(trio, column);
        game.mnuNouveau_Click();
        picture.Forget();
    }
    void Keys(std::initializer_list<int> keys) {
        for (int key : keys) game.Form_KeyDown(key);
    }
    void Ticks(int n) {
        for (int i = 0; i < n; ++i) game.tmrCase_Timer();
    }
    // Squares laid by hand, shown as if they had been painted.
    void Lay(const Board& bottom) {
        LayOn(M().Grille, bottom);
        LayOn(picture.cells, bottom);
    }
    TavrinesModule& M() { return game.ModuleForTest(); }
    const TavrinesControls& Shown() const { return game.Controls(); }

    ScriptedRandom random;
    FakeClock clock;
    MemorySettingsStore settings;
    RecordingPicture picture{clock};
    TavrinesGame game;
};

// The well and its picture both hold `bottom`; a failure prints the three side by side.
::testing::AssertionResult Shows(Tavrine& t, const Board& bottom) {
    const Board want = Full(bottom), well = Drawn(t.M().Grille), seen = Drawn(t.picture.cells);
    if (well == want && seen == want) return ::testing::AssertionSuccess();
    auto failure = ::testing::AssertionFailure() << "\nexpected  well    picture\n";
    for (int r = 0; r < kLignes; ++r) {
        const bool same = well[r] == want[r] && seen[r] == want[r];
        failure << want[r] << (same ? "    " : "  # ") << well[r] << "  " << seen[r] << '\n';
    }
    return failure;
}

// Score, squares, best and its holder as the labels show them.
std::string Scores(const TavrinesControls& shown) {
    return shown.lblScore + '|' + shown.lblCarres + '|' + shown.lblMeilleur + '|' + shown.lblNom;
}

TEST(TavrineLoadTest, ReadsTheBestFromTheSettingsAndStartsAtNormalSpeed) {
    Tavrine fresh;
    EXPECT_EQ(Scores(fresh.Shown()), "0|0| 10|Anonyme");
    EXPECT_EQ(fresh.random.seeds, std::vector<double>{fresh.clock.seconds});

    const struct {
        const char* stored;
        std::int32_t meilleur;
        const char* shown;
    } scores[] = {{"42", 42, " 42"},         {"-5", -5, "-5"},
                  {"douze", 10, " 10"},      {"12.5", 10, " 10"},
                  {"2147483648", 10, " 10"}, {"2147483647", 2147483647, " 2147483647"}};
    for (const auto& s : scores) {
        Tavrine t;
        t.Load("Zoé", s.stored);
        EXPECT_EQ(t.M().Meilleur, s.meilleur) << s.stored;
        EXPECT_EQ(Scores(t.Shown()), std::string("0|0|") + s.shown + "|Zoé");
    }
}

TEST(TavrineLoadTest, TheChosenSpeedTicksTheNextGamesUntilTheNextLoad) {
    Tavrine t;
    EXPECT_EQ(t.Shown().tmrCaseInterval, 0);
    for (int i = 1; i <= 5; ++i) {
        t.game.mnuSpeed_Click(i);
        EXPECT_EQ(t.Shown().lblVitesse, "Vitesse : " + std::to_string(i));
        EXPECT_EQ(t.Shown().mnuSpeedChecked, i);
        t.NewGame();
        EXPECT_EQ(t.Shown().tmrCaseInterval, 1100 - 200 * i);
    }
    t.game.Form_Load();
    EXPECT_EQ(t.Shown().lblVitesse, "Vitesse : 3");
    EXPECT_EQ(t.Shown().mnuSpeedChecked, 3);
    t.NewGame();
    EXPECT_EQ(t.Shown().tmrCaseInterval, 500);
}

TEST(TavrineNewGameTest, StartsAfreshWithTheFirstTrioCountedButKeepsTheBestShown) {
    Tavrine t;
    t.Load("Zoé", "0");
    t.NewGame("BBM", 2);
    EXPECT_TRUE(Shows(t, {}));
    using Labels = std::array<std::string, 6>;
    EXPECT_EQ(t.Shown().lblStatCouleur, (Labels{"0", "0", "0", " 2", "0", " 1"}));
    EXPECT_EQ(t.Shown().lblBlocs, " 1");
    EXPECT_FALSE(t.Shown().mnuVitesseEnabled);

    // A line mid-game beats the best shown; a new game then keeps it.
    t.Lay({"R.....", "R.....", "R....."});
    t.game.ChercheSol();
    ASSERT_EQ(t.Shown().lblNom, "???");
    t.NewGame("GGK", 4);
    EXPECT_TRUE(Shows(t, {}));
    EXPECT_EQ(t.Shown().lblStatCouleur, (Labels{"0", " 1", " 2", "0", "0", "0"}));
    EXPECT_EQ(t.Shown().lblBlocs, " 1");
    EXPECT_EQ(t.M().Score + t.M().Carres, 0);
    EXPECT_EQ(Scores(t.Shown()), "0|0| 1|???");
}

TEST(TavrineNewGameTest, NoTrioStartsInTheLastColumn) {
    Tavrine t;
    std::set<int> columns;
    for (int i = 0; i <= 1000; ++i) {
        const float u = i == 1000 ? kLargestUniform : i / 1000.0f;
        t.random.Push({0.0f, 0.0f, 0.0f, u});
        t.game.mnuNouveau_Click();
        ASSERT_EQ(t.M().XPos, static_cast<int>(u * 5.0) + 1) << u;
        columns.insert(t.M().XPos);
    }
    EXPECT_EQ(columns, (std::set<int>{1, 2, 3, 4, 5}));
}

TEST(TavrineDrawingTest, TheTrioShowsAsFarAsItHasEnteredAndLeavesNothingBehind) {
    Tavrine t("RGB", 3);
    for (int y = 1; y <= kLignes; ++y) {
        t.picture.Forget();
        t.game.tmrCase_Timer();
        ASSERT_EQ(t.M().YPos, y);
        EXPECT_TRUE(Shows(t, Put({}, 3, y, "RGB"))) << "tick to row " << y;
        EXPECT_EQ(t.picture.boxes, std::min(y, 4)) << "tick to row " << y;
    }
    for (int c = 0; c <= kColonnes; ++c) EXPECT_EQ(t.M().Grille[c][0], 0) << "column " << c;

    for (int y : {1, 2, 5}) {
        Tavrine s("RGB", 3);
        s.Ticks(y);
        s.Keys({kRight});
        EXPECT_TRUE(Shows(s, Put({}, 4, y, "RGB"))) << "move in row " << y;
    }
}

TEST(TavrineMovesTest, AboveTheWellOnlyTurnsAndDropsActAndOnceLandedOnlyTurns) {
    Tavrine t("RGB", 3);
    const auto bloc = [&] {
        std::string letters;
        for (int i = 1; i <= 4; ++i) letters += LetterOf(t.M().Bloc[i]);
        return letters;
    };
    t.Keys({kLeft, kRight, kUp});
    EXPECT_EQ(t.M().XPos, 3);
    EXPECT_EQ(bloc(), "GBR.");
    t.Keys({kUp, kUp});
    EXPECT_EQ(bloc(), "RGB.");
    EXPECT_EQ(t.picture.boxes, 0);

    t.Keys({kDown});
    EXPECT_TRUE(Shows(t, Put({}, 3, 1, "RGB")));
    t.Keys({kUp});
    EXPECT_TRUE(Shows(t, Put({}, 3, 1, "GBR")));
    t.Keys({kSpace});
    EXPECT_TRUE(Shows(t, {"..R...", "..B...", "..G..."}));

    t.picture.Forget();
    t.Keys({kDown, kSpace});
    EXPECT_EQ(t.picture.boxes, 0);
    t.Keys({kUp});
    EXPECT_TRUE(Shows(t, {"..G...", "..R...", "..B..."}));
}

TEST(TavrineMovesTest, SideMovesStopAtTheWallsAndAtStacksAsHighAsTheTrio) {
    Tavrine t("BYM", 5);
    t.Ticks(4);
    t.Keys({kRight});
    t.picture.Forget();
    t.Keys({kRight});
    EXPECT_EQ(t.M().XPos, 6);
    EXPECT_EQ(t.picture.boxes, 0);
    t.Keys({kLeft, kLeft, kLeft, kLeft, kLeft, kLeft});
    EXPECT_TRUE(Shows(t, Put({}, 1, 4, "BYM")));

    // The trio's bottom square is in row 4, beside a stack whose top is in row `top`.
    for (int from : {1, 3}) {
        for (int top : {3, 4, 5}) {
            Tavrine s("BYM", from, Stack(2, top));
            s.Ticks(4);
            s.Keys({from == 1 ? kRight : kLeft});
            const int to = top <= 4 ? from : 2;
            EXPECT_TRUE(Shows(s, Put(Stack(2, top), to, 4, "BYM")))
                << "from column " << from << " beside a stack from row " << top;
        }
    }
}

TEST(TavrineMovesTest, ALandedTrioSlidOffItsStackFallsAgain) {
    Tavrine t("BYM", 2, Stack(2, 16));
    t.Keys({kSpace});
    EXPECT_TRUE(t.M().EnBas);
    t.Keys({kRight});
    EXPECT_FALSE(t.M().EnBas);
    EXPECT_TRUE(Shows(t, Put(Stack(2, 16), 3, 15, "BYM")));
    t.Keys({kLeft});
    EXPECT_TRUE(t.M().EnBas);
    t.Keys({kRight});
    t.Ticks(3);
    EXPECT_TRUE(t.M().EnBas);
    EXPECT_FALSE(t.M().Perdu);
    t.Keys({kLeft});
    EXPECT_TRUE(Shows(t, Put(Stack(2, 16), 3, 18, "BYM")));
}

TEST(TavrineMovesTest, ADropOntoAHighStackKeepsWhatFitsAndTheNextTickGoesOn) {
    Tavrine t("BYM", 4, Stack(4, 3));
    t.Keys({kSpace});
    EXPECT_TRUE(t.M().EnBas);
    EXPECT_FALSE(t.M().Perdu);
    EXPECT_TRUE(Shows(t, Put(Stack(4, 3), 4, 2, "BYM")));

    // Landed by a key: the next tick settles it and brings the next trio, with no loss.
    t.Next("RGB", 1);
    t.Ticks(1);
    EXPECT_FALSE(t.M().Perdu);
    EXPECT_EQ(t.Shown().lblBlocs, " 2");
    EXPECT_TRUE(Shows(t, Put(Put(Stack(4, 3), 4, 2, "BYM"), 1, 1, "RGB")));
    t.Ticks(1);
    EXPECT_FALSE(t.game.PartieFinie());
}

TEST(TavrineMovesTest, LandingLooksAtTheRowBelowOrTheFloor) {
    Tavrine t("RGB", 2);
    EXPECT_FALSE(t.game.TestEnBas());
    t.M().Grille[2][1] = kCouleurs[1];  // black is a square, not a hole
    EXPECT_TRUE(t.game.TestEnBas());
    t.Lay({});
    t.M().YPos = 18;
    EXPECT_TRUE(t.game.TestEnBas());
}

TEST(TavrineKeysTest, NoKeyActsBeforeAGameOrAfterGivingUp) {
    Tavrine t;
    for (int game = 0; game < 2; ++game) {
        const TavrinesModule before = t.game.Module();
        t.Keys({kLeft, kUp, kRight, kDown, kSpace, kQ});
        const auto& m = t.M();
        EXPECT_EQ(t.picture.boxes, 0) << "game " << game;
        EXPECT_EQ(std::tie(m.Grille, m.Bloc, m.XPos, m.YPos, m.Perdu),
                  std::tie(before.Grille, before.Bloc, before.XPos, before.YPos, before.Perdu));

        t.NewGame("RGB", 3);
        t.Ticks(2);
        t.Keys({'A', kQ});
        ASSERT_TRUE(t.M().Perdu);
        t.picture.Forget();
    }
}

// A tick count that never moves while the wait sleeps, as a stuck counter would.
struct FrozenClock final : Clock {
    double SecondsSinceMidnight() const override { return 0; }
    std::uint32_t TickCount() const override { return 1234; }
    void Sleep(std::uint32_t milliseconds) const override { slept += milliseconds; }
    mutable std::uint32_t slept = 0;
};

TEST(TavrineWaitTest, EndsJustAfterTwentyMillisecondsWhateverTheTickCountDoes) {
    for (std::uint32_t start : {0u, 5000u, 0xFFFFFFF0u}) {
        Tavrine t;
        t.clock.ticks = start;
        t.game.Attendre();
        EXPECT_GT(t.clock.slept, 20u) << start;
        EXPECT_LE(t.clock.slept, 25u) << start;
    }
    FrozenClock frozen;
    ScriptedRandom random;
    MemorySettingsStore settings;
    const TavrinesGame game(random, frozen, settings);
    game.Attendre();
    EXPECT_GT(frozen.slept, 20u);
    EXPECT_LE(frozen.slept, 25u);
}

// Each pass shows its removed squares (C) 8 times in cyan then emptied, every picture held
// by one wait of just over 20 ms.
void ExpectBlinks(const Tavrine& t, const std::vector<Board>& passes) {
    const auto& shown = t.picture.shown;
    ASSERT_EQ(shown.size(), 16 * passes.size());
    for (std::size_t i = 0; i < shown.size(); ++i) {
        Board want = Full(passes[i / 16]);
        for (auto& row : want) std::replace(row.begin(), row.end(), 'C', i % 2 ? '.' : 'C');
        EXPECT_EQ(shown[i].first, want) << "phase " << i;
        const std::uint32_t next = i + 1 < shown.size() ? shown[i + 1].second : t.clock.slept;
        EXPECT_GT(next - shown[i].second, 20u) << "phase " << i;
        EXPECT_LT(next - shown[i].second, 40u) << "phase " << i;
    }
}

TEST(TavrineLinesTest, NoLineLeavesTheWellAsItWas) {
    Tavrine t("RGB", 3);
    const Board well = {"K.....", "RR.KK.", "GKRRGK"};
    t.Lay(well);
    const unsigned starts = t.Shown().tmrCaseStarts;
    t.game.ChercheSol();
    EXPECT_TRUE(Shows(t, well));
    EXPECT_EQ(t.picture.boxes, 0);
    EXPECT_EQ(t.clock.slept, 0u);
    EXPECT_EQ(Scores(t.Shown()), "0|0| 10|Anonyme");
    EXPECT_TRUE(t.Shown().tmrCaseEnabled);
    EXPECT_EQ(t.Shown().tmrCaseStarts, starts + 1);
}

TEST(TavrineLinesTest, AVerticalThreeBlinksAndTheSquaresAboveFall) {
    Tavrine t;
    t.Load("Zoé", "1");
    t.NewGame();
    t.Lay({".Y....", ".G....", ".R....", ".R....", ".R....", ".B...."});
    t.game.ChercheSol();
    EXPECT_TRUE(Shows(t, {".Y....", ".G....", ".B...."}));
    EXPECT_EQ(Scores(t.Shown()), " 1| 3| 1|Zoé");  // equalling the best is not beating it
    EXPECT_TRUE(t.Shown().tmrCaseEnabled);
    ExpectBlinks(t, {{".Y....", ".G....", ".C....", ".C....", ".C....", ".B...."}});
}

TEST(TavrineLinesTest, EveryDirectionScoresOnePointPerLine) {
    const struct {
        const char* what;
        Board before;
        int score, carres;
        Board after;
    } cases[] = {
        {"four across", {"RRRR.."}, 2, 4, {}},
        {"five across", {".YYYYY"}, 3, 5, {}},
        {"down and across sharing an end", {"G.....", "G.....", "GGG..."}, 2, 5, {}},
        {"diagonal ending in column 6", {".....Y", "....YB", "...YBR"}, 1, 3, {".....B", "....BR"}},
        {"diagonal ending in column 1", {"Y.....", "BY....", "RBY..."}, 1, 3, {"B.....", "RB...."}},
        {"black", {"KKK..."}, 1, 3, {}},
        {"across in row 1", Filled({"KKK..."}, "RBR...", "GYG..."), 1, 3,
         Filled({"......"}, "RBR...", "GYG...")},
        {"down from row 1", Filled({"M.....", "M.....", "M....."}, "R.....", "G....."), 1, 3,
         Filled({"......", "......", "......"}, "R.....", "G.....")},
    };
    for (const auto& k : cases) {
        Tavrine t("RGB", 3, k.before);
        t.game.ChercheSol();
        EXPECT_EQ(t.M().Score, k.score) << k.what;
        EXPECT_EQ(t.M().Carres, k.carres) << k.what;
        EXPECT_TRUE(Shows(t, k.after)) << k.what;
        EXPECT_EQ(t.picture.shown.size(), 16u) << k.what;
    }
}

TEST(TavrineLinesTest, AChainScoresItsSecondPassAndTheBestShownFollows) {
    Tavrine t;
    t.Load("Zoé", "1");
    t.NewGame();
    t.Lay({".RR...", "RBBB.."});
    t.game.ChercheSol();
    EXPECT_TRUE(Shows(t, {}));
    ExpectBlinks(t, {{".RR...", "RCCC.."}, {"CCC..."}});
    EXPECT_EQ(Scores(t.Shown()), " 2| 6| 2|???");
    EXPECT_EQ(t.M().Meilleur, 1);
}

TEST(TavrineTimerTest, ATrioLandedByTheTickAboveRowThreeLosesOnTheNextTick) {
    // Beside a stack from row 2, 3 or 4, the trio lands at YPos 1, 2 or 3.
    for (int top : {2, 3, 4}) {
        Tavrine t("BYM", 2, Stack(2, top));
        t.Ticks(top - 1);
        ASSERT_TRUE(t.M().EnBas) << "top " << top;
        EXPECT_EQ(t.M().Perdu, top < 4) << "top " << top;
        const Grid well = t.M().Grille;
        t.picture.Forget();
        t.Next("RGB", 5);
        t.Ticks(1);
        EXPECT_EQ(t.game.PartieFinie(), top < 4) << "top " << top;
        if (top == 4) continue;
        EXPECT_EQ(t.picture.boxes, 1);
        EXPECT_EQ(Drawn(t.picture.cells), Full({}));
        EXPECT_EQ(t.M().Grille, well);
        EXPECT_TRUE(t.Shown().mnuVitesseEnabled);
        EXPECT_FALSE(t.Shown().tmrCaseEnabled);
    }
}

TEST(TavrineBestTest, OnlyABetterScoreAsksForTheNameThenStoredTrimmed) {
    const struct {
        int score;
        const char* answer;
        const char* name;
    } games[] = {{10, "", "Anonyme"},
                 {11, "  Zoé Martin  ", "Zoé Martin"},
                 {11, "   ", "Anonyme"},
                 {11, "", "Anonyme"}};
    for (const auto& g : games) {
        Tavrine t("RGB", 3);  // nothing stored: the best is 10
        t.M().Score = g.score;
        t.Keys({kQ});
        t.Ticks(1);
        ASSERT_TRUE(t.game.PartieFinie());
        ASSERT_EQ(t.game.NomDemande(), g.score > 10) << g.score;
        if (g.score > 10) {
            EXPECT_TRUE(t.game.NommeMeilleur(g.answer));
        }
        EXPECT_FALSE(t.game.NomDemande());
        EXPECT_EQ(t.settings.Read("Meilleur Score", "Nom", "-"), g.score > 10 ? g.name : "-");
        EXPECT_EQ(t.settings.Read("Meilleur Score", "Score", "-"), g.score > 10 ? "11" : "-");
        t.game.Form_Load();
        EXPECT_EQ(Scores(t.Shown()), std::string(g.score > 10 ? "0|0| 11|" : "0|0| 10|") + g.name);
    }
}

}  // namespace
}  // namespace mirvalde
