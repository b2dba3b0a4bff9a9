#include "FeldraFixture.h"
#include "datapage/ParameterUpdates.h"

#include <QtTest>

using namespace feldra;

namespace {

const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);
const QLocale kGerman(QLocale::German, QLocale::Germany);
constexpr int kPoint = 903;
// What a routine gives when it leaves its field as it is.
const QString kUnchanged = QStringLiteral("(unchanged)");

QString Shown(const std::optional<QString>& text)
{
    return text.value_or(kUnchanged);
}

// One operation of a test document. Cut-off operations end their feature at
// X; every other operation has one point (kind 903) at X.
struct Op {
    int type = 0;
    QString tool;
    double x = 0;
    double spindle = 1; // "793"
    double collet = 0;  // pick-up operations
    bool suppressed = false;
    QMap<QString, QVariant> parameters = {};
};

Op CutOff(const QString& tool, double x, QMap<QString, QVariant> parameters = {{"239", 0}, {"233", 0}})
{
    return {153, tool, x, 1, 0, false, parameters};
}
Op PickUp(double collet, double x) { return {207, QString(), x, 1, collet}; }
Op Turn(const QString& tool, double x) { return {37, tool, x}; }
Op Suppressed(Op op)
{
    op.suppressed = true;
    return op;
}
Op Spindle(Op op, double spindle)
{
    op.spindle = spindle;
    return op;
}

// Tools by identifier: T1 and T3 parting tools (kinds 17 and 23) 2.5 and 3
// wide, T9 a kind-17 tool that is no parting tool, T7 and T8 with Z shifts 5
// and 10; no tool is called T0.
void PutTools(DocumentData& d)
{
    struct Spec {
        const char* id;
        int number, kind, corner;
        double width, zShift;
    };
    d.tools.clear();
    for (const Spec& s : {Spec{"T1", 1, 17, 13, 2.5, 0}, Spec{"T3", 3, 23, 14, 3, 0}, Spec{"T9", 9, 17, 2, 9, 0},
                          Spec{"T7", 7, 18, 0, 0, 5}, Spec{"T8", 8, 18, 0, 0, 10}})
        d.tools.append(fixture::make<ToolData>([&](ToolData& t) {
            t.toolId = QString::fromLatin1(s.id);
            t.number = s.number;
            t.toolType = s.kind;
            t.cornerCode = s.corner;
            t.width = s.width;
            t.zShift = s.zShift;
        }));
}

void PutOperations(DocumentData& d, const QList<Op>& ops)
{
    d.operations.clear();
    d.syncs.clear();
    for (const Op& spec : ops) {
        auto op = std::make_shared<OperationData>();
        op->id = int(d.operations.size()) + 1;
        op->key = QStringLiteral("Op%1").arg(op->id);
        op->suppressed = spec.suppressed;
        op->technology->type = spec.type;
        op->technology->colletExtension = spec.collet;
        op->technology->parameters.insert("498", {spec.tool, {}, {}});
        op->technology->parameters.insert("793", {spec.spindle, {}, {}});
        for (auto it = spec.parameters.cbegin(); it != spec.parameters.cend(); ++it)
            op->technology->parameters.insert(it.key(), {it.value(), {}, {}});
        if (spec.type == 153 || spec.type == 398) {
            op->featureKey = QStringLiteral("End%1").arg(op->id);
            d.features.append(fixture::make<FeatureData>([&](FeatureData& f) {
                f.key = op->featureKey;
                f.elements = {{0, 0, 0}, {spec.x, 0, -3}};
            }));
        } else {
            op->geometry = {{902, {Point3{-1, 0, 0}}, {}}, {kPoint, {Point3{spec.x, 0, 0}}, {}}};
        }
        d.operations.append(op);
    }
}

struct Lathe : fixture::LatheHost {
    explicit Lathe(const QList<Op>& ops, int unit = 70)
    {
        doc->data.unitSystem = unit;
        PutTools(doc->data);
        PutOperations(doc->data, ops);
    }
};

} // namespace

Q_DECLARE_METATYPE(QList<Op>)

class tst_ParameterUpdates : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(kEnglish); }

    void cutOffTool_data()
    {
        QTest::addColumn<QList<Op>>("ops");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("expected");
        QTest::newRow("the later of two") << QList{CutOff("T1", 5), Turn("T7", 1), CutOff("T3", 5)} << ""
                                          << QString("3");
        QTest::newRow("suppressed skipped") << QList{CutOff("T1", 5), Suppressed(CutOff("T3", 5))} << ""
                                            << QString("1");
        QTest::newRow("398 and 793 not 1") << QList{Op{398, "T9", 5, 0}, PickUp(1, 1)} << ""
                                           << QString("9");
        QTest::newRow("no cut-off") << QList{Turn("T1", 5)} << "" << kUnchanged;
        QTest::newRow("no such tool") << QList{CutOff("T1", 5), CutOff("T4", 5)} << "" << kUnchanged;
        QTest::newRow("tool ids unreadable") << QList{CutOff("T1", 5)} << "Tool.ToolID" << kUnchanged;
        QTest::newRow("operations unreadable") << QList{CutOff("T1", 5)} << "Operation.Suppressed" << kUnchanged;
    }
    void cutOffTool()
    {
        QFETCH(QList<Op>, ops);
        QFETCH(QString, failing);
        QFETCH(QString, expected);
        Lathe lathe(ops);
        lathe.host.Faults().Fail(failing);
        QCOMPARE(Shown(marelon::UpdateCutOffTool(*lathe.document())), expected);
    }

    void colletExtension_data()
    {
        QTest::addColumn<QList<Op>>("ops");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("expected");
        const QList<Op> two{PickUp(3.5, 0), CutOff("T1", 5), PickUp(4.25, 0), Suppressed(PickUp(9, 0))};
        QTest::newRow("the later pick-up") << two << kEnglish << "" << QString("4.25");
        QTest::newRow("German") << two << kGerman << "" << QString("4,25");
        QTest::newRow("no pick-up") << QList{CutOff("T1", 5), Suppressed(PickUp(9, 0))} << kEnglish << ""
                                    << QString("0");
        QTest::newRow("unreadable") << two << kEnglish << "Technology207.ColletExtension"
                                    << kUnchanged;
    }
    void colletExtension()
    {
        QFETCH(QList<Op>, ops);
        QFETCH(QLocale, locale);
        QFETCH(QString, failing);
        QFETCH(QString, expected);
        QLocale::setDefault(locale);
        Lathe lathe(ops);
        lathe.host.Faults().Fail(failing);
        QCOMPARE(Shown(marelon::UpdateColletExtension(*lathe.document())), expected);
    }

    void backSpindleChuckPos_data()
    {
        QTest::addColumn<QList<Op>>("ops");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("fieldText");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("collet");
        QTest::addColumn<QString>("chuck");
        QTest::addColumn<int>("pointRequests");
        const QList<Op> part{PickUp(5, -20), CutOff("T1", 5)};
        QTest::newRow("1500 - 20 + 5") << part << kEnglish << "9" << "" << QString("5")
                                       << "1,485.0000" << 1;
        QTest::newRow("German") << part << kGerman << "9" << "" << QString("5") << "1.485,0000" << 1;
        // Walking back: the first pick-up met gives the point, the last one the collet extension.
        QTest::newRow("stops once both met") << QList{CutOff("T3", 5), PickUp(7, 30), PickUp(5, 20), CutOff("T1", 5)}
                                      << kEnglish << "9" << "" << QString("5") << "1,485.0000" << 1;
        QTest::newRow("walk goes on to a pick-up") << QList{CutOff("T3", 5), PickUp(7, 30), PickUp(5, 20)} << kEnglish
                                                   << "9" << "" << QString("7") << "1,487.0000" << 1;
        QTest::newRow("no pick-up") << QList{CutOff("T1", 5)} << kEnglish << "9" << "" << kUnchanged
                                    << "0" << 1;
        QTest::newRow("no cut-off") << QList{PickUp(5, 20)} << kEnglish << "9" << "" << QString("5")
                                    << "0" << 0;
        QTest::newRow("suppressed cut-off") << QList{PickUp(5, 20), Suppressed(CutOff("T1", 5))} << kEnglish << "9"
                                            << "" << QString("5") << "0" << 0;
        QTest::newRow("field's collet, German") << part << kGerman << "2,5" << "Technology207.ColletExtension"
                                                << kUnchanged << "1.482,5000" << 1;
        QTest::newRow("field not a number") << part << kEnglish << "abc" << "Technology207.ColletExtension"
                                            << kUnchanged << "1,480.0000" << 1;
        QTest::newRow("point unreadable") << part << kEnglish << "9" << "GeometryList.Points"
                                          << QString("5") << "1,505.0000" << 1;
        QTest::newRow("point request refused") << part << kEnglish << "9" << "Document.MakePoint"
                                               << QString("5") << "1,485.0000" << 1;
    }
    void backSpindleChuckPos()
    {
        QFETCH(QList<Op>, ops);
        QFETCH(QLocale, locale);
        QFETCH(QString, fieldText);
        QFETCH(QString, failing);
        QFETCH(QString, collet);
        QFETCH(QString, chuck);
        QFETCH(int, pointRequests);
        QLocale::setDefault(locale);
        Lathe lathe(ops);
        lathe.doc->data.machineSetup.partLength = 1500;
        lathe.host.Faults().Fail(failing);
        const auto result = marelon::UpdateBackSpindleChuckPos(*lathe.document(), fieldText);
        QCOMPARE(Shown(result.colletExtension), collet);
        QCOMPARE(result.chuckPosition, chuck);
        QCOMPARE(lathe.host.Faults().CallCount("Document.MakePoint"), pointRequests);
    }

    void machiningLength_data()
    {
        QTest::addColumn<QList<Op>>("ops");
        QTest::addColumn<QString>("model");
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("setupName");
        QTest::addColumn<QString>("length818");
        QTest::addColumn<QString>("cutOff813");
        const QMap<QString, QVariant> approach232{{"239", 1}, {"232", 0.75}, {"233", 9}};
        // Cut-off at X -12.5 with T1 (2.5 wide) and an approach of 1: 16.
        const QList<Op> cut{CutOff("T1", -12.5, {{"239", 0}, {"233", 1}})};
        QTest::newRow("L5 inch over limit") << QList{Turn("T0", 8.2)} << "L5 16-20" << 70 << "" << "7.9000" << "0.0000";
        QTest::newRow("L5 mm over limit") << QList{Turn("T0", 250)} << "L5 16-20" << 71 << "" << "200.6600"
                                          << "0.0000";
        QTest::newRow("L5 mm under limit") << QList{Turn("T0", 200.5)} << "L5 16-20" << 71 << "" << "200.5000"
                                           << "0.0000";
        // The limit, exactly and one step (0.0001 of the document's unit) either side.
        QTest::newRow("L5 inch at limit") << QList{Turn("T0", 7.9)} << "L5 16-20" << 70 << "" << "7.9000" << "0.0000";
        QTest::newRow("L5 inch under limit") << QList{Turn("T0", 7.8999)} << "L5 16-20" << 70 << "" << "7.8999"
                                             << "0.0000";
        QTest::newRow("L5 inch just over limit") << QList{Turn("T0", 7.9001)} << "L5 16-20" << 70 << "" << "7.9000"
                                                 << "0.0000";
        QTest::newRow("L5 mm at limit") << QList{Turn("T0", 200.66)} << "L5 16-20" << 71 << "" << "200.6600"
                                        << "0.0000";
        QTest::newRow("L5 mm just under limit") << QList{Turn("T0", 200.6599)} << "L5 16-20" << 71 << ""
                                                << "200.6599" << "0.0000";
        QTest::newRow("L5 mm just over limit") << QList{Turn("T0", 200.6601)} << "L5 16-20" << 71 << ""
                                               << "200.6600" << "0.0000";
        QTest::newRow("B2, a 12 setup, at limit") << QList{Turn("T0", 5.31)} << "B2 12-20" << 70 << "B2-12 bar"
                                                  << "5.3100" << "0.0000";
        QTest::newRow("B2, a 12 setup, just under") << QList{Turn("T0", 5.3099)} << "B2 12-20" << 70
                                                    << "B2-12 bar" << "5.3099" << "0.0000";
        QTest::newRow("B2, a 12 setup, just over") << QList{Turn("T0", 5.3101)} << "B2 12-20" << 70
                                                   << "B2-12 bar" << "5.3100" << "0.0000";
        QTest::newRow("A20 unbounded") << QList{Turn("T0", 1500)} << "A20" << 70 << "" << "1,500.0000" << "0.0000";
        QTest::newRow("nothing qualifies") << QList{Op{100, "T1", 50}, Suppressed(Turn("T0", 50))} << "A20" << 70
                                           << "" << "0.0000" << "0.0000";
        QTest::newRow("B2, a 12 setup") << QList{Turn("T0", 6)} << "B2 12-20" << 70 << "B2-12 bar" << "5.3100"
                                        << "0.0000";
        QTest::newRow("B2, a 20 setup") << QList{Turn("T0", 6)} << "B2 12-20" << 70 << "B2-20 bar" << "6.0000"
                                        << "0.0000";
        QTest::newRow("cut-off") << cut << "A20" << 70 << "" << "16.0000" << "16.0000";
        QTest::newRow("cut-off, 239 not 0") << QList{CutOff("T3", 4, approach232)} << "A20" << 70 << ""
                                            << "7.7500" << "7.7500";
        QTest::newRow("cut-off, 793 not 1") << QList{Spindle(cut.first(), 0), Turn("T0", 3)} << "A20" << 70 << ""
                                            << "3.0000" << "0.0000";
        QTest::newRow("width carried over") << QList{CutOff("T3", 1), CutOff("T9", 10)} << "A20" << 70 << ""
                                            << "13.0000" << "13.0000";
        QTest::newRow("largest X carried over") << QList{Turn("T7", 40), Turn("T8", 30)} << "A20" << 70 << ""
                                                << "35.0000" << "0.0000";
        QTest::newRow("largest X outlives its operation") << QList{Turn("T8", 40), Turn("T0", 30)} << "A20" << 70
                                                          << "" << "40.0000" << "0.0000";
        QTest::newRow("longer turning after cut-off") << QList{cut.first(), Turn("T0", 40)} << "A20" << 70 << ""
                                                      << "40.0000" << "16.0000";
        QTest::newRow("shorter cut-off after turning") << QList{Turn("T0", 40), cut.first()} << "A20" << 70 << ""
                                                       << "40.0000" << "0.0000";
        // The back-work position is the cut-off's only when the cut-off is
        // strictly longer than every machining before it: a tie keeps the turning.
        const QMap<QString, QVariant> approach1{{"239", 0}, {"233", 1}};
        QTest::newRow("B2, cut-off ties turning") << QList{Turn("T0", 7), CutOff("T1", -3.5, approach1)}
                                                  << "B2 12-20" << 70 << "B2-20 bar" << "7.0000" << "0.0000";
        QTest::newRow("B2, cut-off a step longer") << QList{Turn("T0", 7), CutOff("T1", -3.5001, approach1)}
                                                   << "B2 12-20" << 70 << "B2-20 bar" << "7.0001" << "7.0001";
        QTest::newRow("B2, cut-off a step shorter") << QList{Turn("T0", 7), CutOff("T1", -3.4999, approach1)}
                                                    << "B2 12-20" << 70 << "B2-20 bar" << "7.0000" << "0.0000";
        QTest::newRow("793 not 1 for turning") << QList{Spindle(Turn("T0", 40), 2)} << "A20" << 70 << ""
                                               << "0.0000" << "0.0000";
    }
    void machiningLength()
    {
        QFETCH(QList<Op>, ops);
        QFETCH(QString, model);
        QFETCH(int, unit);
        QFETCH(QString, setupName);
        QFETCH(QString, length818);
        QFETCH(QString, cutOff813);
        Lathe lathe(ops, unit);
        lathe.doc->data.machineSetup.machineSetupName = setupName;
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), model, false), length818);
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), model, true), cutOff813);
    }

    // The technology types whose geometry counts, at each end of each range.
    void machiningLengthTypeRanges_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("counts");
        for (int type : {37, 44, 45, 145, 148, 150, 152, 180, 215, 253, 254, 300, 315, 317, 388, 395, 397})
            QTest::addRow("%d", type) << type << true;
        for (int type : {36, 38, 43, 46, 144, 146, 147, 179, 181, 214, 216, 252, 255, 299, 316, 318, 387, 389, 394,
                         399})
            QTest::addRow("%d", type) << type << false;
    }
    void machiningLengthTypeRanges()
    {
        QFETCH(int, type);
        QFETCH(bool, counts);
        Lathe lathe({Op{type, "T0", 40}});
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), "A20", false),
                 counts ? QString("40.0000") : QString("0.0000"));
    }

    // The points of a geometry list: kinds 902 and 903, and the points that
    // kinds 12 and 13 hold; other kinds give nothing.
    void machiningLengthGeometryKinds_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("expected");
        QTest::newRow("902") << 902 << "30.0000";
        QTest::newRow("903") << 903 << "30.0000";
        QTest::newRow("12, a line") << 12 << "30.0000";
        QTest::newRow("13, an arc") << 13 << "30.0000";
        QTest::newRow("11") << 11 << "0.0000";
        QTest::newRow("904") << 904 << "0.0000";
    }
    void machiningLengthGeometryKinds()
    {
        QFETCH(int, kind);
        QFETCH(QString, expected);
        Lathe lathe({Turn("T0", 0)});
        lathe.doc->data.operations.first()->geometry = {{kind, {Point3{-5, 0, 0}, Point3{30, 0, 0}}, {}}};
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), "A20", false), expected);
    }

    // Type 154 counts on its own spindle code and tool, and without a tool.
    void machiningLength154_data()
    {
        QTest::addColumn<int>("spindleCode");
        QTest::addColumn<int>("withoutTool");
        QTest::addColumn<QString>("expected");
        QTest::newRow("with its tool") << 1 << 0 << "30.0000";
        QTest::newRow("without tool") << 1 << 1 << "40.0000";
        QTest::newRow("other spindle") << 0 << 0 << "0.0000";
    }
    void machiningLength154()
    {
        QFETCH(int, spindleCode);
        QFETCH(int, withoutTool);
        QFETCH(QString, expected);
        Lathe lathe({Op{154, "T1", 40, 0}});
        TechnologyData& technology = *lathe.doc->data.operations.first()->technology;
        technology.spindleCode = spindleCode;
        technology.withoutTool = withoutTool;
        technology.toolId = "T8";
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), "A20", false), expected);
    }

    // A failing read drops what it would have given, and the walk goes on.
    void machiningLengthContinuesOnError_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("length818");
        QTest::addColumn<QString>("cutOff813");
        // Without a failure: the cut-off gives 12.5 + 2.5 + 1 = 16, the turning 30 - 10 = 20.
        QTest::newRow("none") << "" << "20.0000" << "16.0000";
        QTest::newRow("geometry") << "GeometryList.Points" << "16.0000" << "16.0000";
        QTest::newRow("Z shift") << "Tool.ZShift" << "30.0000" << "16.0000";
        QTest::newRow("tool kind") << "Tool.ToolType" << "20.0000" << "13.5000";
        QTest::newRow("cut-off end") << "Feature.Element" << "20.0000" << "3.5000";
        QTest::newRow("parameters") << "Technology.Parameter" << "0.0000" << "0.0000";
        QTest::newRow("operations") << "Operations.Item" << "0.0000" << "0.0000";
        QTest::newRow("unit: inch limit") << "Document.UnitSystem" << "7.9000" << "16.0000";
    }
    void machiningLengthContinuesOnError()
    {
        QFETCH(QString, failing);
        QFETCH(QString, length818);
        QFETCH(QString, cutOff813);
        Lathe lathe({CutOff("T1", -12.5, {{"239", 0}, {"233", 1}}), Turn("T8", 30)}, 71);
        lathe.host.Faults().Fail(failing);
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), "L5 16-20", false), length818);
        QCOMPARE(marelon::UpdateMachiningLength(*lathe.document(), "L5 16-20", true), cutOff813);
    }
};

QTEST_MAIN(tst_ParameterUpdates)
#include "tst_ParameterUpdates.moc"
