// Auto Sync's OK on a document of 1,000 operations with 200 synchronisations,
// and on 10 and 100 times as many (the argument): the add-in's dialog, and at
// today's size the step-by-step version the tests hold it against.
#include "AutoSyncDocuments.h"
#include "AutoSyncOracle.h"

#include "addin/ui/UiServices.h"
#include "autosync/frmAutoSync.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

constexpr int kOperations = 1000;
constexpr int kSyncs = 200;

// A long part program: about one operation in thirty on a back tool, cut-off
// and pick-up near the end, and a list the user has reordered.
struct Scenario {
    feldra::Host host;
    std::shared_ptr<feldra::DocumentState> document;
    QStringList list;

    explicit Scenario(int scale = 1)
    {
        std::mt19937 random(2026);
        document = autosynctest::RandomDocument(random, kOperations * scale, kSyncs * scale, true, 0.03);
        list = autosynctest::ShuffledNames(random, document->data);
        host.Activate(document);
    }
    std::shared_ptr<host::Application> Application() { return host.ApplicationFor(QStringLiteral("Marelon.Connect")); }
};

void AutoSyncOk(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        Scenario scenario(int(state.range(0)));
        marelon::frmAutoSync form(scenario.Application());
        form.findChild<QComboBox*>("cmbMachineName")->setCurrentIndex(7); // "L5-16/20"
        auto* list = form.findChild<QListWidget*>("lstOperations");
        for (int i = 0; i < list->count(); ++i)
            list->item(i)->setText(scenario.list[i]);
        state.ResumeTiming();

        form.cmdOK_Click();

        state.PauseTiming();
        state.counters["syncs"] = double(scenario.document->data.syncs.size());
        state.ResumeTiming();
    }
}

void AutoSyncLiteral(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        Scenario scenario;
        auto application = scenario.Application();
        state.ResumeTiming();

        oracle::Ok(*application, scenario.list);

        state.PauseTiming();
        state.counters["syncs"] = double(scenario.document->data.syncs.size());
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK(AutoSyncOk)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(AutoSyncLiteral)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir settings;
    qputenv("MARELON_SETTINGS_DIR", settings.path().toLocal8Bit());
    QApplication application(argc, argv);
    marelon::InstallUiServices(nullptr, std::make_shared<feldra::MessageBoxRecorder>());
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
