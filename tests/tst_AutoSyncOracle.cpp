#include "AutoSyncDocuments.h"
#include "AutoSyncOracle.h"

#include "addin/host/Document.h"
#include "addin/host/HostError.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "autosync/modAutoSync.h"
#include "feldra/Host.h"

#include <QTest>

using namespace autosynctest;

namespace {

// One generated document opened twice, in two hosts: one for Auto Sync, one for the oracle.
struct Twins {
    feldra::Host productHost;
    feldra::Host oracleHost;
    std::shared_ptr<feldra::DocumentState> product;
    std::shared_ptr<feldra::DocumentState> oracle;
    QStringList list;

    Twins(unsigned seed, int operations, int syncs, bool uniqueNames)
    {
        std::mt19937 first(seed), second(seed);
        product = RandomDocument(first, operations, syncs, uniqueNames);
        oracle = RandomDocument(second, operations, syncs, uniqueNames);
        list = ShuffledNames(first, product->data);
        productHost.Activate(product);
        oracleHost.Activate(oracle);
    }
    std::shared_ptr<host::Document> ProductDocument() { return productHost.DocumentObject(product); }
    std::shared_ptr<host::Application> OracleApplication()
    {
        return oracleHost.ApplicationFor(QStringLiteral("Marelon.Connect"));
    }
};

// Everything Auto Sync may change, by operation id.
QStringList State(const feldra::DocumentData& document)
{
    QStringList state;
    for (const auto& operation : document.operations)
        state.append(QStringLiteral("op %1").arg(operation->id));
    for (const auto& sync : document.syncs) {
        QString text = QStringLiteral("sync %1:").arg(sync->typeIndex);
        for (const auto& node : sync->nodes)
            text += QStringLiteral(" %1/%2/%3/%4/%5")
                        .arg(node.placement)
                        .arg(node.operationId)
                        .arg(node.reserved3)
                        .arg(node.elementIndex)
                        .arg(node.reserved5);
        state.append(text);
    }
    return state;
}

bool HasBackToolRun(const feldra::DocumentData& document)
{
    return SyncsOf(document).join(QLatin1Char('\n')).contains(QLatin1String("G821"));
}

} // namespace

class tst_AutoSyncOracle : public QObject {
    Q_OBJECT

private slots:
    // Documents whose list names every operation once: OK in full.
    void okMatchesTheOracle()
    {
        int withRuns = 0;
        int withoutCutoffOrPickup = 0;
        for (unsigned seed = 1; seed <= 600; ++seed) {
            Twins twins(seed, 1 + int(seed % 30), int(seed % 9), true);
            marelon::AutoSync autoSync(twins.ProductDocument(), twins.list);
            QCOMPARE(autoSync.CheckList(), marelon::ListCheck::Fits);
            const bool made = autoSync.Run().Created();
            QCOMPARE(made, oracle::Ok(*twins.OracleApplication(), twins.list));
            QCOMPARE(State(twins.product->data), State(twins.oracle->data));
            withRuns += HasBackToolRun(twins.product->data);
            withoutCutoffOrPickup += !made;
        }
        QVERIFY2(withRuns > 200, "too few documents with back-tool runs to compare");
        QVERIFY2(withoutCutoffOrPickup > 100, "too few documents without cut-off or pick-up to compare");
    }

    // Documents with repeated names: the order is refused (by the add-in, and
    // by the host for the oracle); the synchronisations of the present order,
    // the look-ups and the element indices of the existing ones still agree.
    void repeatedNamesMatchTheOracle()
    {
        int repeated = 0;
        for (unsigned seed = 1001; seed <= 1500; ++seed) {
            Twins twins(seed, 2 + int(seed % 30), int(seed % 7), false);
            auto application = twins.OracleApplication();
            marelon::AutoSync autoSync(twins.ProductDocument(), twins.list);
            if (autoSync.CheckList() == marelon::ListCheck::NameRepeated) {
                ++repeated;
                QVERIFY_THROWS_EXCEPTION(host::HostError, oracle::Ok(*application, twins.list));
                QCOMPARE(State(twins.product->data), State(twins.oracle->data));
            }

            QCOMPARE(autoSync.GetNextElementIndex(nullptr), oracle::GetNextElementIndex(*application, nullptr));
            const auto productOperations = twins.ProductDocument()->Operations();
            const auto oracleOperations = application->ActiveDocument()->Operations();
            for (int j = 1; j <= productOperations->Count(); j += 3) {
                const auto found = autoSync.GetNextSubSpindleOP(productOperations->Item(j));
                const auto expected = oracle::GetNextSubSpindleOP(*application, twins.list, oracleOperations->Item(j));
                QCOMPARE(found ? found->Name() : QStringLiteral("nothing"),
                         expected ? expected->Name() : QStringLiteral("nothing"));
            }

            autoSync.RemoveAllSyncs();
            autoSync.SyncSubSpindleOps();
            const bool made = autoSync.SyncCutoffAndPickup().Created();
            oracle::RemoveAllSyncs(*application);
            oracle::SyncSubSpindleOps(*application, twins.list);
            QCOMPARE(made, oracle::SyncCutoffAndPickup(*application));
            QCOMPARE(State(twins.product->data), State(twins.oracle->data));
        }
        QVERIFY2(repeated > 300, "too few documents with repeated names to compare");
    }
};

QTEST_MAIN(tst_AutoSyncOracle)
#include "tst_AutoSyncOracle.moc"
