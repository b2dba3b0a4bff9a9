#include "JsonEdit.h"
#include "feldra/SetupFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

using namespace feldra;

namespace {

const QString kSetups = QStringLiteral(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/");

// A document's setup as it stands before a setup file is loaded into it.
struct Target {
    MachineSetupData setup;
    MachineModelData model;

    Target()
    {
        setup.machineSetupName = QStringLiteral("Before");
        setup.params = {{816, 5}, {819, 1}};
        setup.stockDiameter = 16;
        setup.programName = QStringLiteral("O4711");
        setup.turrets = {std::make_shared<TurretData>()};
        setup.spindles = {std::make_shared<SpindleData>()};
        setup.heads = {std::make_shared<NCHeadData>()};
        setup.setupEntries = {std::make_shared<SetupEntryData>()};
        model.axisGroups = {std::make_shared<AxisGroupData>()};
        model.components = {std::make_shared<ComponentData>()};
    }

    // The same objects in the same places (not merely equal values).
    bool untouchedSince(const Target& before) const
    {
        return setup.machineSetupName == before.setup.machineSetupName && setup.turrets == before.setup.turrets
               && setup.spindles == before.setup.spindles && setup.heads == before.setup.heads
               && setup.setupEntries == before.setup.setupEntries && model.axisGroups == before.model.axisGroups
               && model.components == before.model.components && model.extra == before.model.extra;
    }
};

QJsonObject setupJson()
{
    QFile file(kSetups + QStringLiteral("Standard_Metric.EMS"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the standard L5 setup is missing");
    return QJsonDocument::fromJson(file.readAll()).object();
}

QStringList names(const auto& items)
{
    QStringList result;
    for (const auto& item : items)
        result << item->name;
    return result;
}

} // namespace

class tst_SetupFile : public QObject {
    Q_OBJECT

private slots:
    void loadsTheMachineAndKeepsTheRest_data();
    void loadsTheMachineAndKeepsTheRest();
    void unknownFieldsStayWithTheirRecords();
    void badFilesChangeNothing_data();
    void badFilesChangeNothing();

private:
    QTemporaryDir dir_;
};

void tst_SetupFile::loadsTheMachineAndKeepsTheRest_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<double>("z2UpperLimit");
    QTest::newRow("millimetres") << "Standard_Metric.EMS" << 230.0;
    QTest::newRow("inches") << "Standard_Inch.EMS" << 9.0551;
}

void tst_SetupFile::loadsTheMachineAndKeepsTheRest()
{
    QFETCH(QString, file);
    QFETCH(double, z2UpperLimit);
    Target target;

    LoadSetupFile(kSetups + file, target.setup, target.model);

    const MachineSetupData& setup = target.setup;
    QCOMPARE(setup.machineSetupName, QStringLiteral("Standard"));
    QCOMPARE(setup.turrets.size(), 2);
    QCOMPARE(setup.turrets[1]->axisLimits[1]->upperLimit, z2UpperLimit);
    QCOMPARE(names(setup.spindles), (QStringList{"Main Spindle", "Back Spindle"}));
    QCOMPARE(setup.heads.size(), 2);
    QCOMPARE(names(setup.setupEntries).mid(0, 4), (QStringList{"G821", "G820", "G811", "G810"}));
    QCOMPARE(names(target.model.axisGroups[1]->axes), (QStringList{"X2", "Z2", "Z3"}));
    QCOMPARE(target.model.components.size(), 5);
    // what the file does not hold stays as it was
    QCOMPARE(setup.params, (QMap<int, double>{{816, 5}, {819, 1}}));
    QCOMPARE(setup.stockDiameter, 16.0);
    QCOMPARE(setup.programName, QStringLiteral("O4711"));
}

void tst_SetupFile::unknownFieldsStayWithTheirRecords()
{
    const QJsonObject note{{"coolant", "through spindle"}};
    QJsonObject json = setAt(setupJson(), {"turrets", "1", "x-note"}, note).toObject();
    json = setAt(json, {"machineModel", "x-note"}, note).toObject();
    Target target;

    ReadSetupFile(QJsonDocument(json).toJson(), QStringLiteral("note.EMS"), target.setup, target.model);

    QCOMPARE(target.setup.turrets[1]->extra, (QJsonObject{{"x-note", note}}));
    QCOMPARE(target.model.extra, (QJsonObject{{"x-note", note}}));
}

void tst_SetupFile::badFilesChangeNothing_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("problem");
    const auto edited = [](const QStringList& path, const QJsonValue& value) {
        return QJsonDocument(setAt(setupJson(), path, value).toObject()).toJson();
    };

    // Syntax, versions and value types are read as in documents (tst_DocumentFile).
    QTest::newRow("missing") << QByteArray() << "" << "cannot be opened";
    QTest::newRow("a document") << edited({"format"}, "feldra-document") << "format"
                                << "this is not a Feldra machine setup file";
    QTest::newRow("turret number twice") << edited({"turrets", "1", "number"}, 1) << "turrets[1].number"
                                         << "the number 1 is already used";
    QTest::newRow("station number twice") << edited({"turrets", "0", "stations", "7", "number"}, 3)
                                          << "turrets[0].stations[7].number" << "the number 3 is already used";
    QTest::newRow("bad model at the end") << edited({"machineModel", "components", "4", "position"}, QJsonArray{1})
                                          << "machineModel.components[4].position" << "a point [x, y, z] expected";
}

void tst_SetupFile::badFilesChangeNothing()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, place);
    QFETCH(QString, problem);
    const QString path = dir_.filePath(QString::fromLatin1(QTest::currentDataTag()) + "_Metric.EMS");
    if (!content.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    Target target;
    const Target before = target;

    try {
        LoadSetupFile(path, target.setup, target.model);
        QFAIL("the setup file loaded");
    } catch (const DocumentError& error) {
        QCOMPARE(error.File(), path);
        QCOMPARE(error.Place(), place);
        QVERIFY2(!error.Problem().isEmpty() && error.Problem().contains(problem), qPrintable(error.Problem()));
        QCOMPARE(error.Operation(), QStringLiteral("LoadSetupFile"));
    }
    QVERIFY(target.untouchedSince(before));
}

QTEST_GUILESS_MAIN(tst_SetupFile)
#include "tst_SetupFile.moc"
