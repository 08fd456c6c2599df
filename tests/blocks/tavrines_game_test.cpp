#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "Fakes.h"
#include "SettingsStore.h"
#include "TavrinesGame.h"

namespace mirvalde {
namespace {

using Grid = decltype(TavrinesModule::Grille);
constexpr std::string_view kLetters = "RKGBYM", kMarks = "RKGBYMC.", kKeys = "<^>v_QAPp";
constexpr int kKeyCodes[] = {37, 38, 39, 40, 32, 81, 65, 80, 19};

Couleur ColourOf(char letter) {
    if (letter == '.') return COULEUR_VIDE;
    return letter == 'C' ? kCouleurClignote : kCouleurs[kLetters.find(toupper(letter))];
}

// A well as text, top row first, rows apart by '/': '.' empty, the colours by their initials
// (K black), 'C' the blink, '?' anything else. Fewer than 18 rows are the bottom of the well.
std::string Full(std::string well) {
    if (well.empty()) well = "......";
    while (well.size() < kLignes * 7 - 1) well.insert(0, "....../");
    return well;
}

char& At(std::string& well, int colonne, int ligne) {
    return well[(ligne - 1) * 7 + colonne - 1];
}

std::string Drawn(const Grid& grid) {
    std::string well = Full("");
    std::replace(well.begin(), well.end(), '.', '?');
    for (char m : kMarks)
        for (int c = 1; c <= kColonnes; ++c)
            for (int r = 1; r <= kLignes; ++r)
                if (grid[c][r] == ColourOf(m)) At(well, c, r) = m;
    return well;
}

// A column stacked from row `top` to the floor, black on top, then red and green: no line.
std::string Stack(int column, int top) {
    std::string well = Full("");
    for (int r = top; r <= kLignes; ++r) At(well, column, r) = r == top ? 'K' : "RG"[r % 2];
    return well;
}

// The well with a trio (bottom, middle, top) whose bottom square is in row `bottom`.
std::string Put(const std::string& text, int column, int bottom, std::string_view trio) {
    std::string well = Full(text);
    for (int i = 0; i < 3 && bottom - i >= 1; ++i) At(well, column, bottom - i) = trio[i];
    return well;
}

// The rows given, then odd and even rows in turn down to the floor.
std::string Filled(std::string well, const std::string& odd, const std::string& even) {
    for (auto r = well.size() / 7 + 2; r <= kLignes; ++r) well += '/' + (r % 2 ? odd : even);
    return well;
}

// The window's rules with every draw scripted, loaded and painting into a well recorded as
// the window shows it (a cell never painted is black), with each picture a Refresh shows and
// the time slept then.
struct Tavrine final : WellPicture {
    Tavrine() : game(random, clock, settings) {
        game.SetPicture(this);
        game.Form_Load();
    }
    // A game under way: its first trio above the well, over squares laid by hand.
    Tavrine(const std::string& trio, int column, const std::string& well = "") : Tavrine() {
        NewGame(trio, column);
        Lay(well);
    }
    void FillBox(int x1, int y1, int x2, int y2, Couleur couleur) override {
        ++boxes;
        const auto cell = [](int twips) { return twips % kCellTwips ? -99 : twips / kCellTwips; };
        const int c1 = cell(x1), c2 = cell(x2), r1 = cell(y1), r2 = cell(y2);
        ASSERT_TRUE(0 <= c1 && c1 < c2 && c2 <= kColonnes && 0 <= r1 && r1 < r2 && r2 <= kLignes)
            << "box " << x1 << ',' << y1 << ' ' << x2 << ',' << y2;
        for (int c = c1 + 1; c <= c2; ++c)
            for (int r = r1 + 1; r <= r2; ++r) cells[c][r] = couleur;
    }
    void Refresh() override { shown.push_back({Drawn(cells), clock.slept}); }
    void ShowPaused(bool on) override { paused = on; }
    void ShowSymbols(bool on) override { symbols = on; }

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
        boxes = 0;
    }
    // Keys and ticks in turn: the arrows < ^ > v, _ the space bar, Q, A, P, p the Pause key,
    // '.' a tick.
    void Play(std::string_view moves) {
        for (char m : moves)
            m == '.' ? game.tmrCase_Timer() : game.Form_KeyDown(kKeyCodes[kKeys.find(m)]);
    }
    // Squares laid by hand, shown as if they had been painted.
    void Lay(const std::string& text) {
        std::string well = Full(text);
        for (int c = 1; c <= kColonnes; ++c)
            for (int r = 1; r <= kLignes; ++r)
                M().Grille[c][r] = cells[c][r] = ColourOf(At(well, c, r));
    }
    TavrinesModule& M() { return game.ModuleForTest(); }
    const TavrinesControls& Shown() const { return game.Controls(); }

    testing::ScriptedRandom random;
    testing::FakeClock clock;
    MemorySettingsStore settings;
    TavrinesGame game;
    Grid cells{};
    int boxes = 0;
    bool paused = false, symbols = false;
    std::vector<std::pair<std::string, std::uint32_t>> shown;
};

// The well and its picture both hold `text`; a failure prints the three side by side.
::testing::AssertionResult Shows(Tavrine& t, const std::string& text) {
    const std::string want = Full(text), well = Drawn(t.M().Grille), seen = Drawn(t.cells);
    if (well == want && seen == want) return ::testing::AssertionSuccess();
    auto failure = ::testing::AssertionFailure() << "\nwanted  well    picture\n";
    for (int i = 0; i < kLignes * 7; i += 7)
        failure << want.substr(i, 6) << "  " << well.substr(i, 6) << "  " << seen.substr(i, 6)
                << '\n';
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
    fresh.Load("Zoé", "douze");  // not a number: the best by default
    EXPECT_EQ(Scores(fresh.Shown()), "0|0| 10|Zoé");
    fresh.Load("Zoé", "-5");  // a sign takes the place of the blank
    EXPECT_EQ(Scores(fresh.Shown()), "0|0|-5|Zoé");
}

TEST(TavrineLoadTest, NoKeyActsBeforeTheFirstGameAndTheChosenSpeedTicksTheNextOnes) {
    Tavrine t;
    t.Play("<^>v_Q");
    EXPECT_TRUE(t.boxes == 0 && t.M().YPos == 0 && !t.M().Perdu);
    EXPECT_EQ(t.Shown().tmrCaseInterval, 0);  // no tick either
    constexpr int kIntervals[] = {900, 700, 500, 300, 100};
    for (int i = 1; i <= 6; ++i) {
        const int speed = i <= 5 ? i : 3;  // a new load goes back to normal
        i <= 5 ? t.game.mnuSpeed_Click(i) : t.game.Form_Load();
        t.NewGame();
        EXPECT_EQ(t.Shown().lblVitesse, "Vitesse : " + std::to_string(speed));
        EXPECT_EQ(t.Shown().mnuSpeedChecked, speed);
        EXPECT_EQ(t.Shown().tmrCaseInterval, kIntervals[speed - 1]) << "speed " << speed;
    }
}

TEST(TavrineNewGameTest, StartsAfreshWithTheFirstTrioCountedButKeepsTheBestShown) {
    Tavrine t;
    t.Load("Zoé", "0");
    t.NewGame("BBM", 2);
    t.Lay("K...../R...../R...../R.....");
    t.game.ChercheSol();  // a line mid-game beats the best shown
    t.NewGame("KGM", 4);
    EXPECT_TRUE(Shows(t, ""));
    EXPECT_EQ(t.Shown().lblStatCouleur,
              (std::array<std::string, 6>{"0", " 1", " 1", "0", "0", " 1"}));
    EXPECT_EQ(t.Shown().lblBlocs, " 1");
    EXPECT_FALSE(t.Shown().mnuVitesseEnabled);
    EXPECT_EQ(t.M().Score + t.M().Carres, 0);
    EXPECT_EQ(Scores(t.Shown()), "0|0| 1|???");
    // The highest draw still starts the trio in column 5: the last is left free.
    t.random.Push({0, 0, 0, testing::kLargestUniform});
    t.game.mnuNouveau_Click();
    EXPECT_EQ(t.M().XPos, 5);
}

// The first trio, red, green and blue from the bottom, starts above column 3.
TEST(TavrineMovesTest, TheTrioMovesWithinTheWallsAndBesideNoStackAsHighAsItself) {
    const std::tuple<const char*, std::string, const char*, std::string, bool> cases[] = {
        // what, the well, the moves, the well then, whether the trio has landed
        {"above the well only turns", "", "<>^^^^_", Put("", 3, 18, "GBR"), true},
        {"dropped, it only turns", "", "..._v_^", Put("", 3, 18, "GBR"), true},
        {"entering", "", ".>", Put("", 4, 1, "RGB"), false},
        {"half in", "", "..<", Put("", 2, 2, "RGB"), false},
        {"to the right wall", "", ".....>>>>", Put("", 6, 5, "RGB"), false},
        {"to the left wall", "", ".....<<<<", Put("", 1, 5, "RGB"), false},
        {"beside a higher stack", Stack(4, 3), "....>", Put(Stack(4, 3), 3, 4, "RGB"), false},
        {"beside a stack as high", Stack(2, 4), "....<", Put(Stack(2, 4), 3, 4, "RGB"), false},
        {"right, over a lower stack", Stack(4, 5), "....>", Put(Stack(4, 5), 4, 4, "RGB"), true},
        {"left, over a lower stack", Stack(2, 5), "....<", Put(Stack(2, 5), 2, 4, "RGB"), true},
        {"down onto a stack, no further", Stack(3, 5), "...vv", Put(Stack(3, 5), 3, 4, "RGB"),
         true},
        {"off its stack", Stack(3, 16), "_>", Put(Stack(3, 16), 4, 15, "RGB"), false},
        {"back onto it", Stack(3, 16), "_><", Put(Stack(3, 16), 3, 15, "RGB"), true},
        {"off it to the floor", Stack(3, 16), "_>...", Put(Stack(3, 16), 4, 18, "RGB"), true},
        {"after giving up", "", "..AQ<^>v_", Put("", 3, 2, "RGB"), false},
        // Landed by a key, the trio is settled by the next tick, its lines gone, with no loss; the
        // next trio (blue, blue and blue when not scripted) comes above column 3.
        {"lined up", "RR....", "_.", Put(Put("", 3, 18, "GB."), 3, 1, "BBB"), false},
        {"settled", Stack(4, 3), ".>_..", Put(Put(Stack(4, 3), 4, 2, "RGB"), 3, 2, "BBB"), false},
    };
    for (const auto& [what, well, moves, then, landed] : cases) {
        Tavrine t("RGB", 3, well);
        t.Play(moves);
        EXPECT_TRUE(Shows(t, then)) << what << ": " << moves;
        EXPECT_EQ(t.M().EnBas, landed) << what << ": " << moves;
    }
}

// A tick count stuck while the wait sleeps must not hold the game forever.
TEST(TavrineWaitTest, EndsJustAfterTwentyMillisecondsEvenWithATickCountThatIsStuck) {
    Tavrine t;
    t.clock.frozen = true;
    t.game.Attendre();
    EXPECT_TRUE(t.clock.slept > 20 && t.clock.slept <= 25) << t.clock.slept;
}

// Each pass of the search shows its squares 8 times in cyan then emptied, each picture held by
// a wait of just over 20 ms (the tick count wraps meanwhile), and scores a point a line; the
// squares above then fall. A best equalled is not beaten; a best beaten shows at once, but is kept
// only at the game's end.
TEST(TavrineLinesTest, EveryLineOfThreeBlinksScoresAPointAndGoes) {
    const std::string odd = "RBR...", even = "GYG...";
    // The well, its squares that go in the first pass in small letters; the well then; the
    // labels; the next passes, their squares as 'C'.
    const std::tuple<std::string, std::string, const char*, std::vector<std::string>> cases[] = {
        {"K...../RR.KK./GKRRGK", "K...../RR.KK./GKRRGK", "0|0| 1|Zoé", {}},
        {"rrrr..", "", " 2| 4| 2|???", {}},
        {".yyyyy", "", " 3| 5| 3|???", {}},
        {"g...../g...../ggg...", "", " 2| 5| 2|???", {}},
        {".....y/....yB/...yBR", ".....B/....BR", " 1| 3| 1|Zoé", {}},
        {"y...../By..../RBy...", "B...../RB....", " 1| 3| 1|Zoé", {}},
        {".G..../.k..../.k..../.k..../.B....", ".G..../.B....", " 1| 3| 1|Zoé", {}},
        {".RR.../Rbbb..", "", " 2| 6| 2|???", {"CCC..."}},
        {Filled("kkk...", odd, even), Filled("......", odd, even), " 1| 3| 1|Zoé", {}},
        {Put(Stack(1, 4), 1, 3, "mmm"), Stack(1, 4), " 1| 3| 1|Zoé", {}},
    };
    for (const auto& [before, after, scores, later] : cases) {
        SCOPED_TRACE(before);
        Tavrine t;
        t.Load("Zoé", "1");
        t.NewGame();
        t.Lay(before);
        t.clock.ticks = 0xFFFFFF00u;
        const unsigned starts = t.Shown().tmrCaseStarts;
        t.game.ChercheSol();
        EXPECT_TRUE(Shows(t, after));
        EXPECT_EQ(Scores(t.Shown()), scores);
        EXPECT_EQ(t.M().Meilleur, 1);
        EXPECT_TRUE(t.Shown().tmrCaseEnabled && t.Shown().tmrCaseStarts == starts + 1);
        auto passes = later;
        if (std::ranges::any_of(before, islower)) passes.insert(passes.begin(), before);
        const auto& shown = t.shown;
        ASSERT_EQ(shown.size(), 16 * passes.size());
        for (std::size_t i = 0; i < shown.size(); ++i) {
            std::string want = Full(passes[i / 16]);
            for (char& m : want) m = islower(m) || m == 'C' ? "C."[i % 2] : m;
            EXPECT_EQ(shown[i].first, want) << "phase " << i;
            const auto held =
                (i + 1 < shown.size() ? shown[i + 1].second : t.clock.slept) - shown[i].second;
            EXPECT_TRUE(held > 20 && held <= 25) << "phase " << i << ": " << held << " ms";
        }
    }
}

TEST(TavrineTimerTest, ATrioLandedByTheTickAboveRowThreeLosesOnTheNextTick) {
    // On a stack from row 2, 3 or 4, the trio lands at YPos 1, 2 or 3.
    for (int top : {2, 3, 4}) {
        Tavrine t("BYM", 2, Stack(2, top));
        t.Play(std::string(top - 1, '.'));
        t.boxes = 0;
        t.Next("RGB", 5);
        t.Play(".");
        EXPECT_EQ(t.game.PartieFinie(), top < 4) << "top " << top;
        if (top == 4) continue;
        // The game is over: the picture is wiped in one box, the timer stops, speeds can change.
        EXPECT_EQ(t.boxes, 1);
        EXPECT_EQ(Drawn(t.cells), Full(""));
        EXPECT_TRUE(t.Shown().mnuVitesseEnabled && !t.Shown().tmrCaseEnabled);
    }
}

// P or the Pause key pauses a game under way and resumes it; a hidden window pauses it until
// P. While paused the well is hidden, the timer stopped, and no key but P acts; a new game
// starts unpaused. Before a game and once it is lost, P does nothing.
TEST(TavrinePauseTest, PausesOnlyAGameUnderWayAndHoldsEverythingButTheMenus) {
    const struct {
        const char* before;  // moves first; '*' the window hidden, 'N' a new game
        bool paused;
    } cases[] = {{"", false},    {"N..P", true},   {"N..Pp", false}, {"N.._P", true},
                 {"N..*", true}, {"N..*P", false}, {"N..**", true},  {"N..PN", false},
                 {"NQP", false}, {"NQ.P", false}};
    for (const auto& k : cases) {
        Tavrine t;
        for (const char m : std::string_view(k.before)) {
            m == 'N' ? t.NewGame() : m == '*' ? t.game.PauseByItself() : t.Play({&m, 1});
        }
        EXPECT_EQ(t.game.EnPause(), k.paused) << k.before;
        EXPECT_EQ(t.paused, k.paused) << k.before;
        const bool ended = std::string_view(k.before).find("Q.") != std::string_view::npos;
        EXPECT_EQ(t.Shown().tmrCaseEnabled, !k.paused && !ended) << k.before;
        if (!k.paused) continue;
        const TavrinesModule before = t.game.Module();
        t.Play("<^>v_Q");
        EXPECT_EQ(std::tie(t.M().Grille, t.M().XPos, t.M().Perdu),
                  std::tie(before.Grille, before.XPos, before.Perdu));
        EXPECT_EQ(t.game.DescriptionPuits(), "Partie en pause, P pour reprendre. Score : 0.");
    }
}

// Symbols on the colours, kept for the next runs as "1" or "0", and painted at once over the
// squares of a game under way.
TEST(TavrineSymbolsTest, TheChoiceIsKeptAndTheWellPaintedAgainAtOnce) {
    Tavrine t("RGB", 3, "RGB...");
    EXPECT_FALSE(t.Shown().mnuSymbolesChecked || t.symbols);
    t.boxes = 0;
    t.game.mnuSymboles_Click();
    EXPECT_TRUE(t.Shown().mnuSymbolesChecked && t.symbols);
    EXPECT_EQ(t.settings.Read("Options", "Symboles", ""), "1");
    EXPECT_EQ(t.boxes, kColonnes * kLignes);
    EXPECT_TRUE(Shows(t, "RGB..."));
    t.game.Form_Load();
    EXPECT_TRUE(t.Shown().mnuSymbolesChecked);
    t.game.mnuSymboles_Click();
    EXPECT_EQ(t.settings.Read("Options", "Symboles", ""), "0");
    t.settings.Write("Options", "Symboles", "oui");
    t.game.Form_Load();
    EXPECT_FALSE(t.Shown().mnuSymbolesChecked || t.symbols);
}

}  // namespace
}  // namespace mirvalde
