// The Data Page on the example parts: a model switch, opening it (the Data
// Page command up to the dialog shown), InitOp on a part with four heads, and
// OK with its checks and writes, the stock included.
#include "addin/modGlobals.h"
#include "addin/settings/MachineCodes.h"
#include "addin/ui/ModelessForm.h"
#include "addin/ui/UiServices.h"
#include "datapage/frmMarelonDataPage.h"
#include "feldra/DocumentFile.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtLocalizer.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

// The Feldra host with an example part open and the Data Page loaded, its
// settings in a folder of its own.
struct DataPageBench {
    explicit DataPageBench(const QString& part, int heads = 0)
    {
        qputenv("MARELON_SETTINGS_DIR", (stores.path() + QStringLiteral("/settings")).toLocal8Bit());
        qputenv("MARELON_REGISTRY_DIR", (stores.path() + QStringLiteral("/registry")).toLocal8Bit());
        QDir(stores.path()).mkpath(QStringLiteral("addin/MachineSetups"));
        host.App().addInFolder = stores.path() + QStringLiteral("/addin/");
        document->data = feldra::LoadDocument(QStringLiteral(MARELON_SOURCE_DIR "/examples/") + part);
        while (document->data.machineSetup.heads.size() < heads)
            document->data.machineSetup.heads.append(std::make_shared<feldra::NCHeadData>());
        host.OpenDocument(document);
        application = host.ApplicationFor(QStringLiteral("Marelon.Connect"));
        auto localizer = std::make_shared<feldra::QtLocalizer>();
        localizer->Initialise();
        marelon::InstallUiServices(localizer, std::make_shared<feldra::MessageBoxRecorder>());
        form = std::make_unique<marelon::frmMarelonDataPage>(application);
    }
    ~DataPageBench()
    {
        marelon::HideModelessForm(form.get());
        form.reset();
        marelon::RemoveUiServices();
    }

    QTemporaryDir stores;
    feldra::Host host;
    std::shared_ptr<feldra::DocumentState> document = std::make_shared<feldra::DocumentState>();
    std::shared_ptr<host::Application> application;
    std::unique_ptr<marelon::frmMarelonDataPage> form;
};

void BM_ModelSwitch(benchmark::State& state)
{
    DataPageBench bench(QStringLiteral("L5-part.fdoc"));
    bench.form->InitOp();
    auto& models = bench.form->Control<QComboBox>(QStringLiteral("cmbMachineName"));
    const int model = int(state.range(0));
    state.SetLabel(models.itemText(model).toStdString());
    for (auto _ : state) {
        bench.form->SelectList(models, model);
        state.PauseTiming();
        models.setCurrentIndex(-1);
        state.ResumeTiming();
    }
}
BENCHMARK(BM_ModelSwitch)->DenseRange(0, 18)->Unit(benchmark::kMicrosecond);

void BM_OpenDataPage(benchmark::State& state)
{
    DataPageBench bench(QStringLiteral("L5-part.fdoc"));
    marelon::DataPageInstance() = bench.form.get();
    for (auto _ : state) {
        marelon::ShowDataPage();
        QCoreApplication::processEvents();
        state.PauseTiming();
        marelon::HideModelessForm(bench.form.get());
        state.ResumeTiming();
    }
    marelon::DataPageInstance() = nullptr;
}
BENCHMARK(BM_OpenDataPage)->Unit(benchmark::kMillisecond);

void BM_InitOpFourHeads(benchmark::State& state)
{
    DataPageBench bench(QStringLiteral("M2-3-part.fdoc"), 4);
    for (auto _ : state)
        bench.form->InitOp();
}
BENCHMARK(BM_InitOpFourHeads)->Unit(benchmark::kMillisecond);

// The part's operations repeated `copies` times, each copy with ids and keys of its own.
void RepeatOperations(feldra::DocumentData& data, int copies)
{
    const auto operations = data.operations;
    int id = 0;
    for (const auto& op : operations)
        id = std::max(id, op->id);
    for (int copy = 1; copy < copies; ++copy)
        for (const auto& op : operations) {
            auto repeated = std::make_shared<feldra::OperationData>(*op);
            repeated->technology = std::make_shared<feldra::TechnologyData>(*op->technology);
            repeated->id = ++id;
            repeated->key = QStringLiteral("%1-%2").arg(op->key).arg(copy);
            data.operations.append(repeated);
        }
}

// OK on the L5 example part, and on the part with its operations 10 and 100 times over.
void BM_OK(benchmark::State& state)
{
    DataPageBench bench(QStringLiteral("L5-part.fdoc"));
    RepeatOperations(bench.document->data, int(state.range(0)));
    state.counters["operations"] = double(bench.document->data.operations.size());
    const feldra::DocumentData original = bench.document->data;
    for (auto _ : state) {
        state.PauseTiming();
        bench.document->data = original;
        bench.form->InitOp();
        marelon::ShowForm(bench.form.get(), false);
        state.ResumeTiming();
        bench.form->cmdOK_Click();
    }
}
BENCHMARK(BM_OK)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace
