#include "platform/uikit/UIApplication.h"

#include <benchmark/benchmark.h>

#include <QApplication>

/// The main function of the benchmarks that need a toolkit.
int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2");
    exifcard::UIApplication::prepare();
    const QApplication application(argumentCount, arguments);
    exifcard::UIApplication::start();
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
