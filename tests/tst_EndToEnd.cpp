// The built `feldra` application with the built Marelon module registered,
// driven by macros as a user drives it, on a copy of the example part.
#include "TempStores.h"
#include "feldra/DocumentData.h"
#include "feldra/DocumentFile.h"
#include "addin/settings/SettingsStore.h"
#include "tooldata/HolderLibrary.h"

#include <QDir>

#include <cmath>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString kFeldra = QStringLiteral(FELDRA_EXECUTABLE);
const QString kModule = QStringLiteral(MARELON_MODULE);
const QString kMacros = QStringLiteral(MARELON_SOURCE_DIR "/tests/macros/e2e/");
const QString kExample = QStringLiteral(MARELON_SOURCE_DIR "/examples/L5-part.fdoc");
const QString kTemplate = QStringLiteral(MARELON_SOURCE_DIR "/examples/swiss-lathe.fdt");
constexpr double kMillimetresPerInch = 25.4;

QString ReadText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

const feldra::ToolData* FindTool(const feldra::DocumentData& document, const QString& toolId)
{
    for (const auto& tool : document.tools)
        if (tool->toolId == toolId)
            return tool.get();
    return nullptr;
}

// The numbers of the listing's tool line: X, Y, Z and GEAR, and the spindle's name.
struct ListedTool {
    double x = 0, y = 0, z = 0, gear = 0;
    QString spindle;
};

std::optional<ListedTool> ListedToolOf(const QString& listing, const QString& toolId)
{
    static const QRegularExpression line(
        QStringLiteral("ID=\"([^\"]*)\" X=(\\S+) Y=(\\S+) Z=(\\S+) SPINDLE=(\\S+) GEAR=(\\S+)"));
    for (auto it = line.globalMatch(listing); it.hasNext();) {
        const auto m = it.next();
        if (m.captured(1) == toolId)
            return ListedTool{m.captured(2).toDouble(), m.captured(3).toDouble(), m.captured(4).toDouble(),
                              m.captured(6).toDouble(), m.captured(5)};
    }
    return std::nullopt;
}

// The type names of the listing's SYNCS section, one per synchronisation.
QStringList ListedSyncTypes(const QString& listing)
{
    const QString syncs = listing.section(QStringLiteral("\nSYNCS\n"), 1).section(QStringLiteral("\n\n"), 0, 0);
    static const QRegularExpression line(QStringLiteral("^\\s+#\\d+ (\\S+)"),
                                         QRegularExpression::MultilineOption);
    QStringList types;
    for (auto it = line.globalMatch(syncs); it.hasNext();)
        types.append(it.next().captured(1));
    return types;
}

bool SameSyncs(const feldra::DocumentData& a, const feldra::DocumentData& b)
{
    if (a.syncs.size() != b.syncs.size())
        return false;
    for (qsizetype i = 0; i < a.syncs.size(); ++i) {
        if (a.syncs[i]->typeIndex != b.syncs[i]->typeIndex)
            return false;
        for (std::size_t n = 0; n < a.syncs[i]->nodes.size(); ++n) {
            const auto& x = a.syncs[i]->nodes[n];
            const auto& y = b.syncs[i]->nodes[n];
            if (x.placement != y.placement || x.operationId != y.operationId || x.elementIndex != y.elementIndex)
                return false;
        }
    }
    return true;
}

} // namespace

class tst_EndToEnd : public QObject {
    Q_OBJECT

    std::unique_ptr<TempStores> stores_;
    QString work_;

    // Runs feldra in the work folder; fails the test on a non-zero exit.
    bool RunFeldra(const QStringList& arguments)
    {
        QProcess feldra;
        feldra.setWorkingDirectory(work_);
        feldra.setProcessChannelMode(QProcess::MergedChannels);
        // The application's own settings (its language) from a folder of the test, not the user's.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), stores_->Path() + QStringLiteral("/config"));
        feldra.setProcessEnvironment(environment);
        feldra.start(kFeldra, arguments);
        const bool finished = feldra.waitForFinished(120000);
        const QByteArray output = feldra.readAll();
        if (!finished || feldra.exitStatus() != QProcess::NormalExit || feldra.exitCode() != 0) {
            qWarning().noquote() << "feldra" << arguments.join(QLatin1Char(' ')) << "failed:\n" << output;
            return false;
        }
        return true;
    }

    bool RunMacro(const QString& macro, const QString& document)
    {
        QStringList arguments{QStringLiteral("--macro"), kMacros + macro};
        if (!document.isEmpty())
            arguments << document;
        return RunFeldra(arguments);
    }

private slots:
    void init()
    {
        stores_ = std::make_unique<TempStores>();
        work_ = stores_->Path() + QStringLiteral("/work");
        QVERIFY(QDir().mkpath(work_));
        QVERIFY(QFile::copy(kExample, work_ + QStringLiteral("/L5-part.fdoc")));
        QVERIFY(QFile::copy(kTemplate, work_ + QStringLiteral("/swiss-lathe.fdt")));
        QVERIFY(RunFeldra({QStringLiteral("--register-addin"), kModule}));
    }

    void cleanup() { stores_.reset(); }

    void toolData_data()
    {
        QTest::addColumn<QString>("toolId");
        QTest::addColumn<QString>("holder");
        QTest::addColumn<QString>("spindle");
        QTest::newRow("spot drill in a front drill sleeve") << "T06" << "GDF5102" << "FORWARD";
        QTest::newRow("cross drill on a reverse 1:2 spindle") << "T07" << "GSE5103" << "REVERSE";
        QTest::newRow("back drill turned forward") << "T21" << "GDB5101" << "FORWARD";
    }

    // Each tool gets its holder's shifts (the holder file is in inches, the
    // part in millimetres, X a diameter), direction and gear ratio, in the
    // saved part and in the NC listing.
    void toolData()
    {
        QFETCH(QString, toolId);
        QFETCH(QString, holder);
        QFETCH(QString, spindle);
        QVERIFY(RunMacro(QStringLiteral("tooldata.js"), QStringLiteral("L5-part.fdoc")));

        const QString library = QFileInfo(kModule).absolutePath() + QStringLiteral("/ToolHolders/")
            + marelon::HolderFileName(QStringLiteral("L5 16-20"));
        const auto holders = marelon::ReadHolderFile(library);
        const auto record = std::find_if(holders.begin(), holders.end(),
                                         [&](const marelon::HolderRecord& h) { return h.name == holder; });
        QVERIFY2(record != holders.end(), qPrintable(holder));
        const double x = record->xShift * kMillimetresPerInch / 2;
        const double y = record->yShift * kMillimetresPerInch;
        const double z = record->zShift * kMillimetresPerInch;
        const double gear = record->gearRatio2 / record->gearRatio1;

        const feldra::DocumentData saved = feldra::LoadDocument(work_ + QStringLiteral("/tooldata.fdoc"));
        const feldra::ToolData* tool = FindTool(saved, toolId);
        QVERIFY(tool);
        QCOMPARE_LE(qAbs(tool->xShift - x), 1e-6);
        QCOMPARE_LE(qAbs(tool->yShift - y), 1e-6);
        QCOMPARE_LE(qAbs(tool->zShift - z), 1e-6);
        QCOMPARE(tool->spindleDirection, int(record->spindleRotation));
        QCOMPARE_LE(qAbs(tool->gearRatio - gear), 1e-9);
        QCOMPARE(tool->holderIndex, double(record - holders.begin()));

        const auto listed = ListedToolOf(ReadText(work_ + QStringLiteral("/tooldata.nc.txt")), toolId);
        QVERIFY(listed);
        QCOMPARE_LE(qAbs(listed->x - x), 1e-3);
        QCOMPARE_LE(qAbs(listed->y - y), 1e-3);
        QCOMPARE_LE(qAbs(listed->z - z), 1e-3);
        QCOMPARE_LE(qAbs(listed->gear - gear), 1e-3);
        QCOMPARE(listed->spindle, spindle);
    }

    // Auto Sync's list of operations takes several entries as a user picks
    // them (click, Ctrl-click, Shift-click) and shows what is selected.
    void autoSyncListTakesSeveralEntries()
    {
        QVERIFY(RunMacro(QStringLiteral("autosync-selection.js"), QStringLiteral("L5-part.fdoc")));
    }

    // The template holds the standard planes; in German the add-in replaces
    // them with its five lathe planes, once (the macro checks).
    void germanNewDocumentFromTheTemplate()
    {
        QVERIFY(RunMacro(QStringLiteral("german-template.js"), QString()));
    }

    // A second Auto Sync on its own result finds the same synchronisations;
    // the listing names each by its type.
    void autoSyncTwice()
    {
        QVERIFY(RunMacro(QStringLiteral("autosync.js"), QStringLiteral("L5-part.fdoc")));
        QVERIFY(QFile::rename(work_ + QStringLiteral("/autosync.fdoc"), work_ + QStringLiteral("/first.fdoc")));
        const QString firstListing = ReadText(work_ + QStringLiteral("/autosync.nc.txt"));
        QVERIFY(RunMacro(QStringLiteral("autosync.js"), QStringLiteral("first.fdoc")));
        const QString secondListing = ReadText(work_ + QStringLiteral("/autosync.nc.txt"));

        const auto first = feldra::LoadDocument(work_ + QStringLiteral("/first.fdoc"));
        const auto second = feldra::LoadDocument(work_ + QStringLiteral("/autosync.fdoc"));
        QVERIFY(!first.syncs.isEmpty());
        QVERIFY(SameSyncs(first, second));

        QStringList types = ListedSyncTypes(secondListing);
        QCOMPARE(types, ListedSyncTypes(firstListing));
        QCOMPARE(types.size(), second.syncs.size());
        types.removeDuplicates();
        types.sort();
        QCOMPARE(types, (QStringList{"G810", "G811", "G820", "G821"}));
    }

    // Each command undone gives back the part as it was before it, byte for
    // byte; redone, the part as the command left it. The macro runs them all
    // and checks Undo's and Redo's titles and the modified marker.
    void undoAndRedoEveryCommand()
    {
        QVERIFY(RunMacro(QStringLiteral("undo.js"), QString()));
        for (const char* step : {"tooldata", "autosync", "datapage-ok", "datapage-load", "newdocument"}) {
            const auto file = [&](const char* state) {
                return ReadText(QStringLiteral("%1/%2-%3.fdoc").arg(work_, QLatin1String(step), QLatin1String(state)));
            };
            const QString before = file("before");
            const QString after = file("after");
            QVERIFY2(!before.isEmpty() && before != after, step);
            QVERIFY2(file("undone") == before, step);
            QVERIFY2(file("redone") == after, step);
        }
    }

    // The Data Page round: a new part from the template, OK, the next new
    // part, the saved part reopened.
    void dataPageRound()
    {
        QVERIFY(RunMacro(QStringLiteral("datapage.js"), QString()));

        const auto saved = feldra::LoadDocument(work_ + QStringLiteral("/datapage.fdoc"));
        const feldra::MachineSetupData& s = saved.machineSetup;
        QCOMPARE(s.makerTag, QString("MARELON"));
        QCOMPARE(s.machineCode, QString("7"));
        QCOMPARE(s.stockCode, QString("21100"));
        QCOMPARE(s.stockDiameter, 14.0);
        QCOMPARE_LE(qAbs(s.params.value(814) - 14 / std::cos(M_PI / 6)), 1e-9);
        QCOMPARE(s.params.value(990), 30.0);
        QCOMPARE(s.params.value(992), 62.0);
        QCOMPARE(s.barLoaderType, 2.0);
        QCOMPARE(s.barLoaderCommand, QString("M155 X0.5 Z0.3 W2.25 R1 S800 M1"));
        QCOMPARE(s.spindles[0]->workLength, 88.0);
        for (const auto& head : s.heads)
            QCOMPARE(head->programName, QString("HEX-14"));
        QCOMPARE(saved.title, QString("HEX-14"));
        QCOMPARE(saved.simulation.stocks.size(), 1);
        const auto& stock = saved.simulation.stocks[0];
        QCOMPARE(stock->name, QString("Main Stock"));
        QCOMPARE(stock->start, 0.5);
        QCOMPARE(stock->length, 2499.5);
        const auto profile = std::find_if(saved.features.begin(), saved.features.end(),
                                          [&](const auto& f) { return f->key == stock->featureKey; });
        QVERIFY(profile != saved.features.end());
        QCOMPARE((*profile)->layer, QString("Temp"));
        QCOMPARE((*profile)->elements.size(), 7); // six sides, closed

        auto setting = [](const char* key) {
            return marelon::GetSetting(marelon::kAppName, "Data Page Settings", key, "<none>");
        };
        QCOMPARE(setting("Machine Name"), QString("7"));
        QCOMPARE(setting("Gang Holder"), QString("11"));
        QCOMPARE(setting("Magazine Bar Loader"), QString("True"));
        QCOMPARE(setting("Magazine Bar Loader Prog Type"), QString("1"));

        const QString listing = ReadText(work_ + QStringLiteral("/datapage.nc.txt"));
        for (const char* line : {"814 Bar Stock O.D.          16.1658075373095", "990 Gang Holder             30",
                                 "Bar Loader Command          M155 X0.5 Z0.3 W2.25 R1 S800 M1",
                                 "Bar Loader Type             2 (MAGAZINE, M CODE)"})
            QVERIFY2(listing.contains(QLatin1String(line)), line);
        QCOMPARE(listing.count(QStringLiteral("PROGRAM O4712 \"HEX-14\"")), 2);

        const QString next = ReadText(work_ + QStringLiteral("/next.txt"));
        for (const char* line : {"cmbMachineName=L5 16-20", "txt990=30", "txt992=62", "txt815=1.5", "cmbBarLoaderProgType=M Code"})
            QVERIFY2(next.contains(QLatin1String(line)), qPrintable(next));
        QVERIFY2(next.contains("StockTypeC=Bar"), qPrintable(next)); // the new part's own stock
        const QString reopened = ReadText(work_ + QStringLiteral("/reopened.txt"));
        for (const char* line : {"cmbMachineName=L5 16-20", "StockTypeC=Polygon", "Sides=6", "txt814=16.1658075373095",
                                 "TxtChamferDistX=0.5", "txt990=30"})
            QVERIFY2(reopened.contains(QLatin1String(line)), qPrintable(reopened));
    }
};

QTEST_GUILESS_MAIN(tst_EndToEnd)
#include "tst_EndToEnd.moc"
