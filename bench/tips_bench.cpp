#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <filesystem>
#include <fstream>

#include "SettingsStore.h"
#include "TipGame.h"

namespace mirvalde {
namespace {

namespace fs = std::filesystem;

// A million tips of about 40 bytes, accents included: some 40 MB.
fs::path MillionLineFile() {
    const fs::path folder = fs::temp_directory_path() / "mirvalde-tips-bench";
    fs::create_directories(folder);
    const fs::path file = folder / "TIPOFDAY.TXT";
    if (!fs::exists(file)) {
        std::ofstream out(file, std::ios::binary);
        for (int i = 0; i < 1000000; ++i) {
            out << "Astuce n° " << i << " : vise le milieu de l'intervalle.\r\n";
        }
    }
    return file;
}

long PeakResidentKilobytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Opening the tip window on a very large file: the file is read once, indexed, and only the
// tip shown is decoded. Reports the growth of the peak memory against the file's size.
void BM_LoadTipsOfAMillionLines(benchmark::State& state) {
    const fs::path file = MillionLineFile();
    const double size = static_cast<double>(fs::file_size(file));
    MemorySettingsStore settings;
    const long before = PeakResidentKilobytes();
    for (auto _ : state) {
        TipGame tips(settings, file.parent_path().string());
        benchmark::DoNotOptimize(tips.LoadTips(file.string()));
        benchmark::DoNotOptimize(tips.Controls().lblTipText);
    }
    state.counters["file_MB"] = size / 1e6;
    state.counters["peak_growth_x_file"] =
        static_cast<double>(PeakResidentKilobytes() - before) * 1024.0 / size;
}
BENCHMARK(BM_LoadTipsOfAMillionLines)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace mirvalde
