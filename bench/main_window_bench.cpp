#include <benchmark/benchmark.h>

#include "Clock.h"
#include "Form1.h"
#include "NumberFormat.h"
#include "Pictures.h"
#include "Random.h"
#include "Sound.h"

namespace mirvalde {
namespace {

class SilentSound final : public Sound {
  public:
    void Play(const std::string&) override {}
};

// What the player waits for when the main window opens: its controls built from the design,
// the pictures drawn and the first number drawn.
void BM_LoadMainWindow(benchmark::State& state) {
    MersenneRandom random;
    SystemClock clock;
    SilentSound sound;
    GuessGame game(random, clock, sound, {}, ',');
    for (auto _ : state) {
        Form1 window(game);
        window.Form_Load();
        benchmark::DoNotOptimize(window.Control("Boxsaisie"));
    }
}
BENCHMARK(BM_LoadMainWindow)->Unit(benchmark::kMillisecond);

// One proposal judged and its sentence written.
void BM_AnswerProposal(benchmark::State& state) {
    MersenneRandom random;
    SystemClock clock;
    SilentSound sound;
    GuessGame game(random, clock, sound, {}, ',');
    game.Form_Load();
    game.ChooseLevel(3);
    for (auto _ : state) {
        game.Boxsaisie_Change("123456");
        benchmark::DoNotOptimize(game.Btgo_Click());
    }
}
BENCHMARK(BM_AnswerProposal);

void BM_FormatSentenceNumber(benchmark::State& state) {
    double value = 1234567.891;
    for (auto _ : state) {
        benchmark::DoNotOptimize(Format(value, "### ### ##0.##", ','));
        value += 1.0;
    }
}
BENCHMARK(BM_FormatSentenceNumber);

}  // namespace
}  // namespace mirvalde

namespace mirvalde {
namespace {

// The game's icon drawn at every size a desktop asks for, as the first window of a run does.
void BM_DrawGameIcon(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(SvgIcon(QStringLiteral(":/icons/mirvalde.svg")).cacheKey());
    }
}
BENCHMARK(BM_DrawGameIcon)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace mirvalde
