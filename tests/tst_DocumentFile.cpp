#include "JsonEdit.h"
#include "feldra/DocumentFile.h"
#include "feldra/JsonText.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <bit>
#include <csignal>
#include <cmath>
#include <limits>
#include <random>
#include <sys/resource.h>

using namespace feldra;

namespace {

const QString kExamples = QStringLiteral(MARELON_SOURCE_DIR "/examples");

} // namespace

// ---- deep comparison of documents, field by field --------------------------
// (in the records' namespace, so that the list templates find the records' overloads)
namespace feldra {

bool same(int a, int b) { return a == b; }
bool same(bool a, bool b) { return a == b; }
bool same(double a, double b) { return std::bit_cast<quint64>(a) == std::bit_cast<quint64>(b); }
bool same(const QString& a, const QString& b) { return a == b; }
bool same(const QJsonObject& a, const QJsonObject& b) { return a == b; }
bool same(const Point3& a, const Point3& b) { return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z); }
bool same(const QVariant& a, const QVariant& b)
{
    if (a.typeId() == QMetaType::Double && b.typeId() == QMetaType::Double)
        return same(a.toDouble(), b.toDouble());
    return a.typeId() == b.typeId() && a == b;
}
template <typename T> bool same(const std::shared_ptr<T>& a, const std::shared_ptr<T>& b) { return same(*a, *b); }
template <typename T, std::size_t N> bool same(const std::array<T, N>& a, const std::array<T, N>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), [](const T& x, const T& y) { return same(x, y); });
}
template <typename T> bool same(const QList<T>& a, const QList<T>& b)
{
    return a.size() == b.size()
           && std::equal(a.begin(), a.end(), b.begin(), [](const T& x, const T& y) { return same(x, y); });
}
template <typename K, typename T> bool same(const QMap<K, T>& a, const QMap<K, T>& b)
{
    return a.keys() == b.keys() && same(a.values(), b.values());
}

#define SAME(field) same(a.field, b.field)
bool same(const StationData& a, const StationData& b) { return SAME(number) && SAME(extra); }
bool same(const AxisLimitData& a, const AxisLimitData& b) { return SAME(name) && SAME(upperLimit) && SAME(extra); }
bool same(const TurretData& a, const TurretData& b)
{
    return SAME(number) && SAME(zOffset) && SAME(referenceZ) && SAME(stations) && SAME(axisLimits) && SAME(extra);
}
bool same(const SpindleData& a, const SpindleData& b) { return SAME(number) && SAME(name) && SAME(workLength) && SAME(extra); }
bool same(const NCHeadData& a, const NCHeadData& b)
{
    return SAME(programName) && SAME(programNumber) && SAME(outputUnit) && SAME(comment) && SAME(extra);
}
bool same(const SetupEntryData& a, const SetupEntryData& b) { return SAME(name) && SAME(extra); }
bool same(const MachineSetupData& a, const MachineSetupData& b)
{
    return SAME(makerTag) && SAME(machineCode) && SAME(machineSetupName) && SAME(stockFrontZ) && SAME(stockDiameter)
           && SAME(stockInsideDiameter) && SAME(stockLength) && SAME(partLength) && SAME(stockCode)
           && SAME(programName) && SAME(programNumber) && SAME(params) && SAME(faceAmount)
           && SAME(startupSpindleSpeed) && SAME(barLoaderDwell) && SAME(barLoaderType)
           && SAME(toolBreakageDetection) && SAME(backSpindleExtension) && SAME(barLoaderSubProgram)
           && SAME(barLoaderCommand) && SAME(setupEntries) && SAME(turrets) && SAME(spindles) && SAME(heads)
           && SAME(extra);
}
bool same(const ParameterData& a, const ParameterData& b) { return SAME(value) && SAME(caption) && SAME(extra); }
bool same(const ToolData& a, const ToolData& b)
{
    return SAME(number) && SAME(toolId) && SAME(comment) && SAME(toolType) && SAME(unitSystem) && SAME(xShift)
           && SAME(yShift) && SAME(zShift) && SAME(holderIndex) && SAME(gearRatio) && SAME(backSpindle)
           && SAME(turretNumber) && SAME(stationIndex) && SAME(spindleDirection) && SAME(mountCode)
           && SAME(centreOffset) && SAME(sideCode) && SAME(cornerCode) && SAME(width) && SAME(zCode)
           && SAME(length) && SAME(parameters) && SAME(extra);
}
bool same(const TechnologyData& a, const TechnologyData& b)
{
    return SAME(type) && SAME(parameters) && SAME(colletExtension) && SAME(spindleCode) && SAME(withoutTool)
           && SAME(toolId) && SAME(extra);
}
bool same(const CustomPropertyData& a, const CustomPropertyData& b)
{
    return SAME(name) && SAME(caption) && SAME(type) && SAME(value) && SAME(extra);
}
bool same(const GeometryEntryData& a, const GeometryEntryData& b) { return SAME(kind) && SAME(points) && SAME(extra); }
bool same(const OperationData& a, const OperationData& b)
{
    return SAME(id) && SAME(key) && SAME(name) && SAME(suppressed) && SAME(technology) && SAME(featureKey)
           && SAME(geometry) && SAME(customProperties) && SAME(extra);
}
bool same(const FeatureData& a, const FeatureData& b)
{
    return SAME(key) && SAME(layer) && SAME(elements) && SAME(customProperties) && SAME(extra);
}
bool same(const SyncNodeData& a, const SyncNodeData& b)
{
    return SAME(placement) && SAME(operationId) && SAME(reserved3) && SAME(elementIndex) && SAME(reserved5)
           && SAME(extra);
}
bool same(const SyncData& a, const SyncData& b) { return SAME(typeIndex) && SAME(nodes) && SAME(extra); }
bool same(const WorkPlaneData& a, const WorkPlaneData& b)
{
    return SAME(name) && SAME(u) && SAME(v) && SAME(w) && SAME(origin) && SAME(flag) && SAME(extra);
}
bool same(const LayerData& a, const LayerData& b) { return SAME(name) && SAME(extra); }
bool same(const AxisData& a, const AxisData& b) { return SAME(name) && SAME(enabled) && SAME(position) && SAME(extra); }
bool same(const AxisGroupData& a, const AxisGroupData& b) { return SAME(name) && SAME(axes) && SAME(extra); }
bool same(const ComponentData& a, const ComponentData& b) { return SAME(key) && SAME(position) && SAME(extra); }
bool same(const MachineModelData& a, const MachineModelData& b)
{
    return SAME(axisGroups) && SAME(components) && SAME(extra);
}
bool same(const StockData& a, const StockData& b)
{
    return SAME(name) && SAME(kind) && SAME(featureKey) && SAME(length) && SAME(start) && SAME(colour)
           && SAME(styleCode) && SAME(optionFlag) && SAME(placement) && SAME(spindle) && SAME(extra);
}
bool same(const SimulationData& a, const SimulationData& b)
{
    return SAME(machineModel) && SAME(stocks) && SAME(defaultStockColour) && SAME(extra);
}
bool same(const DocumentData& a, const DocumentData& b)
{
    return SAME(title) && SAME(machineType) && SAME(unitSystem) && SAME(machineSetup) && SAME(tools)
           && SAME(operations) && SAME(features) && SAME(syncs) && SAME(workPlanes) && SAME(activeWorkPlane)
           && SAME(layers) && SAME(simulation) && SAME(extra);
}
#undef SAME

} // namespace feldra

namespace {

// ---- one record family at a time, every value away from its default -------

const QJsonObject kUnknown{{QStringLiteral("x-note"), QJsonArray{1, QStringLiteral("kept")}}};
template <typename T> std::shared_ptr<T> make() { return std::make_shared<T>(); }

void fillDocument(DocumentData& d)
{
    d.title = QStringLiteral("Bracket ä \"B\" \\ 1/2\t\x01\n€𝄞");
    d.machineType = 3;
    d.unitSystem = 70;
    d.activeWorkPlane = QStringLiteral("Back Face");
}

void fillMachineSetup(DocumentData& d)
{
    MachineSetupData& s = d.machineSetup;
    s = {QStringLiteral("MARELON"), QStringLiteral("7"), QStringLiteral("Standard"), 0.5, 16, 4, 2500, 38.2,
         QStringLiteral("12"), QStringLiteral("P1"), 4711, {{813, 1.5}, {1000, -2}}, 0.2, 3000, 1.5, 2, 1,
         QStringLiteral("1"), QStringLiteral("9000"), QStringLiteral("M155 X16. Z2500. W41.2"), {}, {}, {}, {}, kUnknown};
}

void fillTurret(DocumentData& d)
{
    auto turret = make<TurretData>();
    *turret = {2, -12.5, 230, {make<StationData>(), make<StationData>()}, {make<AxisLimitData>()}, kUnknown};
    turret->stations[1]->number = 4;
    turret->stations[1]->extra = kUnknown;
    *turret->axisLimits[0] = {QStringLiteral("Z2"), 230.25, kUnknown};
    d.machineSetup.turrets = {turret};
}

void fillSpindleHeadEntry(DocumentData& d)
{
    d.machineSetup.spindles = {make<SpindleData>()};
    *d.machineSetup.spindles[0] = {2, QStringLiteral("Back Spindle"), 41.5, kUnknown};
    d.machineSetup.heads = {make<NCHeadData>()};
    *d.machineSetup.heads[0] = {QStringLiteral("O1000"), 1000, 70, QStringLiteral("Head 2"), kUnknown};
    d.machineSetup.setupEntries = {make<SetupEntryData>()};
    *d.machineSetup.setupEntries[0] = {QStringLiteral("G821"), kUnknown};
}

void fillTool(DocumentData& d)
{
    auto t = make<ToolData>();
    *t = {23, QStringLiteral("T23"), QStringLiteral("Back turn"), 17, 70, -20.5, 7.25, -40, 3, 1.5, 1, 2, 3, -1,
          6, 0.05, 2, 13, 2.0, 1, 55.5, {{QStringLiteral("121"), {23.0, QStringLiteral("Offset"), kUnknown}}},
          kUnknown};
    d.tools = {t};
}

void fillOperation(DocumentData& d)
{
    auto op = make<OperationData>();
    op->id = 12;
    op->key = QStringLiteral("OP12");
    op->name = QStringLiteral("Cut-Off");
    op->suppressed = true;
    *op->technology = {153,
                       {{QStringLiteral("498"), {QStringLiteral("T05"), {}, {}}},
                        {QStringLiteral("793"), {1.0, {}, {}}},
                        {QStringLiteral("flag"), {true, {}, {}}},
                        {QStringLiteral("empty"), {QVariant(), {}, {}}},
                        {QStringLiteral("nan"), {std::numeric_limits<double>::quiet_NaN(), {}, {}}}},
                       5.5, 2, 1, QStringLiteral("T22"), kUnknown};
    op->featureKey = QStringLiteral("F1");
    op->geometry = {{903, {{8, 0, -38.2}}, kUnknown}, {12, {{1, 2, 3}, {4, 5, 6}}, {}}};
    op->customProperties = {make<CustomPropertyData>(), make<CustomPropertyData>()};
    *op->customProperties[0] = {QStringLiteral("Z2Position"), QStringLiteral("Z2 Position"), 5, 180.5, kUnknown};
    *op->customProperties[1] = {QStringLiteral("Note"), QStringLiteral("Note"), 8, QStringLiteral("deburr"), {}};
    d.operations = {op};
}

void fillFeatureAndLayer(DocumentData& d)
{
    d.features = {make<FeatureData>()};
    *d.features[0] = {QStringLiteral("F1"), QStringLiteral("Back"), {{8, 0, 0}, {8, 0, -38.2}}, {}, kUnknown};
    d.layers = {make<LayerData>()};
    *d.layers[0] = {QStringLiteral("Back"), kUnknown};
}

void fillSync(DocumentData& d)
{
    fillOperation(d);
    d.syncs = {make<SyncData>()};
    d.syncs[0]->typeIndex = 3;
    d.syncs[0]->nodes[0] = {4, 12, 9, 5, 8, kUnknown};
    d.syncs[0]->nodes[3] = {1, 0, 0, 7, 0, {}};
    d.syncs[0]->extra = kUnknown;
}

void fillWorkPlane(DocumentData& d)
{
    d.workPlanes = {make<WorkPlaneData>()};
    *d.workPlanes[0] = {QStringLiteral("Cross Turret"), {0, 0, -1}, {1, 0, 0}, {0, -1, 0}, {1, 2, 3}, 4, kUnknown};
}

void fillSimulation(DocumentData& d)
{
    MachineModelData& m = d.simulation.machineModel;
    m.axisGroups = {make<AxisGroupData>()};
    m.axisGroups[0]->name = QStringLiteral("Back Spindle");
    m.axisGroups[0]->axes = {make<AxisData>()};
    *m.axisGroups[0]->axes[0] = {QStringLiteral("Z2"), false, 230, kUnknown};
    m.axisGroups[0]->extra = kUnknown;
    m.components = {make<ComponentData>()};
    *m.components[0] = {QStringLiteral("Back Spindle"), {0, 0, 230}, kUnknown};
    m.extra = kUnknown;
    d.simulation.stocks = {make<StockData>()};
    *d.simulation.stocks[0] = {QStringLiteral("Bar"), 2, QStringLiteral("F1"), 2500, 0.5, 255, 1, true,
                               {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 1, kUnknown};
    d.simulation.defaultStockColour = 0x808080;
    d.simulation.extra = kUnknown;
}

void fillSpecialDoubles(DocumentData& d)
{
    d.tools = {make<ToolData>()};
    d.tools[0]->xShift = std::numeric_limits<double>::quiet_NaN();
    d.tools[0]->yShift = std::numeric_limits<double>::infinity();
    d.tools[0]->zShift = -std::numeric_limits<double>::infinity();
    d.tools[0]->holderIndex = -0.0;
    d.tools[0]->gearRatio = std::numeric_limits<double>::denorm_min();
    d.tools[0]->width = 1.0 / 3;
    d.tools[0]->length = std::numeric_limits<double>::max();
    d.tools[0]->parameters[QStringLiteral("1")].value = -0.0;
}

struct Family {
    const char* name;
    void (*fill)(DocumentData&);
};

const Family kFamilies[] = {
    {"document", fillDocument},
    {"machine setup and its parameters", fillMachineSetup},
    {"turret, stations, axis limits", fillTurret},
    {"spindle, NC head, setup entry", fillSpindleHeadEntry},
    {"tool with its kind views and parameters", fillTool},
    {"operation, technology, geometry, custom properties", fillOperation},
    {"feature and layer", fillFeatureAndLayer},
    {"synchronisation and its nodes", fillSync},
    {"work plane", fillWorkPlane},
    {"simulation: machine model and stock", fillSimulation},
    {"doubles JSON cannot hold as numbers", fillSpecialDoubles},
};

// ---- files -------------------------------------------------------------------

QJsonObject exampleJson()
{
    QFile file(kExamples + QStringLiteral("/L5-part.fdoc"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the L5 example is missing");
    return QJsonDocument::fromJson(file.readAll()).object();
}

QByteArray text(const QJsonObject& object)
{
    return QJsonDocument(object).toJson();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_DocumentFile : public QObject {
    Q_OBJECT

private slots:
    void recordFamiliesRoundTrip_data();
    void recordFamiliesRoundTrip();
    void unknownFieldsAreKept_data();
    void unknownFieldsAreKept();
    void examplesRoundTripByteForByte_data();
    void examplesRoundTripByteForByte();
    void badValuesNameThePlace_data();
    void badValuesNameThePlace();
    void badFilesNameTheFile_data();
    void badFilesNameTheFile();
    void failedSaveLeavesTheOldFile_data();
    void failedSaveLeavesTheOldFile();
    void numbersAreWrittenAsQtWritesThem();

private:
    QTemporaryDir dir_;
};

void tst_DocumentFile::recordFamiliesRoundTrip_data()
{
    QTest::addColumn<int>("family");
    for (int i = 0; i < int(std::size(kFamilies)); ++i)
        QTest::newRow(kFamilies[i].name) << i;
}

void tst_DocumentFile::recordFamiliesRoundTrip()
{
    QFETCH(int, family);
    DocumentData original;
    kFamilies[family].fill(original);
    QVERIFY(!same(original, DocumentData()));

    const QString path = dir_.filePath(QStringLiteral("family.fdoc"));
    SaveDocument(path, original);
    const DocumentData loaded = LoadDocument(path);

    QVERIFY(same(loaded, original));
}

void tst_DocumentFile::unknownFieldsAreKept_data()
{
    QTest::addColumn<QStringList>("path");
    // Every record keeps its unknown fields alike (each family above carries
    // some); here: the top, a parameter written bare, an element of a fixed array.
    QTest::newRow("top") << QStringList{};
    QTest::newRow("bare parameter") << QStringList{"tools", "4", "parameters", "121"};
    QTest::newRow("sync node") << QStringList{"syncs", "2", "nodes", "3"};
}

void tst_DocumentFile::unknownFieldsAreKept()
{
    QFETCH(QStringList, path);
    QJsonObject json = exampleJson();
    const QJsonValue old = valueAt(json, path);
    QJsonObject record = old.isObject() ? old.toObject() : QJsonObject{{"value", old}, {"caption", "Offset"}};
    record.insert(QStringLiteral("x-future"), QJsonObject{{"nested", QJsonArray{1.5, "two", QJsonValue::Null, qint64(9007199254740993)}}});
    json = setAt(json, path, record).toObject();

    const DocumentData loaded = ReadDocument(text(json), QStringLiteral("unknown.fdoc"));
    const QJsonObject saved = QJsonDocument::fromJson(WriteDocument(loaded)).object();

    QCOMPARE(valueAt(saved, path + QStringList{"x-future"}), record.value("x-future"));
    QCOMPARE(saved, json);
}

void tst_DocumentFile::examplesRoundTripByteForByte_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("L5 part, millimetres") << QStringLiteral("L5-part.fdoc");
    QTest::newRow("pin, inches") << QStringLiteral("inch-pin.fdoc");
    QTest::newRow("M2-3 part, inches, three heads") << QStringLiteral("M2-3-part.fdoc");
    QTest::newRow("L4 part, millimetres") << QStringLiteral("L4-part.fdoc");
    QTest::newRow("new-document template") << QStringLiteral("swiss-lathe.fdt");
}

void tst_DocumentFile::examplesRoundTripByteForByte()
{
    QFETCH(QString, file);
    const QString example = kExamples + QLatin1Char('/') + file;
    const QString copy = dir_.filePath(file);

    SaveDocument(copy, LoadDocument(example));

    QCOMPARE(readFile(copy), readFile(example));
}

void tst_DocumentFile::badValuesNameThePlace_data()
{
    QTest::addColumn<QStringList>("path");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("problem");

    QTest::newRow("text for a double") << QStringList{"tools", "3", "xShift"} << QJsonValue("abc")
                                       << "tools[3].xShift" << "a number expected, found text";
    QTest::newRow("fraction for an integer") << QStringList{"operations", "0", "id"} << QJsonValue(1.5)
                                             << "operations[0].id" << "a 32-bit whole number expected";
    QTest::newRow("object for a record list") << QStringList{"machineSetup", "turrets"} << QJsonValue(QJsonObject())
                                              << "machineSetup.turrets" << "an array expected, found an object";
    QTest::newRow("array for a parameter") << QStringList{"operations", "8", "technology", "parameters", "498"}
                                           << QJsonValue(QJsonArray{1})
                                           << "operations[8].technology.parameters[\"498\"]"
                                           << "a value (a number, text, true/false or null) expected";
    QTest::newRow("point of two numbers") << QStringList{"features", "1", "elements", "2"}
                                          << QJsonValue(QJsonArray{1, 2}) << "features[1].elements[2]"
                                          << "a point [x, y, z] expected";
    QTest::newRow("unknown special double") << QStringList{"simulation", "stocks", "0", "placement", "4"}
                                            << QJsonValue("inf") << "simulation.stocks[0].placement[4]"
                                            << "a number expected";
    QTest::newRow("setup parameter not numbered") << QStringList{"machineSetup", "parameters", "81x"}
                                                  << QJsonValue(1) << "machineSetup.parameters[\"81x\"]"
                                                  << "a parameter number expected";
    QTest::newRow("sync names a missing operation") << QStringList{"syncs", "1", "nodes", "0", "operationId"}
                                                    << QJsonValue(99) << "syncs[1].nodes[0].operationId"
                                                    << "no operation has the id 99";
    QTest::newRow("operation id used twice") << QStringList{"operations", "3", "id"} << QJsonValue(1)
                                             << "operations[3].id" << "the id 1 is already used by operations[0]";
    QTest::newRow("newer version") << QStringList{"version"} << QJsonValue(2) << "version"
                                   << "version 2 is not supported";
}

void tst_DocumentFile::badValuesNameThePlace()
{
    QFETCH(QStringList, path);
    QFETCH(QJsonValue, value);
    QFETCH(QString, place);
    QFETCH(QString, problem);
    const QString file = dir_.filePath(QStringLiteral("bad.fdoc"));
    writeFile(file, text(setAt(exampleJson(), path, value).toObject()));

    try {
        LoadDocument(file);
        QFAIL("the document loaded");
    } catch (const DocumentError& error) {
        QCOMPARE(error.File(), file);
        QCOMPARE(error.Place(), place);
        QVERIFY2(error.Problem().contains(problem), qPrintable(error.Problem()));
        QCOMPARE(error.Operation(), QStringLiteral("LoadDocument"));
        QVERIFY(QString::fromStdString(error.what()).contains(file + ": " + place + ": "));
    }
}

void tst_DocumentFile::badFilesNameTheFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("problem");
    QTest::newRow("truncated") << QByteArray("{\"format\": \"feldra-document\", \"version\": 1,\n\"tools\": [{\"number\": 1,")
                               << "line 2, column 24 (offset 67)" << "";
    QTest::newRow("empty") << QByteArray() << "line 1, column 1 (offset 0)" << "";
    QTest::newRow("array at the top") << QByteArray("[1]") << "" << "a JSON object expected";
    QTest::newRow("no format") << QByteArray("{}") << "format" << "\"feldra-document\" expected";
    QTest::newRow("no version") << QByteArray("{\"format\": \"feldra-document\"}") << "version"
                                << "the schema version is missing";
    QTest::newRow("integer beyond 64 bits")
        << QByteArray("{\"format\": \"feldra-document\", \"version\": 1, \"x\": 123456789012345678901234567890}")
        << "" << "number";
    QTest::newRow("missing file") << QByteArray() << "" << "cannot be opened";
}

void tst_DocumentFile::badFilesNameTheFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, place);
    QFETCH(QString, problem);
    const QString file = dir_.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".fdoc");
    if (problem != QLatin1String("cannot be opened"))
        writeFile(file, content);

    try {
        LoadDocument(file);
        QFAIL("the document loaded");
    } catch (const DocumentError& error) {
        QCOMPARE(error.File(), file);
        QCOMPARE(error.Place(), place);
        QVERIFY2(error.Problem().contains(problem) && !error.Problem().isEmpty(), qPrintable(error.Problem()));
    }
}

void tst_DocumentFile::failedSaveLeavesTheOldFile_data()
{
    QTest::addColumn<QString>("failure");
    QTest::addColumn<QString>("problem");
    QTest::newRow("the disk refuses the bytes") << "file size limit" << "cannot be written: ";
    QTest::newRow("the document would not load again") << "dangling sync" << "no operation has the id 99";
    QTest::newRow("the folder is a file") << "folder is a file" << "cannot be written: ";
}

void tst_DocumentFile::failedSaveLeavesTheOldFile()
{
    QFETCH(QString, failure);
    QFETCH(QString, problem);
    DocumentData document = LoadDocument(kExamples + QStringLiteral("/L5-part.fdoc"));
    const QTemporaryDir dir;
    QString target = dir.filePath(QStringLiteral("old.fdoc"));
    const QByteArray old("the old document");
    writeFile(target, old);
    rlimit saved{};
    getrlimit(RLIMIT_FSIZE, &saved);

    if (failure == QLatin1String("file size limit")) {
        std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit fails instead of ending the test
        const rlimit small{4096, saved.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    } else if (failure == QLatin1String("dangling sync")) {
        document.syncs[0]->nodes[0].operationId = 99;
    } else {
        target = dir.filePath(QStringLiteral("old.fdoc/new.fdoc"));
    }

    QString reported;
    try {
        SaveDocument(target, document);
    } catch (const DocumentError& error) {
        reported = error.Problem();
    }
    setrlimit(RLIMIT_FSIZE, &saved);

    QVERIFY2(reported.startsWith(problem), qPrintable(reported));
    QCOMPARE(readFile(dir.filePath(QStringLiteral("old.fdoc"))), old);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::NoDotAndDotDot), QStringList{"old.fdoc"});
}

// The writer's own shortest-number text is Qt's, byte for byte, so that a
// saved document reads the same as before: whole numbers, decimals of every
// magnitude, thirds and random bit patterns.
void tst_DocumentFile::numbersAreWrittenAsQtWritesThem()
{
    std::mt19937_64 random(2024);
    QList<double> values{0.0, -0.0, 1e21, 1e20, 123456789012345678.0, 1e-4, 1e-5, 5e-324, 1.7976931348623157e308};
    for (int exponent = -25; exponent <= 25; ++exponent)
        for (int k = 1; k < 300; ++k)
            values << k * std::pow(10.0, exponent) << -k / 3.0 * std::pow(10.0, exponent);
    while (values.size() < 200000) {
        const std::uint64_t bits = random();
        const double value = std::bit_cast<double>(bits);
        if (std::isfinite(value))
            values << value;
    }
    for (double value : values) {
        JsonText text;
        text.Number(value);
        QByteArray written = text.Finish();
        written.chop(1); // the final line break
        const QByteArray qt = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
        if (written != qt)
            QFAIL(qPrintable(QStringLiteral("%1 written as %2").arg(QString::fromLatin1(qt), QString::fromLatin1(written))));
    }
}

QTEST_GUILESS_MAIN(tst_DocumentFile)
#include "tst_DocumentFile.moc"
