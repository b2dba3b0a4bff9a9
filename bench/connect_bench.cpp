// The add-in's connection on a fresh host: commands, buttons with their
// pictures, help entries, the localiser and the hidden Data Page.
#include "addin/Connect.h"
#include "feldra/Host.h"
#include "feldra/QtLocalizer.h"

#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

void BM_OnConnection(benchmark::State& state)
{
    const int languageCode = int(state.range(0));
    QTemporaryDir folder;
    QVariantList custom;
    for (auto _ : state) {
        state.PauseTiming();
        auto host = std::make_unique<feldra::Host>();
        host->App().temporaryFolder = folder.path() + QDir::separator();
        host->App().languageCode = languageCode;
        host->Services().createLocalizer = [] { return std::make_shared<feldra::QtLocalizer>(); };
        auto application = host->ApplicationFor(QStringLiteral("Marelon.Connect"));
        auto addIn = std::make_unique<marelon::Connect>();
        state.ResumeTiming();

        addIn->OnConnection(application, host::ext_cm_Startup, QVariant(), custom);

        state.PauseTiming();
        addIn.reset();
        host.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_OnConnection)->Arg(feldra::QtLocalizer::kEnglish)->Arg(feldra::QtLocalizer::kGerman)
    ->Unit(benchmark::kMillisecond);

} // namespace
