// The undo history of a large part: 100 steps of Auto Sync's OK on a part of
// 1,000 tools and 2,000 operations (and 10 times that), each with the user's
// order of the operations shuffled anew, so that every OK makes other
// synchronisations. Reports the heap the history keeps (glibc's count of
// bytes in use, after less before) and the time of one undo and redo.
#include "AutoSyncDocuments.h"

#include "addin/ui/UiServices.h"
#include "autosync/frmAutoSync.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"

#include <QApplication>
#include <QComboBox>
#include <QTemporaryDir>
#include <QListWidget>
#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

constexpr int kTools = 1000;
constexpr int kOperations = 2000;
constexpr int kSyncs = 400;
constexpr int kSteps = 100;

// Auto Sync's messages, counted: an OK it refuses makes no step.
const auto messages = std::make_shared<feldra::MessageBoxRecorder>();

double HeapInUse() { return double(mallinfo2().uordblks); }

struct LargePart {
    feldra::Host host;
    std::shared_ptr<feldra::DocumentState> document;
    std::mt19937 random{2026};

    explicit LargePart(int scale)
    {
        document = autosynctest::RandomDocument(random, kOperations * scale, kSyncs * scale, true, 0.03);
        for (int i = 1; i <= kTools * scale; ++i) {
            auto tool = std::make_shared<feldra::ToolData>();
            tool->number = 100 + i;
            tool->toolId = QStringLiteral("X%1").arg(i);
            tool->comment = QStringLiteral("Tool %1, 0.4 corner radius").arg(i);
            tool->xShift = -20.5 + i * 0.001;
            tool->parameters[QStringLiteral("121")].value = double(i);
            document->data.tools.append(tool);
        }
        host.OpenDocument(document);
    }

    // One Auto Sync OK with a newly shuffled order, as one step.
    void AutoSync()
    {
        const QStringList order = autosynctest::ShuffledNames(random, document->data);
        marelon::frmAutoSync form(host.ApplicationFor(QStringLiteral("Marelon.Connect")));
        form.findChild<QComboBox*>("cmbMachineName")->setCurrentIndex(7); // "L5-16/20"
        auto* list = form.findChild<QListWidget*>("lstOperations");
        for (int i = 0; i < list->count(); ++i)
            list->item(i)->setText(order[i]);
        const feldra::Host::Step step(host, QStringLiteral("Auto Sync"));
        form.cmdOK_Click();
    }
};

void UndoHistoryOfAutoSync(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        LargePart part(int(state.range(0)));
        const double before = HeapInUse();
        state.ResumeTiming();

        for (int i = 0; i < kSteps; ++i)
            part.AutoSync();

        state.PauseTiming();
        state.counters["steps"] = part.document->history.Stack().count();
        state.counters["messages"] = double(messages->Messages().size());
        state.counters["history_MB"] = (HeapInUse() - before) / 1e6;
        state.ResumeTiming();
    }
}

void UndoRedoAutoSync(benchmark::State& state)
{
    LargePart part(int(state.range(0)));
    for (int i = 0; i < 10; ++i)
        part.AutoSync();
    for (auto _ : state) {
        part.host.Undo();
        part.host.Redo();
    }
    state.counters["steps"] = part.document->history.Stack().count();
}

} // namespace

BENCHMARK(UndoHistoryOfAutoSync)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(UndoRedoAutoSync)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir settings;
    qputenv("MARELON_SETTINGS_DIR", settings.path().toLocal8Bit());
    QApplication application(argc, argv);
    marelon::InstallUiServices(nullptr, messages);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
