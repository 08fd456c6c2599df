#include <benchmark/benchmark.h>

#include <QApplication>

#include "Look.h"

// The windows need an application, without a display, in the game's own look.
int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    mirvalde::UseGameLook();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
