#include <benchmark/benchmark.h>

#include <chrono>
#include <thread>

#include "Clock.h"
#include "Random.h"
#include "SettingsStore.h"
#include "TavrinesGame.h"
#include "WellBox.h"

namespace mirvalde {
namespace {

// A full well without a single line: the colour codes shift by two a row, so no three
// neighbours in any direction share a colour.
void FillWithoutLines(TavrinesModule& module) {
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) {
            module.Grille[c][r] = kCouleurs[static_cast<std::size_t>((c + 2 * r) % 6)];
        }
    }
}

// The search that follows every landing, on the largest well it ever scans.
void BM_LineSearchPassOnAFullWell(benchmark::State& state) {
    MersenneRandom random;
    SystemClock clock;
    MemorySettingsStore settings;
    TavrinesGame game(random, clock, settings);
    game.Form_Load();
    FillWithoutLines(game.ModuleForTest());
    for (auto _ : state) {
        game.ChercheSol();
        benchmark::DoNotOptimize(game.Module().Score);
    }
}
BENCHMARK(BM_LineSearchPassOnAFullWell);

// One tick that moves the trio a row down and paints it on the well's image.
void BM_TickMovesAndPaintsTheTrio(benchmark::State& state) {
    MersenneRandom random;
    SystemClock clock;
    MemorySettingsStore settings;
    TavrinesGame game(random, clock, settings);
    WellBox well;
    game.SetPicture(&well);
    game.Form_Load();
    game.mnuNouveau_Click();
    for (auto _ : state) {
        if (game.Module().YPos >= kLignes - 1) {
            state.PauseTiming();
            game.mnuNouveau_Click();
            state.ResumeTiming();
        }
        game.tmrCase_Timer();
    }
}
BENCHMARK(BM_TickMovesAndPaintsTheTrio);

// The pause of the blink: each wait a little over 20 ms of wall time, and next to no
// processor time. Reports the share of waits that end in (20, 22] ms.
void BM_Attendre(benchmark::State& state) {
    MersenneRandom random;
    SystemClock clock;
    MemorySettingsStore settings;
    const TavrinesGame game(random, clock, settings);
    int within = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        game.Attendre();
        const std::chrono::duration<double, std::milli> waited =
            std::chrono::steady_clock::now() - start;
        if (waited.count() > 20.0 && waited.count() <= 22.0) ++within;
    }
    state.counters["within_20_22ms"] = within / static_cast<double>(state.iterations());
}
BENCHMARK(BM_Attendre)->Unit(benchmark::kMillisecond)->Iterations(1000);

// The baseline of the pause: the best any sleeping wait can do on this machine, a sleep to the
// middle of (20, 22] ms. What it misses is the machine's own lateness in waking a thread.
void BM_SleepToTheMiddleOfThePause(benchmark::State& state) {
    int within = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        std::this_thread::sleep_until(start + std::chrono::microseconds(20500));
        const std::chrono::duration<double, std::milli> waited =
            std::chrono::steady_clock::now() - start;
        if (waited.count() > 20.0 && waited.count() <= 22.0) ++within;
    }
    state.counters["within_20_22ms"] = within / static_cast<double>(state.iterations());
}
BENCHMARK(BM_SleepToTheMiddleOfThePause)->Unit(benchmark::kMillisecond)->Iterations(1000);

}  // namespace
}  // namespace mirvalde
