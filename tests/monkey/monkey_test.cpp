#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <functional>
#include <random>
#include <sstream>

#include "Fakes.h"
#include "Form1.h"
#include "WellPixels.h"
#include "frmTavrines.h"

namespace mirvalde {
namespace {

template <typename... T>
std::string Say(const T&... parts) {
    std::ostringstream out;
    (out << ... << parts);
    return out.str();
}

// Runs a step and answers the modal dialogs it opens, from inside their own event loop: no
// other event loop runs during a step. Returns how many it answered.
int Answering(const std::function<void()>& step, const std::function<void(QWidget*)>& answer) {
    int opened = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (dialog && dialog->isVisible()) ++opened, answer(dialog);
    });
    timer.start(0);
    step();
    return opened;
}

// The monkey's draws, from a seed that a failure tells, with the step, so that it can be replayed.
class Monkey {
  public:
    explicit Monkey(unsigned seed) : engine_(seed) {}
    // Every run plays the same seeds. MIRVALDE_MONKEY_SEED=n replays one, and
    // MIRVALDE_MONKEY_STEPS=n plays longer, or stops where a failure was seen.
    template <typename Player>
    static void Play(int steps) {
        std::vector<unsigned> seeds{1, 2, 3, 4, 5};
        if (const char* seed = std::getenv("MIRVALDE_MONKEY_SEED"))
            seeds = {unsigned(std::stoul(seed))};
        if (const char* length = std::getenv("MIRVALDE_MONKEY_STEPS")) steps = std::atoi(length);
        for (const unsigned seed : seeds) {
            Player monkey(seed);
            std::string broken = monkey.Load();
            while (broken.empty() && !monkey.done && monkey.step < steps) {
                if ((broken = monkey.Step()).empty()) ++monkey.step;
            }
            if (broken.empty()) continue;
            FAIL() << broken << "\nat step " << monkey.step << " of seed " << seed
                   << "; replay with MIRVALDE_MONKEY_SEED=" << seed
                   << " MIRVALDE_MONKEY_STEPS=" << monkey.step + 1;
        }
    }

  protected:
    int Pick(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
    QString Text(const char* alphabet, int longest) {
        const QString letters = QString::fromUtf8(alphabet);
        QString text;
        for (int n = Pick(longest + 1); n > 0; --n) text += letters[Pick(letters.size())];
        return text;
    }
    // A key goes where a player's key goes: to the widget with the focus.
    void Press(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window, key, modifiers);
    }

    int step = 0;
    bool done = false;  // nothing left to play

  private:
    std::mt19937 engine_;
};

// The falling-blocks window under random keys, menus and timer ticks, one game after another
// as the program plays them: the window closes at a game's end and a new one loads.
class TavrineMonkey : public Monkey {
  public:
    explicit TavrineMonkey(unsigned seed) : Monkey(seed) {
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
            keyed ? Press(window_, Qt::Key_F2)
                  : window_->findChild<QAction*>("mnuNouveau")->trigger();
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
            Press(window_, key, Pick(10) ? Qt::NoModifier : Qt::ShiftModifier);
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

  private:
    // The timer's tick, sent by hand. A lost game ends on it, asking a name for a new best.
    std::string Tick() {
        const TavrinesModule& m = game_.Module();
        const bool lost = m.Perdu, named = lost && m.Score > best_;
        const int asked = Answering(
            [this] {
                QMetaObject::invokeMethod(const_cast<QTimer*>(&window_->Timer()), "timeout");
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            },
            [this](QWidget* dialog) { AnswerName(dialog); });
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
        auto* edit = dialog->findChild<QLineEdit*>();
        const int how = edit ? Pick(4) : 3;
        if (how < 2) QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        if (how < 2) QTest::keyClicks(edit, Text("aqzQ -", 8));
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

// The guessing window under random typing, pasting, keys, clicks and levels. The monkey keeps
// its own count of the proposals, from the box's text at each press of "Go!", and holds the
// window to it up to the tenth number found, which hands over to the other game.
class GuessMonkey : public Monkey {
  public:
    explicit GuessMonkey(unsigned seed) : Monkey(seed) { clock_.seconds = seed; }
    ~GuessMonkey() { delete window_; }

    std::string Load() {
        window_ = new Form1(game_);
        // A proposal: the box's text as "Go!" goes down, against the number drawn.
        QObject::connect(Button("Btgo"), &QPushButton::pressed, [this] {
            const QString text = Box()->text();
            coup_ = ++goes_;
            if (text.toStdString().find_first_of("0123456789") == std::string::npos) {
                ++emptyGoes_;  // answered by a message
            } else if (QString(text).replace(',', '.').toDouble() != game_.Module().Nombre) {
                ++missed_;
            } else {
                ++found_;
                average_ = (2 * (found_ + missed_) + found_) / (2 * found_);  // rounded
            }
        });
        // Giving up misses the number, and shows the numbers played in all.
        QObject::connect(Button("CmdSolution"), &QPushButton::clicked,
                         [this] { coup_ = found_ + ++missed_; });
        QObject::connect(Button("btEncore"), &QPushButton::clicked, [this] { goes_ = coup_ = 0; });
        QObject::connect(Button("Btquitter"), &QPushButton::clicked, [this] { quitted_ = true; });
        QObject::connect(window_, &Form1::tenthNumberFound, [this] { ++handovers_; });
        window_->Form_Load();
        window_->show();
        return {};
    }

    std::string Step() {
        // As a desktop does, the window is active again once a message closes.
        if (QApplication::activeWindow() != window_) window_->activateWindow();
        if (!QTest::qWaitForWindowActive(window_)) return "the window stays inactive";
        clock_.seconds += 1.25;  // each round draws another number
        messages_ +=
            Answering([this] { Act(); },
                      [this](QWidget* message) {
                          QTest::keyClick(message, Pick(2) ? Qt::Key_Return : Qt::Key_Escape);
                      });
        return Check();
    }

  private:
    QPushButton* Button(const char* name) const {
        return qobject_cast<QPushButton*>(window_->Control(name));
    }
    QLineEdit* Box() const { return qobject_cast<QLineEdit*>(window_->Control("Boxsaisie")); }
    std::string Caption(const char* name) const {
        return qobject_cast<QLabel*>(window_->Control(name))->text().toStdString();
    }

    void Act() {
        QWidget* focus = QApplication::focusWidget() ? QApplication::focusWidget() : window_;
        const int roll = Pick(100);
        if (focus == Button("Btquitter") || roll < 4) {
            // "Quitter" would unload the window: the monkey steps off it rather than press it.
            Press(window_, Pick(2) ? Qt::Key_Tab : Qt::Key_Backtab);
        } else if (roll < 30) {
            QTest::keyClicks(focus, Text("0123456789,.0123456789a -", 3));
        } else if (roll < 40) {
            // The number drawn, or one near it, typed whole in the box and proposed.
            const Form1Module& m = game_.Module();
            const double off = (roll < 33 ? 0 : Pick(5) - 2) * (m.Niveau == 4 ? 0.01 : 1);
            QString text = QString::number(m.Nombre + off, 'f', m.Niveau == 4 ? 2 : 0);
            if (Pick(2)) text.replace('.', ',');
            QTest::mouseClick(Box(), Qt::LeftButton);
            QTest::keyClick(Box(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(Box(), text);
            QTest::keyClick(Box(), Qt::Key_Return);
        } else if (roll < 60) {
            static constexpr Qt::Key kKeys[] = {Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Return,
                                                Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Left,
                                                Qt::Key_Home,   Qt::Key_End,       Qt::Key_Space};
            Press(window_, kKeys[Pick(std::size(kKeys))]);
        } else if (roll < 88) {
            static constexpr const char* kTargets[] = {"Btgo",       "Btgo",       "CmdSolution",
                                                       "btEncore",   "Option1(0)", "Option1(1)",
                                                       "Option1(2)", "Option1(3)", "Option1(4)"};
            QWidget* target = window_->Control(kTargets[Pick(std::size(kTargets))]);
            // A hidden button cannot be clicked; a disabled one ignores the mouse.
            if (target->isVisible()) QTest::mouseClick(target, Qt::LeftButton);
        } else if (const QString text = Text("0123456789,.é€x 5", 4); roll < 95) {
            QInputMethodEvent commit;
            commit.setCommitString(text);
            QApplication::sendEvent(focus, &commit);
        } else {
            QApplication::clipboard()->setText(text);
            QTest::keyClick(focus, Qt::Key_V, Qt::ControlModifier);
        }
    }

    std::string Check() {
        if (quitted_) return "Quitter was pressed";
        const Form1Module& m = game_.Module();
        // Goes, found, missed and messages, then the labels: found, missed, goes and average.
        const std::string shown = Say(m.NbCoups, '|', m.NbTrouves, '|', m.NbRates, '|', messages_,
                                      '|', Caption("Label3(0)"), '|', Caption("Label3(1)"), '|',
                                      Caption("Coup"), '|', Caption("Label4"));
        const std::string counted =
            Say(goes_, '|', found_, '|', missed_, '|', emptyGoes_, '|', found_, '|', missed_, '|',
                coup_ < 0 ? Caption("Coup") : Say("Nombre de coups joués : ", coup_), '|',
                found_ ? Say("Tu trouves en ", average_, " fois, en moyenne.") : Caption("Label4"));
        if (shown != counted) return "the window shows " + shown + ", not " + counted;
        if (handovers_ != (found_ == 10 ? 1 : 0)) return Say(handovers_, " handovers");
        done = found_ == 10;  // the other game comes next
        return {};
    }

    testing::FakeClock clock_;
    MersenneRandom random_;
    testing::RecordingSound sound_;
    GuessGame game_{random_, clock_, sound_, {"found.wav", "missed.wav"}, ','};
    QPointer<Form1> window_;
    bool quitted_ = false;
    int goes_ = 0, emptyGoes_ = 0, messages_ = 0, found_ = 0, missed_ = 0, handovers_ = 0;
    int coup_ = -1, average_ = 0;  // what "Coup" and the average show, once they show one
};

TEST(MonkeyTest, TavrineKeepsItsWellAndItsCountsRight) {
    Monkey::Play<TavrineMonkey>(12000);
}

TEST(MonkeyTest, TheGuessingWindowCountsWhatWasProposed) {
    Monkey::Play<GuessMonkey>(2500);
}

}  // namespace
}  // namespace mirvalde
