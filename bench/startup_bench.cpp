// Start-up of the Feldra application: from creating the host (and connecting
// the registered add-ins, when the build can load them) and the main window
// to the window shown, offscreen; once empty and once on the example part.
#include "feldra/Host.h"
#include "feldra/HostActions.h"
#include "feldra/AddInLoader.h"
#include "feldra/app/MainWindow.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

void startup(benchmark::State& state, const QString& document)
{
    int connected = 0;
    for (auto _ : state) {
        auto host = std::make_unique<feldra::Host>();
        auto window = std::make_unique<feldra::MainWindow>(*host);
        connected = feldra::LoadRegisteredAddIns(*host);
        host->AddIns().StartupComplete();
        window->RefreshAll();
        if (!document.isEmpty())
            window->OpenDocument(document);
        window->show();
        QCoreApplication::processEvents();

        state.PauseTiming();
        host->Quit();
        host->AddIns().UnloadAll(); // while the window that owns their dialogs stands
        window.reset();
        host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.counters["add-ins"] = connected;
}

} // namespace

BENCHMARK_CAPTURE(startup, empty, QString())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(startup, example_part, QStringLiteral(MARELON_SOURCE_DIR "/examples/L5-part.fdoc"))
    ->Unit(benchmark::kMillisecond);
