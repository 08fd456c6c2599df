#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <algorithm>
#include <random>
#include <sstream>

#include "Fakes.h"
#include "WellPixels.h"
#include "frmTavrines.h"

namespace mirvalde {
namespace {

using namespace std::string_literals;

template <typename... T>
std::string Say(const T&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
}

// The falling-blocks window under random keys, menus and timer ticks, one game after another
// as the program plays them: the window closes at a game's end and a new one loads.
class TavrineMonkey {
  public:
    explicit TavrineMonkey(unsigned seed) : engine_(seed) {
        clock_.seconds = seed;
        settings_.Write("Meilleur Score", "Score", "0");  // a best that games beat now and then
    }
    ~TavrineMonkey() { delete window_; }

    std::string Load() {
        clock_.seconds += 61.5;  // each game draws its own trios
        window_ = new frmTavrines(game_);
        QObject::connect(window_, &frmTavrines::gameEnded, window_, [this] { window_->close(); });
        window_->Form_Load();
        window_->show();
        window_->activateWindow();
        playing_ = false;
        return QTest::qWaitForWindowActive(window_) ? "" : "the window never became active";
    }

    std::string Step() {
        const TavrinesModule& m = game_.Module();
        before_ = {m.Blocs, m.Carres, m.Score, cells_, settled_, false};
        const int roll = Pick(100);
        const bool running = window_->Timer().isActive();
        if (running && roll < 30) {
            if (std::string broken = Tick(); !broken.empty()) return broken;
        } else if (!running && roll < 30) {
            window_->findChild<QAction*>(QStringLiteral("mnuSpeed(%1)").arg(1 + Pick(5)))
                ->trigger();
        } else if (running ? roll == 30 : roll < 70) {
            // Alt then Enter may have opened a menu, which takes every key, F2 too.
            const bool keyed = Pick(2), menuOpen = QApplication::activePopupWidget();
            keyed ? Press(Qt::Key_F2) : window_->findChild<QAction*>("mnuNouveau")->trigger();
            before_.restart = !(keyed && menuOpen);  // a new game: everything counted afresh
            playing_ = playing_ || before_.restart;
        } else {
            static constexpr Qt::Key kKeys[] = {
                Qt::Key_Left,  Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Down,
                Qt::Key_Space, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab,      Qt::Key_Alt,
                Qt::Key_F1,    Qt::Key_Home,   Qt::Key_0,      Qt::Key_Backspace};
            const int kind = Pick(100);
            const Qt::Key key = kind < 90   ? kKeys[Pick(6)]
                                : kind < 96 ? static_cast<Qt::Key>(Qt::Key_A + Pick(26))
                                            : kKeys[6 + Pick(8)];
            Press(key, Pick(10) ? Qt::NoModifier : Qt::ShiftModifier);
        }
        std::string broken = Check();
        // A paused game hides its well and stands still. Reading the pixels back is slow: now
        // and then is enough.
        if (broken.empty() && game_.EnPause() && window_->Timer().isActive())
            broken = "a paused game ticks";
        if (broken.empty() && playing_ && !game_.EnPause() && step % 16 == 0)
            broken = testing::WellMismatch(*window_->Well(), game_.Module());
        return broken;
    }

    int step = 0;
    static inline int names = 0;  // names asked for a new best, over every seed

  private:
    int Pick(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
    // A key goes where a player's key goes: to the widget with the focus.
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window_.data(), key, modifiers);
    }

    // The timer's tick, sent by hand. A lost game ends on it, asking a name for a new best.
    std::string Tick() {
        const TavrinesModule& m = game_.Module();
        const bool lost = m.Perdu, named = lost && m.Score > best_;
        // The name is asked from inside the dialog's own event loop: no other runs meanwhile.
        int asked = 0;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog && dialog->isVisible()) ++asked, AnswerName(dialog);
        });
        answer.start(0);
        QMetaObject::invokeMethod(const_cast<QTimer*>(&window_->Timer()), "timeout");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (window_.isNull() != lost) return lost ? "a lost game went on" : "a game ended unlost";
        if (asked != (named ? 1 : 0))
            return Say("a name was asked ", asked, " times for ", m.Score, " against ", best_);
        if (named && (settings_.Read("Meilleur Score", "Nom", "") != bestName_ ||
                      settings_.ReadNumber("Meilleur Score", "Score", 0) != m.Score))
            return Say("the best stored is not ", m.Score, " by ", bestName_);
        if (named) best_ = m.Score;
        return lost ? Load() : "";
    }

    // The name typed, or the one proposed, or none at all with Escape: "Anonyme" then.
    void AnswerName(QWidget* dialog) {
        ++names;
        auto* edit = dialog->findChild<QLineEdit*>();
        const int how = edit ? Pick(4) : 3;
        if (how < 2) QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        for (int n = how < 2 ? Pick(9) : 0; n > 0; --n)
            QTest::keyClicks(edit, "aqzQ -"s.substr(Pick(6), 1).c_str());
        bestName_ = how == 3 ? "" : edit->text().trimmed().toStdString();
        if (bestName_.empty()) bestName_ = "Anonyme";
        QTest::keyClick(dialog, how == 3 ? Qt::Key_Escape : Qt::Key_Return);
    }

    std::string Check() {
        const TavrinesModule& m = game_.Module();
        started_ = started_ || playing_;  // before any game the well is not even empty
        if (!started_) return {};
        if (before_.restart) before_ = {0, 0, 0, 0, 0, true};
        // Stacks without holes on the bottom, the falling trio apart, and no line of three.
        const auto& g = m.Grille;
        const auto trio = [&](int c, int r) {
            return c == m.XPos && r <= m.YPos && r > m.YPos - 3;
        };
        const auto settled = [&](int c, int r) {
            const bool inside = c >= 1 && c <= kColonnes && r >= 1 && r <= kLignes;
            return inside && !trio(c, r) ? g[c][r] : kEmpty;
        };
        cells_ = settled_ = 0;
        for (int c = 1; c <= kColonnes; ++c) {
            for (int r = 1; r <= kLignes; ++r) {
                const Couleur k = settled(c, r);
                cells_ += g[c][r] != kEmpty;
                settled_ += k != kEmpty;
                if (trio(c, r)
                        ? g[c][r] != m.Bloc[m.YPos + 1 - r]
                        : k != kEmpty && std::count(kCouleurs.begin(), kCouleurs.end(), k) == 0)
                    return Say("column ", c, ", row ", r, " holds ", std::hex, g[c][r]);
                if (r > 1 && k == kEmpty && settled(c, r - 1) != kEmpty)
                    return Say("column ", c, " has a hole on row ", r);
                for (const auto& [dc, dr] : {std::pair{1, 0}, {0, 1}, {1, 1}, {-1, 1}}) {
                    if (k != kEmpty && settled(c + dc, r + dr) == k &&
                        settled(c + 2 * dc, r + 2 * dr) == k)
                        return Say("a line of three stays from column ", c, ", row ", r);
                }
            }
        }
        // The squares counted as removed are those that left the well as the trio landed.
        const int trios = m.Blocs - before_.blocs;
        if (trios < 0 || trios > 1) return Say(trios, " trios in one step");
        const int removed = m.Carres - before_.carres, lines = m.Score - before_.score;
        const bool landed = trios == 1 && !before_.restart;
        const int gone = landed ? before_.cells + 1 - cells_ : 0;
        // The new trio's bottom square shows on row 1, over the top of a full column, which
        // loses the game.
        const bool covered = landed && g[m.XPos][2] != kEmpty;
        if ((removed != gone && !(covered && removed == gone - 1)) ||
            (lines > 0 ? removed < 3 || removed > 3 * lines : removed != 0))
            return Say(removed, " squares removed for ", lines, " lines, but ", gone, " left");
        // Until a trio lands, the squares settled in the well stay as they are.
        if (!landed && !before_.restart && settled_ != before_.settled)
            return Say("the settled squares went from ", before_.settled, " to ", settled_);
        return {};
    }

    static constexpr Couleur kEmpty = COULEUR_VIDE;
    std::mt19937 engine_;
    testing::FakeClock clock_;
    MersenneRandom random_;
    MemorySettingsStore settings_;
    TavrinesGame game_{random_, clock_, settings_};
    QPointer<frmTavrines> window_;
    struct {
        int blocs, carres, score, cells, settled;
        bool restart;  // the step started a new game
    } before_{};
    bool started_ = false, playing_ = false;  // a game in the well, in the window on screen
    int best_ = 0, cells_ = 0, settled_ = 0;  // squares in the well, and those not falling
    std::string bestName_ = "Anonyme";
};

// Every run plays the same seeds, and a failure tells its seed and step: MIRVALDE_MONKEY_SEED=n
// replays one, and MIRVALDE_MONKEY_STEPS=n plays longer, or stops where a failure was seen.
TEST(MonkeyTest, TavrineKeepsItsWellAndItsCountsRight) {
    std::vector<unsigned> seeds{1, 2, 3, 4, 5};
    if (const char* seed = std::getenv("MIRVALDE_MONKEY_SEED"))
        seeds = {unsigned(std::stoul(seed))};
    const char* length = std::getenv("MIRVALDE_MONKEY_STEPS");
    const int steps = length ? std::atoi(length) : 12000;
    for (const unsigned seed : seeds) {
        TavrineMonkey monkey(seed);
        std::string broken = monkey.Load();
        while (broken.empty() && monkey.step < steps) {
            if ((broken = monkey.Step()).empty()) ++monkey.step;
        }
        EXPECT_EQ(broken, "") << "at step " << monkey.step << " of seed " << seed
                              << "; replay with MIRVALDE_MONKEY_SEED=" << seed
                              << " MIRVALDE_MONKEY_STEPS=" << monkey.step + 1;
    }
    // A whole run, not a replay, beats the best now and then, and so has names to check.
    EXPECT_TRUE(seeds.size() == 1 || TavrineMonkey::names > 0) << "no name was ever asked";
}

}  // namespace
}  // namespace mirvalde
