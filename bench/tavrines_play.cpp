// The falling-blocks window on the display, as the game shows it, for measuring from outside.
//   tavrines_play           the window before "Nouveau": nothing moves;
//   tavrines_play --play    a game at the fastest speed that nobody plays, in which no line
//                           ever forms, so that no blink is counted.

#include <QAction>
#include <QApplication>
#include <cstring>

#include "Clock.h"
#include "Look.h"
#include "SettingsStore.h"
#include "TavrinesGame.h"
#include "frmTavrines.h"

namespace mirvalde {
namespace {

// Trios that land in columns 1 to 5 in turn, with colours from {0, 1, 2} and {3, 4, 5} in
// turn: neighbouring columns never share a colour at the same height, and no colour repeats
// up a column, so no line of three can form.
class LineFreeRandom final : public Random {
  public:
    void Seed(double) override {}
    float Next() override {
        const int draw = draws_++;
        const int trio = draw / 4;
        const int whole = draw % 4 == 3 ? trio % 5 + 1                    // the column, 1 to 5
                                        : (trio % 2) * 3 + draw % 4 + 1;  // the colour, 1 to 6
        const int of = draw % 4 == 3 ? 5 : 6;
        return (static_cast<float>(whole) - 0.5f) / static_cast<float>(of);
    }

  private:
    int draws_ = 0;
};

}  // namespace
}  // namespace mirvalde

int main(int argc, char* argv[]) {
    using namespace mirvalde;
    QApplication app(argc, argv);
    UseGameLook();
    LineFreeRandom random;
    SystemClock clock;
    MemorySettingsStore settings;
    TavrinesGame game(random, clock, settings);
    auto* window = new frmTavrines(game);
    window->Form_Load();
    window->show();
    if (argc > 1 && std::strcmp(argv[1], "--play") == 0) {
        window->findChild<QAction*>(QStringLiteral("mnuSpeed(5)"))->trigger();
        window->findChild<QAction*>(QStringLiteral("mnuNouveau"))->trigger();
    }
    return QApplication::exec();
}
