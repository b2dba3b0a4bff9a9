// Tool Data on a large document: opening the dialog on 1,000 tools (machine
// list, holder library, sort and grid fill), sorting and refilling the grid,
// and reading a holder library of 101 holders.
#include "addin/ui/UiServices.h"
#include "feldra/DocumentState.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "tooldata/HolderLibrary.h"
#include "tooldata/frmToolData.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

const QString kMachineFile = QStringLiteral("L5-16-20 ToolHolders.txt"); // machine code 7

// A host whose active document holds `tools` tools in scrambled order, and a
// holder library of 101 holders for its machine.
struct LargeDocument {
    explicit LargeDocument(int tools)
    {
        qputenv("MARELON_SETTINGS_DIR", (dir.path() + "/settings").toLocal8Bit());
        qputenv("MARELON_REGISTRY_DIR", (dir.path() + "/registry").toLocal8Bit());
        QDir(dir.path()).mkpath(QStringLiteral("ToolHolders"));
        host.App().addInFolder = dir.path() + QLatin1Char('/');
        QFile library(LibraryPath());
        library.open(QIODevice::WriteOnly);
        for (int i = 0; i < marelon::kHolderCapacity; ++i)
            library.write(marelon::HolderLine({QStringLiteral("GTF51%1").arg(i, 2, 10, QLatin1Char('0')),
                                               QStringLiteral("Gang holder %1, 12 mm shank").arg(i), 0.125 * i,
                                               -0.5, 0.0393701 * i, int16_t(i % 2 ? -1 : 1), 1, 1.5}));
        library.close();

        auto document = std::make_shared<feldra::DocumentState>();
        document->data.machineSetup.makerTag = QStringLiteral("MARELON");
        document->data.machineSetup.machineCode = QStringLiteral("7");
        for (int i = 0; i < tools; ++i) {
            auto tool = std::make_shared<feldra::ToolData>();
            tool->number = (i * 7919) % 997 + 1;
            tool->toolId = QStringLiteral("T%1").arg(tool->number);
            tool->toolType = 16 + i % 8;
            tool->parameters.insert(QStringLiteral("121"), {(i * 31) % 50, QString(), {}});
            document->data.tools.append(tool);
        }
        host.OpenDocument(document);
        application = host.ApplicationFor(QStringLiteral("Marelon.Connect"));
        marelon::InstallUiServices(nullptr, std::make_shared<feldra::MessageBoxRecorder>());
    }
    ~LargeDocument() { marelon::RemoveUiServices(); }

    QString LibraryPath() const { return dir.path() + QStringLiteral("/ToolHolders/") + kMachineFile; }

    QTemporaryDir dir;
    feldra::Host host;
    std::shared_ptr<host::Application> application;
};

void openToolData(benchmark::State& state)
{
    LargeDocument document(int(state.range(0)));
    for (auto _ : state) {
        marelon::frmToolData form(document.application);
        benchmark::DoNotOptimize(form.SortedTools().size());
    }
}

void sortAndFillGrid(benchmark::State& state)
{
    LargeDocument document(int(state.range(0)));
    marelon::frmToolData form(document.application);
    for (auto _ : state)
        form.Sort_Click();
}

void readHolderLibrary(benchmark::State& state)
{
    LargeDocument document(0);
    for (auto _ : state) {
        const auto holders = marelon::ReadHolderFile(document.LibraryPath());
        if (holders.size() != marelon::kHolderCapacity)
            state.SkipWithError("the library did not read whole");
        benchmark::DoNotOptimize(holders.size());
    }
}

} // namespace

// 1,000 tools today; 10 and 100 times as many.
BENCHMARK(openToolData)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(sortAndFillGrid)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(readHolderLibrary)->Unit(benchmark::kMicrosecond);
