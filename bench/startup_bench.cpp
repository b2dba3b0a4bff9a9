// Start-up of the Feldra application: from creating the host (and connecting
// the registered add-ins, when the build can load them) and the main window
// to the window shown, offscreen; once empty and once on the example part.
#include "feldra/Host.h"
#include "feldra/HostActions.h"
#include "feldra/app/AddIns.h"
#include "feldra/app/MainWindow.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

void startup(benchmark::State& state, const QString& document)
{
    for (auto _ : state) {
        auto host = std::make_unique<feldra::Host>();
        feldra::AddIns::LoadRegistered(*host);
        auto window = std::make_unique<feldra::MainWindow>(*host);
        if (!document.isEmpty())
            window->OpenDocument(document);
        window->show();
        QCoreApplication::processEvents();

        state.PauseTiming();
        host->Quit();
        window.reset();
        host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.counters["add-ins"] = feldra::AddIns::Available() ? 1 : 0;
}

} // namespace

BENCHMARK_CAPTURE(startup, empty, QString())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startup, example_part, QStringLiteral(MARELON_SOURCE_DIR "/examples/L5-part.fdoc"))
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
