#include "FeldraFixture.h"
#include "datapage/MachineSetups.h"

#include <QtTest>

namespace {

const QString kModel = QStringLiteral("L5 16-20");

void Touch(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class tst_MachineSetups : public QObject {
    Q_OBJECT

    QTemporaryDir addIn_;
    QString folder_;

private slots:
    // An add-in folder whose model folder holds setups of both unit systems,
    // a folder and files that are no setups, and a setup of another model.
    void initTestCase()
    {
        QVERIFY(addIn_.isValid());
        folder_ = marelon::MachineSetupFolder(addIn_.path() + "/", kModel);
        QCOMPARE(folder_, addIn_.path() + "/MachineSetups/L5 16-20");
        QVERIFY(QDir().mkpath(folder_ + "/Dir_Inch.EMS"));
        QVERIFY(QDir().mkpath(addIn_.path() + "/MachineSetups/Other"));
        for (const char* name : {"Small_Metric.EMS", "Small_Inch.EMS", "small_INCH.EMS", "Bar_inch.ems",
                                 "Metric notes.txt", "_Metric.EMS", "Inch.EMS", "Standard_Metric.EMS.bak"})
            Touch(folder_ + "/" + QString::fromLatin1(name));
        Touch(addIn_.path() + "/MachineSetups/Other/Far_Inch.EMS");
    }

    void names_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("millimetres") << 71 << QStringList{"Small"};
        QTest::newRow("inches") << 70 << QStringList{"Bar", "Small", "small"};
        QTest::newRow("any other unit") << 0 << QStringList{"Bar", "Small", "small"};
    }
    void names()
    {
        QFETCH(int, unit);
        QFETCH(QStringList, expected);
        QStringList names = marelon::MachineSetupNames(folder_, unit);
        names.sort();
        QCOMPARE(names, expected);
    }

    void missingFolderIsCreated()
    {
        const QString folder = marelon::MachineSetupFolder(addIn_.path(), "A20");
        QVERIFY(marelon::MachineSetupNames(folder, 70).isEmpty());
        QVERIFY(QFileInfo(folder).isDir());
    }

    void folderErrors_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("why");
        QTest::newRow("no MachineSetups folder") << "/NoSuchAddIn/MachineSetups/L5 16-20" << "cannot be created";
        QTest::newRow("a file in its place") << "/MachineSetups/L5 16-20/Small_Inch.EMS" << "is not a folder";
    }
    void folderErrors()
    {
        QFETCH(QString, folder);
        QFETCH(QString, why);
        const QString path = addIn_.path() + folder;
        try {
            marelon::MachineSetupNames(path, 70);
            QFAIL("no error");
        } catch (const marelon::MachineSetupFolderError& error) {
            const QString message = QString::fromStdString(error.what());
            QVERIFY2(message.contains(path) && message.contains(why), qPrintable(message));
            QCOMPARE(error.Reason().arg(error.Folder()), message);
        }
    }

    void exists_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("unit");
        QTest::addColumn<bool>("expected");
        QTest::newRow("metric") << "Small" << 71 << true;
        QTest::newRow("inch") << "Small" << 70 << true;
        QTest::newRow("other unit") << "Bar" << 71 << false;
        QTest::newRow("a folder") << "Dir" << 70 << false;
        QTest::newRow("missing") << "Large" << 70 << false;
        QTest::newRow("empty") << "" << 70 << false;
        QTest::newRow("up and over") << "../Other/Far" << 70 << false;
        QTest::newRow("backslash") << "..\\Other\\Far" << 70 << false;
        QTest::newRow("below") << "sub/Small" << 70 << false;
        QTest::newRow("absolute") << addIn_.path() + "/MachineSetups/Other/Far" << 70 << false;
        QTest::newRow("dots in a name") << "Small..x" << 70 << false;
    }
    void exists()
    {
        QFETCH(QString, name);
        QFETCH(int, unit);
        QFETCH(bool, expected);
        QCOMPARE(marelon::MachineSetupExists(addIn_.path() + "/", kModel, name, unit), expected);
    }

    void path()
    {
        QCOMPARE(marelon::MachineSetupPath("/opt/Marelon/", kModel, "Standard", 71),
                 QStringLiteral("/opt/Marelon/MachineSetups/L5 16-20/Standard_Metric.EMS"));
        QCOMPARE(marelon::MachineSetupPath("/opt/Marelon/", kModel, "Standard", 70),
                 QStringLiteral("/opt/Marelon/MachineSetups/L5 16-20/Standard_Inch.EMS"));
    }

    // Loading replaces the document's setup entries with the file's and names
    // the setup; a refusal of the host stops before the name is set.
    void load_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("failing");
        QTest::addColumn<QString>("expectedName");
        const QString standard = QStringLiteral(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/Standard_Metric.EMS");
        QTest::newRow("loaded") << standard << "" << "Standard";
        QTest::newRow("entries not removed") << standard << "SetupEntries.Remove" << "before";
        QTest::newRow("file refused") << standard + ".missing" << "" << "before";
    }
    void load()
    {
        QFETCH(QString, file);
        QFETCH(QString, failing);
        QFETCH(QString, expectedName);
        fixture::LatheHost lathe;
        lathe.doc->data.machineSetup.machineSetupName = "before";
        lathe.host.Faults().Fail(failing);
        const QString failed = fixture::failingOperation([&] {
            marelon::LoadMachineSetup(*lathe.setup(), file, "Standard");
        });
        QCOMPARE(lathe.doc->data.machineSetup.machineSetupName, expectedName);
        if (expectedName == "before") {
            QVERIFY(!failed.isEmpty());
            return;
        }
        QCOMPARE(lathe.host.Faults().CallCount("SetupEntries.Remove"), 4);
        QCOMPARE(lathe.doc->data.machineSetup.setupEntries.size(), 7);
        QCOMPARE(lathe.doc->data.machineSetup.setupEntries.last()->name, QStringLiteral("M77"));
    }
};

QTEST_MAIN(tst_MachineSetups)
#include "tst_MachineSetups.moc"
