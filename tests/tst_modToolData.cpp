#include "ToolDataFixture.h"

#include "addin/host/Document.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "tooldata/modToolData.h"

#include <QTest>

using namespace marelon;

namespace {

using Pair = QPair<int, int>; // tool number, offset number

QList<Pair> sortedPairs(ToolDataFixture& f)
{
    QList<Pair> result;
    for (const auto& tool : SortTools(*f.application->ActiveDocument()->Tools()))
        result << Pair(tool->Number(), int(GetToolLengthComp(*tool)));
    return result;
}

QString optionalText(const std::optional<double>& value)
{
    return value ? QString::number(*value) : QStringLiteral("kept");
}

} // namespace

class tst_modToolData : public QObject {
    Q_OBJECT

private slots:
    void sortTools_data()
    {
        QTest::addColumn<QList<Pair>>("tools");
        QTest::addColumn<QList<Pair>>("sorted");
        QTest::newRow("by number, then offset") << QList<Pair>{{5, 5}, {3, 3}, {3, 1}} << QList<Pair>{{3, 1}, {3, 3}, {5, 5}};
        QTest::newRow("no tools") << QList<Pair>{} << QList<Pair>{};
        QTest::newRow("offset above 100 runs into the next number") << QList<Pair>{{4, 0}, {3, 101}, {3, 99}}
                                                                   << QList<Pair>{{3, 99}, {4, 0}, {3, 101}};
        QTest::newRow("numbers beyond 16-bit keys") << QList<Pair>{{400, 1}, {12, 1}, {328, 0}, {327, 67}}
                                                    << QList<Pair>{{12, 1}, {327, 67}, {328, 0}, {400, 1}};
        QTest::newRow("negative numbers first") << QList<Pair>{{1, 0}, {-2, 0}} << QList<Pair>{{-2, 0}, {1, 0}};
    }
    void sortTools()
    {
        QFETCH(QList<Pair>, tools);
        QFETCH(QList<Pair>, sorted);
        ToolDataFixture f;
        for (const auto& [number, offset] : tools)
            f.AddTool(number, offset);
        QCOMPARE(sortedPairs(f), sorted);
    }

    void sortOfManyToolsIsOrdered()
    {
        ToolDataFixture f;
        for (int i = 0; i < 257; ++i)
            f.AddTool((i * 7919) % 263, (i * 31) % 17);
        const auto sorted = sortedPairs(f);
        QCOMPARE(sorted.size(), 257);
        for (int i = 1; i < sorted.size(); ++i)
            QVERIFY(sorted[i - 1].first * 100 + sorted[i - 1].second <= sorted[i].first * 100 + sorted[i].second);
    }

    void toolNumber_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<QVariant>("offset");
        QTest::addColumn<int>("key");
        QTest::newRow("12/1") << 12 << QVariant(1) << 1201;
        QTest::newRow("offset as text") << 4 << QVariant(QStringLiteral("07")) << 407;
        QTest::newRow("half to even, down") << 1 << QVariant(2.5) << 102;
        QTest::newRow("half to even, up") << 1 << QVariant(3.5) << 104;
        QTest::newRow("beyond 32 bits clamps") << 1 << QVariant(1e12) << 2147483647;
    }
    void toolNumber()
    {
        QFETCH(int, number);
        QFETCH(QVariant, offset);
        QFETCH(int, key);
        ToolDataFixture f;
        f.AddTool(number, 0)->parameters[QStringLiteral("121")].value = offset;
        QCOMPARE(ToolNumber(*f.application->ActiveDocument()->Tools()->Item(1)), key);
    }

    void toolKinds()
    {
        ToolDataFixture f;
        for (int kind : {1, 14, 15, 16, 20, 21, 23})
            f.AddTool(kind, 0, kind);
        auto tools = f.application->ActiveDocument()->Tools();
        QList<bool> mill;
        for (int i = 1; i <= tools->Count(); ++i) {
            mill << IsMillTool(*tools->Item(i));
            QCOMPARE(IsLatheTool(*tools->Item(i)), !mill.last());
        }
        QCOMPARE(mill, (QList<bool>{true, true, false, false, true, false, false}));
    }

    void toolShift_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("mount");
        QTest::addColumn<int>("side");
        QTest::addColumn<int>("corner");
        QTest::addColumn<int>("zCode");
        QTest::addColumn<QString>("x");
        QTest::addColumn<QString>("z");
        QTest::addColumn<QString>("y");
        // Every tool: centre offset 0.3 (0.5 for 17/23), width 2, length 3.
        QTest::newRow("16 centre mount") << 16 << 10 << 0 << 0 << 0 << "0.6" << "0" << "0";
        QTest::newRow("21 centre mount") << 21 << 10 << 0 << 0 << 0 << "0.6" << "0" << "0";
        QTest::newRow("22 other mount") << 22 << 0 << 0 << 0 << 0 << "0" << "0" << "0";
        QTest::newRow("17 side 1 corner 11") << 17 << 10 << 1 << 11 << 0 << "1" << "-2" << "0";
        QTest::newRow("17 side 1 corner 13") << 17 << 0 << 1 << 13 << 0 << "0" << "-0.5" << "0";
        QTest::newRow("17 side 2 corner 14") << 17 << 0 << 2 << 14 << 0 << "0" << "0" << "0";
        QTest::newRow("17 side 2 corner 12") << 17 << 0 << 2 << 12 << 0 << "0" << "1.5" << "0";
        QTest::newRow("23 side 1 other corner") << 23 << 10 << 1 << 15 << 0 << "1" << "kept" << "kept";
        QTest::newRow("23 other side") << 23 << 0 << 3 << 12 << 0 << "0" << "0" << "0";
        QTest::newRow("18 Z from half length") << 18 << 0 << 0 << 0 << 2 << "0" << "-1.5" << "kept";
        QTest::newRow("18 other Z code") << 18 << 0 << 0 << 0 << 1 << "0" << "kept" << "0";
        QTest::newRow("18 centre mount keeps X") << 18 << 10 << 0 << 0 << 1 << "kept" << "kept" << "0";
        QTest::newRow("19 centre mount keeps X") << 19 << 10 << 0 << 0 << 2 << "kept" << "-3" << "kept";
        QTest::newRow("milling kind") << 5 << 10 << 1 << 11 << 2 << "0" << "0" << "0";
        QTest::newRow("lathe kind without a view") << 24 << 10 << 1 << 11 << 2 << "0" << "0" << "0";
    }
    void toolShift()
    {
        QFETCH(int, kind);
        QFETCH(int, mount);
        QFETCH(int, side);
        QFETCH(int, corner);
        QFETCH(int, zCode);
        QFETCH(QString, x);
        QFETCH(QString, z);
        QFETCH(QString, y);
        ToolDataFixture f;
        auto data = f.AddTool(1, 1, kind);
        data->mountCode = mount;
        data->sideCode = side;
        data->cornerCode = corner;
        data->zCode = zCode;
        data->centreOffset = (kind == 17 || kind == 23) ? 0.5 : 0.3;
        data->width = 2;
        data->length = 3;
        const auto shift = ToolShiftFromGeometry(*f.application->ActiveDocument()->Tools()->Item(1));
        QCOMPARE(optionalText(shift.x), x);
        QCOMPARE(optionalText(shift.z), z);
        QCOMPARE(optionalText(shift.y), y);
    }
};

QTEST_MAIN(tst_modToolData)
#include "tst_modToolData.moc"
