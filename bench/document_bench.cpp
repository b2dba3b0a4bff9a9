// Load and save of a large document: 1,000 tools and 2,000 operations, each
// operation with a technology of a dozen parameters, a geometry entry and a
// custom property, 1,000 features and 500 synchronisations; and of documents
// 10 and 100 times as large (the argument). The file
// benchmarks include reading or the atomic write; the text ones are the JSON
// work alone.
#include "LargeDocument.h"
#include "feldra/DocumentFile.h"

#include <QTemporaryDir>

#include <map>

#include <benchmark/benchmark.h>

using namespace feldra;

namespace {

const DocumentData& document(int scale)
{
    static std::map<int, DocumentData> documents;
    auto it = documents.find(scale);
    if (it == documents.end())
        it = documents.emplace(scale, LargeDocument(scale)).first;
    return it->second;
}

void BM_LoadDocument(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("large.fdoc"));
    SaveDocument(path, document(int(state.range(0))));
    for (auto _ : state)
        benchmark::DoNotOptimize(LoadDocument(path));
}

void BM_SaveDocument(benchmark::State& state)
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("large.fdoc"));
    for (auto _ : state)
        SaveDocument(path, document(int(state.range(0))));
}

void BM_ReadDocumentText(benchmark::State& state)
{
    const QByteArray text = WriteDocument(document(int(state.range(0))));
    state.counters["bytes"] = double(text.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadDocument(text, QStringLiteral("large.fdoc")));
}

void BM_WriteDocumentText(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(WriteDocument(document(int(state.range(0)))));
}

} // namespace

BENCHMARK(BM_LoadDocument)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveDocument)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadDocumentText)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteDocumentText)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
