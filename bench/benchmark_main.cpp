// Runs the registered workloads without a display.

#include "place.h"
#include "platform/ui/application.h"

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const SilentDialogs dialogs;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
