#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>
#include <random>
#include <sstream>

#include "Fakes.h"
#include "Form1.h"
#include "TavrinesDesign.h"
#include "WellBox.h"
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
        if (!dialog || !dialog->isVisible()) return;
        ++opened;
        answer(dialog);
    });
    timer.start(0);
    step();
    return opened;
}

// The monkey's draws, and the last things it did, told so that a failure can be replayed.
class Monkey {
  public:
    explicit Monkey(unsigned seed) : seed_(seed), engine_(seed) {}
    int Pick(int n) { return static_cast<int>(engine_() % static_cast<unsigned>(n)); }
    QString Text(const char* alphabet, int longest) {
        const QString letters = QString::fromUtf8(alphabet);
        QString text;
        for (int n = Pick(longest + 1); n > 0; --n) text += letters[Pick(letters.size())];
        return text;
    }
    void Did(const std::string& action) {
        done_.push_back(Say(step, ": ", action));
        if (done_.size() > 30) done_.pop_front();
    }
    // A key goes where a player's key goes: to the widget with the focus.
    void Press(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        Did("key " + QKeySequence(QKeyCombination(modifiers, key)).toString().toStdString());
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : window, key, modifiers);
    }
    // Every run plays the same seeds. MIRVALDE_MONKEY_SEED=n replays one, and
    // MIRVALDE_MONKEY_STEPS=n plays longer, or stops where a failure was seen.
    template <typename Player>
    static void Play(int steps) {
        const char* only = std::getenv("MIRVALDE_MONKEY_SEED");
        const char* length = std::getenv("MIRVALDE_MONKEY_STEPS");
        for (const unsigned seed :
             only ? std::vector{unsigned(std::stoul(only))} : std::vector{1u, 2u, 3u, 4u, 5u}) {
            Player player(seed);
            Monkey& monkey = player.monkey;
            std::string broken = player.Load();
            while (broken.empty() && !monkey.done &&
                   monkey.step < (length ? std::atoi(length) : steps)) {
                broken = player.Step();
                if (broken.empty()) ++monkey.step;
            }
            std::string replay = Say("\nat step ", monkey.step, " of seed ", seed,
                                     "; replay with MIRVALDE_MONKEY_SEED=", seed,
                                     " MIRVALDE_MONKEY_STEPS=", monkey.step + 1, "; last actions:");
            for (const std::string& action : monkey.done_) replay += "\n  " + action;
            if (!broken.empty()) FAIL() << broken << replay;
        }
    }
    int step = 0;
    bool done = false;  // nothing left to play

  private:
    unsigned seed_;
    std::mt19937 engine_;
    std::deque<std::string> done_;
};

int Code(Couleur couleur) {
    const auto* found = std::find(kCouleurs.begin(), kCouleurs.end(), couleur);
    return found == kCouleurs.end() ? 0 : static_cast<int>(found - kCouleurs.begin()) + 1;
}

// The falling-blocks window under random keys, menus and timer ticks, one game after another
// as the program plays them: the window closes at a game's end and a new one loads.
class TavrineMonkey {
  public:
    explicit TavrineMonkey(unsigned seed) : monkey(seed) {
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
        before_ = {m.Blocs, m.Carres, m.Score, cells_, settled_, m.StatCouleur, false};
        const int roll = monkey.Pick(100);
        const bool running = window_->Timer().isActive();
        if (running && roll < 30) {
            if (std::string broken = Tick(); !broken.empty()) return broken;
        } else if (!running && roll < 30) {
            const int speed = 1 + monkey.Pick(5);
            monkey.Did(Say("menu Vitesse ", speed));
            window_->findChild<QAction*>(QStringLiteral("mnuSpeed(%1)").arg(speed))->trigger();
        } else if (running ? roll == 30 : roll < 70) {
            // Alt then Enter may have opened a menu, which takes every key, F2 too.
            const bool keyed = monkey.Pick(2), menuOpen = QApplication::activePopupWidget();
            if (keyed) {
                monkey.Press(window_, Qt::Key_F2);
            } else {
                monkey.Did("menu Nouveau");
                window_->findChild<QAction*>("mnuNouveau")->trigger();
            }
            before_.restart = !(keyed && menuOpen);
            playing_ = playing_ || before_.restart;
        } else {
            static constexpr Qt::Key kKeys[] = {
                Qt::Key_Left,  Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,     Qt::Key_Down,
                Qt::Key_Space, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Tab,      Qt::Key_Alt,
                Qt::Key_F1,    Qt::Key_Home,   Qt::Key_0,      Qt::Key_Backspace};
            const int kind = monkey.Pick(100);
            const Qt::Key key = kind < 90   ? kKeys[monkey.Pick(6)]
                                : kind < 96 ? static_cast<Qt::Key>(Qt::Key_A + monkey.Pick(26))
                                            : kKeys[6 + monkey.Pick(8)];
            monkey.Press(window_, key, monkey.Pick(10) ? Qt::NoModifier : Qt::ShiftModifier);
        }
        std::string broken = Check();
        // Reading the pixels back is slow: now and then is enough.
        if (broken.empty() && playing_ && monkey.step % 16 == 0) broken = WellShown();
        return broken;
    }

    Monkey monkey;

  private:
    // The timer's tick, sent by hand. A lost game ends on it, asking a name for a new best.
    std::string Tick() {
        const TavrinesModule& m = game_.Module();
        const bool lost = m.Perdu, named = lost && m.Score > best_;
        monkey.Did("tick");
        const int asked = Answering(
            [this] {
                auto& timer = const_cast<QTimer&>(window_->Timer());
                QTimerEvent event(timer.timerId());
                QCoreApplication::sendEvent(&timer, &event);
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            },
            [this](QWidget* dialog) { AnswerName(dialog); });
        if (window_.isNull() != lost) return lost ? "a lost game went on" : "a game ended unlost";
        if (asked != (named ? 1 : 0)) {
            return Say("a name was asked ", asked, " times for a score of ", m.Score,
                       " against a best of ", best_);
        }
        if (named && (settings_.Read("Meilleur Score", "Nom", "") != bestName_ ||
                      settings_.ReadNumber("Meilleur Score", "Score", 0) != m.Score)) {
            return Say("the best stored is not ", m.Score, " by ", bestName_);
        }
        if (named) best_ = m.Score;
        return lost ? Load() : "";
    }

    // The name typed, or the one proposed, or none at all with Escape: "Anonyme" then.
    void AnswerName(QWidget* dialog) {
        auto* edit = dialog->findChild<QLineEdit*>();
        const int how = edit ? monkey.Pick(4) : 3;
        if (how < 2) QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        if (how < 2) QTest::keyClicks(edit, monkey.Text("aqzQ -", 8));
        bestName_ = how == 3 ? "" : edit->text().trimmed().toStdString();
        if (bestName_.empty()) bestName_ = "Anonyme";
        monkey.Did(how == 3 ? "Escape on the name box" : "Enter on '" + bestName_ + "'");
        QTest::keyClick(dialog, how == 3 ? Qt::Key_Escape : Qt::Key_Return);
    }

    std::string Check() {
        const TavrinesModule& m = game_.Module();
        started_ = started_ || playing_;  // before any game the well is not even empty
        if (!started_) return {};
        // Stacks without holes on the bottom, the falling trio apart, and no line of three.
        const auto& g = m.Grille;
        const auto trio = [&](int c, int r) {
            return c == m.XPos && r <= m.YPos && r > m.YPos - 3;
        };
        const auto settled = [&](int c, int r) {
            const bool inside = c >= 1 && c <= kColonnes && r >= 1 && r <= kLignes;
            return inside && !trio(c, r) ? g[c][r] : COULEUR_VIDE;
        };
        static constexpr int kLines[][2] = {{1, 0}, {0, 1}, {1, 1}, {-1, 1}};
        cells_ = settled_ = 0;
        for (int c = 1; c <= kColonnes; ++c) {
            for (int r = 1; r <= kLignes; ++r) {
                const Couleur k = settled(c, r);
                cells_ += g[c][r] != COULEUR_VIDE;
                settled_ += k != COULEUR_VIDE;
                if (trio(c, r) ? g[c][r] != m.Bloc[m.YPos + 1 - r]
                               : k != COULEUR_VIDE && !Code(k)) {
                    return Say("column ", c, ", row ", r, " holds ", std::hex, g[c][r]);
                }
                if (r > 1 && k == COULEUR_VIDE && settled(c, r - 1) != COULEUR_VIDE) {
                    return Say("column ", c, " has a hole on row ", r);
                }
                for (const auto [dc, dr] : kLines) {
                    if (k != COULEUR_VIDE && settled(c + dc, r + dr) == k &&
                        settled(c + 2 * dc, r + 2 * dr) == k) {
                        return Say("a line of three stays from column ", c, ", row ", r);
                    }
                }
            }
        }

        // Three colours a trio, and the squares counted as removed are those that left the well.
        const bool restart = before_.restart;
        auto counted = restart ? decltype(m.StatCouleur){} : before_.stat;
        const int trios = m.Blocs - (restart ? 0 : before_.blocs);
        for (std::size_t i = 1; i <= 3 && trios == 1; ++i) ++counted[Code(m.Bloc[i])];
        if (trios < 0 || trios > 1 || counted != m.StatCouleur) {
            return Say("the colour counts do not add up to the ", m.Blocs, " trios drawn");
        }
        const int removed = m.Carres - (restart ? 0 : before_.carres);
        const int lines = m.Score - (restart ? 0 : before_.score);
        const bool landed = trios == 1 && !restart;
        const int gone = landed ? before_.cells + 1 - cells_ : 0;
        // The new trio's bottom square shows on row 1, over the top of a full column, which
        // loses the game.
        const bool covered = landed && g[m.XPos][2] != COULEUR_VIDE;
        if ((removed != gone && !(covered && removed == gone - 1)) ||
            (lines > 0 ? removed < 3 || removed > 3 * lines : removed != 0)) {
            return Say(removed, " squares counted as removed for ", lines, " lines, while ", gone,
                       " left the well");
        }
        // Until a trio lands, the squares settled in the well stay as they are.
        if (!landed && !restart && settled_ != before_.settled) {
            return Say("the squares settled in the well went from ", before_.settled, " to ",
                       settled_);
        }
        return {};
    }

    std::string WellShown() const {
        const QImage shot = window_->Well()->grab().toImage();
        const QPoint inside = window_->Well()->contentsRect().topLeft();
        for (int c = 1; c <= kColonnes; ++c) {
            for (int r = 1; r <= kLignes; ++r) {
                const QColor p = shot.pixelColor(inside + QPoint(c * 16 - 8, r * 16 - 8));
                const Couleur painted = p.red() | (p.green() << 8) | (p.blue() << 16);
                if (painted != game_.Module().Grille[c][r]) {
                    return Say("the well shows ", std::hex, painted, " on column ", c, ", row ", r,
                               " for ", game_.Module().Grille[c][r]);
                }
            }
        }
        return {};
    }

    testing::FakeClock clock_;
    MersenneRandom random_;
    MemorySettingsStore settings_;
    TavrinesGame game_{random_, clock_, settings_};
    QPointer<frmTavrines> window_;
    struct {
        int blocs, carres, score, cells, settled;
        std::array<std::int32_t, kColonnes + 1> stat;
        bool restart;  // the step started a new game
    } before_{};
    bool started_ = false, playing_ = false;  // a game in the well, in the window on screen
    int best_ = 0, cells_ = 0, settled_ = 0;  // squares in the well, and those not falling
    std::string bestName_ = "Anonyme";
};

// The guessing window under random typing, pasting, keys, clicks and levels. The monkey keeps
// its own count of the proposals, from the box's text at each press of "Go!", and holds the
// window to it up to the tenth number found, which hands over to the other game.
class GuessMonkey {
  public:
    explicit GuessMonkey(unsigned seed) : monkey(seed) { clock_.seconds = seed; }
    ~GuessMonkey() { delete window_; }

    std::string Load() {
        window_ = new Form1(game_);
        QObject::connect(Button("Btgo"), &QPushButton::pressed, [this] {
            pressed_ = {Box()->text(), game_.Module().Nombre};
        });
        for (const char* name : {"Btgo", "CmdSolution", "btEncore", "Btquitter"}) {
            QObject::connect(Button(name), &QPushButton::clicked, [this, name] {
                clicks_.push_back({name, pressed_});
            });
        }
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
                      [this](QWidget* dialog) {
                          const bool enter = monkey.Pick(2);
                          monkey.Did(enter ? "Enter on the message" : "Escape on the message");
                          QTest::keyClick(dialog, enter ? Qt::Key_Return : Qt::Key_Escape);
                      });
        return Check();
    }

    Monkey monkey;

  private:
    QPushButton* Button(const char* name) const {
        return qobject_cast<QPushButton*>(window_->Control(name));
    }
    QLineEdit* Box() const { return qobject_cast<QLineEdit*>(window_->Control("Boxsaisie")); }

    void Act() {
        QWidget* focus = QApplication::focusWidget() ? QApplication::focusWidget() : window_;
        const int roll = monkey.Pick(100);
        if (focus == Button("Btquitter") || roll < 4) {
            // "Quitter" would unload the window: the monkey steps off it rather than press it.
            monkey.Press(window_, monkey.Pick(2) ? Qt::Key_Tab : Qt::Key_Backtab);
        } else if (roll < 30) {
            const QString text = monkey.Text("0123456789,.0123456789a -", 3);
            monkey.Did("type '" + text.toStdString() + "'");
            QTest::keyClicks(focus, text);
        } else if (roll < 40) {
            // The number drawn, or one near it, typed whole in the box and proposed.
            const Form1Module& m = game_.Module();
            const double off = (roll < 33 ? 0 : monkey.Pick(5) - 2) * (m.Niveau == 4 ? 0.01 : 1);
            QString text = QString::number(m.Nombre + off, 'f', m.Niveau == 4 ? 2 : 0);
            if (monkey.Pick(2)) text.replace('.', ',');
            monkey.Did("click the box, Ctrl+A, type '" + text.toStdString() + "', Enter");
            QTest::mouseClick(Box(), Qt::LeftButton);
            QTest::keyClick(Box(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(Box(), text);
            QTest::keyClick(Box(), Qt::Key_Return);
        } else if (roll < 60) {
            static constexpr Qt::Key kKeys[] = {Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Return,
                                                Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Left,
                                                Qt::Key_Home,   Qt::Key_End,       Qt::Key_Space};
            monkey.Press(window_, kKeys[monkey.Pick(std::size(kKeys))]);
        } else if (roll < 88) {
            static constexpr const char* kTargets[] = {"Btgo",       "Btgo",       "CmdSolution",
                                                       "btEncore",   "Option1(0)", "Option1(1)",
                                                       "Option1(2)", "Option1(3)", "Option1(4)"};
            QWidget* target = window_->Control(kTargets[monkey.Pick(std::size(kTargets))]);
            // A hidden button cannot be clicked; a disabled one ignores the mouse.
            if (!target->isVisible()) return;
            monkey.Did("click " + target->objectName().toStdString());
            QTest::mouseClick(target, Qt::LeftButton);
        } else if (const QString text = monkey.Text("0123456789,.é€x 5", 4); roll < 95) {
            monkey.Did("input method commits '" + text.toStdString() + "'");
            QInputMethodEvent commit;
            commit.setCommitString(text);
            QApplication::sendEvent(focus, &commit);
        } else {
            monkey.Did("paste '" + text.toStdString() + "' with Ctrl+V");
            QApplication::clipboard()->setText(text);
            QTest::keyClick(focus, Qt::Key_V, Qt::ControlModifier);
        }
    }

    std::string Check() {
        for (const auto& [button, proposal] : clicks_) {
            const auto& [text, number] = proposal;
            if (button == "Btquitter") return "Quitter was pressed";
            if (button == "CmdSolution") {
                // Giving up misses the number, and shows the numbers played in all.
                coup_ = found_ + ++missed_;
            } else if (button == "btEncore") {
                goes_ = coup_ = 0;
            } else if (coup_ = ++goes_; !text.contains(QRegularExpression("[0-9]"))) {
                ++emptyGoes_;  // answered by a message
            } else if (QString(text).replace(',', '.').toDouble() != number) {
                ++missed_;
            } else {
                ++found_;
                average_ = static_cast<int>(std::lround(double(found_ + missed_) / found_));
            }
        }
        clicks_.clear();
        const Form1Module& m = game_.Module();
        const auto label = [this](const char* name) {
            return qobject_cast<QLabel*>(window_->Control(name))->text().toStdString();
        };
        if (messages_ != emptyGoes_ || m.NbCoups != goes_ || m.NbTrouves != found_ ||
            m.NbRates != missed_ || label("Label3(0)") != std::to_string(found_) ||
            label("Label3(1)") != std::to_string(missed_) ||
            (coup_ >= 0 && label("Coup") != Say("Nombre de coups joués : ", coup_)) ||
            (found_ && label("Label4") != Say("Tu trouves en ", average_, " fois, en moyenne."))) {
            return Say("the window shows ", label("Label3(0)"), " found, ", label("Label3(1)"),
                       " missed, '", label("Coup"), "', '", label("Label4"), "', ", messages_,
                       " messages; the monkey counted ", goes_, " proposals, ", emptyGoes_,
                       " empty, ", found_, " found, ", missed_, " missed");
        }
        if (handovers_ != (found_ == 10 ? 1 : 0)) return Say(handovers_, " handovers");
        monkey.done = found_ == 10;  // the other game comes next
        return {};
    }

    testing::FakeClock clock_;
    MersenneRandom random_;
    testing::RecordingSound sound_;
    GuessGame game_{random_, clock_, sound_, {"found.wav", "missed.wav"}, ','};
    QPointer<Form1> window_;
    std::pair<QString, double> pressed_;  // the box's text and the number drawn at "Go!"
    std::vector<std::pair<std::string, std::pair<QString, double>>> clicks_;
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
