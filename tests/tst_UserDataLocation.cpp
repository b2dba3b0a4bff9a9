// The add-in's data files where the add-in's folder cannot be written: changes
// go to the user's own copy, which is read first from then on; the shipped
// file stays as it was.
#include "DataPageFixture.h"
#include "ToolDataFixture.h"

#include "addin/settings/UserDataLocation.h"
#include "datapage/MachineSetups.h"
#include "tooldata/frmEditHolder.h"
#include "tooldata/frmNewHolder.h"
#include "tooldata/frmToolData.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <optional>

#include <unistd.h>

using namespace marelon;

namespace {

const QString kL5 = QStringLiteral("L5-16-20 ToolHolders.txt");
const QByteArray kShipped = "\"GTF5101\",\"Gang 1\",1.5,0.5,0.25,-1,1,2\r\n"
                            "\"GDB5101\",\"Back drill\",-0.1,-1.6,0,1,2,3\r\n";

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void write(const QString& path, const QByteArray& contents)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
}

constexpr QFileDevice::Permissions kReadOnly =
    QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::ReadGroup | QFileDevice::ExeGroup
    | QFileDevice::ReadOther | QFileDevice::ExeOther;

// Takes every write permission from a folder (chmod a-w), and gives it back.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(QString folder) : folder_(std::move(folder))
    {
        before_ = QFile::permissions(folder_);
        QFile::setPermissions(folder_, kReadOnly);
    }
    ~ReadOnlyFolder() { QFile::setPermissions(folder_, before_); }

private:
    QString folder_;
    QFileDevice::Permissions before_;
};

void setText(QWidget& form, const char* name, const QString& value)
{
    auto* field = form.findChild<QLineEdit*>(QString::fromLatin1(name));
    field->setText(value);
}

} // namespace

class tst_UserDataLocation : public QObject {
    Q_OBJECT

private slots:
    void init() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void writableFolder()
    {
        QTemporaryDir dir;
        QVERIFY(IsWritableFolder(dir.path()));
        QVERIFY(!IsWritableFolder(dir.path() + QStringLiteral("/missing")));
        write(dir.path() + QStringLiteral("/file"), "x");
        QVERIFY(!IsWritableFolder(dir.path() + QStringLiteral("/file")));
        // Read-only for everybody: refused even where the system would let the
        // super-user write.
        ReadOnlyFolder readOnly(dir.path());
        QVERIFY(!IsWritableFolder(dir.path()));
    }

    // Where a change goes, by what exists and what can be written.
    void pathForChange_data()
    {
        QTest::addColumn<bool>("shippedExists");
        QTest::addColumn<bool>("folderWritable");
        QTest::addColumn<bool>("fileWritable");
        QTest::addColumn<bool>("userCopy");
        QTest::addColumn<QString>("target");       // "shipped" or "user"
        QTest::addColumn<QByteArray>("userBefore"); // the user's file when the change begins
        QTest::newRow("a developer's build: in place") << true << true << true << false << "shipped" << QByteArray("<missing>");
        QTest::newRow("installed: a copy of the shipped file") << true << false << true << false << "user" << kShipped;
        QTest::newRow("a read-only file in a writable folder") << true << true << false << false << "user" << kShipped;
        QTest::newRow("the user's copy, once there, always") << true << true << true << true << "user" << QByteArray("own\r\n");
        QTest::newRow("installed, not shipped: a fresh file") << false << false << true << false << "user" << QByteArray("<missing>");
        QTest::newRow("not shipped, writable: in place") << false << true << true << false << "shipped" << QByteArray("<missing>");
    }

    void pathForChange()
    {
        QFETCH(bool, shippedExists);
        QFETCH(bool, folderWritable);
        QFETCH(bool, fileWritable);
        QFETCH(bool, userCopy);
        QFETCH(QString, target);
        QFETCH(QByteArray, userBefore);
        TempStores stores;
        QTemporaryDir addIn;
        const QString folder = addIn.path() + QStringLiteral("/ToolHolders");
        QDir().mkpath(folder);
        const UserDataFile file(addIn.path() + QLatin1Char('/'), kHolderFolder + kL5);
        QCOMPARE(file.ShippedPath(), folder + QLatin1Char('/') + kL5);
        QCOMPARE(file.UserPath(), stores.UserDataDir() + QStringLiteral("/ToolHolders/") + kL5);
        if (shippedExists)
            write(file.ShippedPath(), kShipped);
        if (!fileWritable)
            QFile::setPermissions(file.ShippedPath(), QFileDevice::ReadOwner | QFileDevice::ReadGroup);
        if (userCopy)
            write(file.UserPath(), "own\r\n");
        QCOMPARE(file.ReadPath(), userCopy ? file.UserPath() : file.ShippedPath());

        std::optional<ReadOnlyFolder> readOnly;
        if (!folderWritable)
            readOnly.emplace(folder);
        const QString path = file.PathForChange();
        QCOMPARE(path, target == QLatin1String("user") ? file.UserPath() : file.ShippedPath());
        QCOMPARE(readAll(file.UserPath()), userBefore);
        QCOMPARE(file.ReadPath(), QFileInfo::exists(file.UserPath()) ? file.UserPath() : file.ShippedPath());
        if (path == file.UserPath() && QFileInfo::exists(path))
            QVERIFY(QFileInfo(path).isWritable()); // the copy of a read-only file is the user's to change
        if (shippedExists)
            QCOMPARE(readAll(file.ShippedPath()), kShipped);
    }

    // No copy can be made where the user's data folder cannot be written: no
    // file to change, and nothing is changed.
    void noCopyNoChange()
    {
        if (geteuid() == 0)
            QSKIP("the super-user writes into any folder");
        TempStores stores;
        QTemporaryDir addIn;
        write(addIn.path() + QStringLiteral("/ToolHolders/") + kL5, kShipped);
        QDir().mkpath(stores.UserDataDir());
        ReadOnlyFolder shipped(addIn.path() + QStringLiteral("/ToolHolders"));
        ReadOnlyFolder user(stores.UserDataDir());
        const UserDataFile file(addIn.path(), kHolderFolder + kL5);
        QCOMPARE(file.PathForChange(), QString());
        QVERIFY(!AppendHolder(file.PathForChange(), HolderRecord{QStringLiteral("X"), QStringLiteral("Y")}));
        QCOMPARE(readAll(file.ShippedPath()), kShipped);
    }

    // The machine setups: the user's folder first, the add-in's after it; the
    // user's folder takes the place of an add-in folder that cannot be made.
    void setupFolders_data()
    {
        QTest::addColumn<bool>("userFolder");
        QTest::addColumn<bool>("shippedFolder");
        QTest::addColumn<bool>("addInWritable");
        QTest::addColumn<QStringList>("folders");
        QTest::newRow("shipped only") << false << true << false << QStringList{"addin"};
        QTest::newRow("the user's, then shipped") << true << true << false << QStringList{"user", "addin"};
        QTest::newRow("none, add-in writable: made there") << false << false << true << QStringList{"addin"};
        QTest::newRow("none, add-in read-only: the user's") << false << false << false << QStringList{"user"};
        QTest::newRow("the user's, add-in read-only") << true << false << false << QStringList{"user"};
    }

    void setupFolders()
    {
        QFETCH(bool, userFolder);
        QFETCH(bool, shippedFolder);
        QFETCH(bool, addInWritable);
        QFETCH(QStringList, folders);
        TempStores stores;
        QTemporaryDir addIn;
        const QString model = QStringLiteral("L5 16-20");
        const QString user = stores.UserDataDir() + QStringLiteral("/MachineSetups/") + model;
        const QString shipped = addIn.path() + QStringLiteral("/MachineSetups/") + model;
        QDir().mkpath(addIn.path() + QStringLiteral("/MachineSetups"));
        if (userFolder)
            QDir().mkpath(user);
        if (shippedFolder)
            QDir().mkpath(shipped);
        std::optional<ReadOnlyFolder> readOnly;
        if (!addInWritable)
            readOnly.emplace(addIn.path() + QStringLiteral("/MachineSetups"));
        QStringList expected;
        for (const QString& which : folders)
            expected << (which == QLatin1String("user") ? user : shipped);
        const QStringList found = MachineSetupFolders(addIn.path(), model);
        QCOMPARE(found, expected);
        for (const QString& folder : found)
            QVERIFY(MachineSetupNames(folder, 71).isEmpty()); // listable: made where it was missing
    }

    // A setup the user keeps under a shipped setup's name is the one loaded.
    void usersSetupIsReadFirst()
    {
        TempStores stores;
        QTemporaryDir addIn;
        const QString model = QStringLiteral("M2-3 20-32");
        write(addIn.path() + QStringLiteral("/MachineSetups/M2-3 20-32/Standard_Inch.EMS"), "{}");
        write(addIn.path() + QStringLiteral("/MachineSetups/M2-3 20-32/Standard_Metric.EMS"), "{}");
        write(stores.UserDataDir() + QStringLiteral("/MachineSetups/M2-3 20-32/Standard_Metric.EMS"), "{}");
        write(stores.UserDataDir() + QStringLiteral("/MachineSetups/M2-3 20-32/Mine_Metric.EMS"), "{}");
        QCOMPARE(MachineSetupPath(addIn.path(), model, QStringLiteral("Standard"), 71),
                 stores.UserDataDir() + QStringLiteral("/MachineSetups/M2-3 20-32/Standard_Metric.EMS"));
        QCOMPARE(MachineSetupPath(addIn.path(), model, QStringLiteral("Standard"), 70),
                 addIn.path() + QStringLiteral("/MachineSetups/M2-3 20-32/Standard_Inch.EMS"));
        QVERIFY(MachineSetupExists(addIn.path(), model, QStringLiteral("Mine"), 71));
        QVERIFY(!MachineSetupExists(addIn.path(), model, QStringLiteral("Mine"), 70));
        QVERIFY(!MachineSetupExists(addIn.path(), model, QStringLiteral("../Mine"), 71));
    }

    // The Data Page lists the user's own setups first and a shipped name once;
    // Load takes the user's file.
    void dataPageListsTheUsersSetupsFirst()
    {
        DataPageFixture f; // inches
        const QByteArray setup = readAll(QStringLiteral(MARELON_SOURCE_DIR "/data/MachineSetups/L5 16-20/Standard_Inch.EMS"));
        f.AddSetupFile(QStringLiteral("L5 16-20"), QStringLiteral("Standard_Inch.EMS"));
        f.AddSetupFile(QStringLiteral("L5 16-20"), QStringLiteral("Small_Inch.EMS"));
        const QString own = f.stores.UserDataDir() + QStringLiteral("/MachineSetups/L5 16-20/");
        write(own + QStringLiteral("Mine_Inch.EMS"), setup);
        write(own + QStringLiteral("Standard_Inch.EMS"), setup);
        f.Open();
        f.SelectModel(QStringLiteral("L5 16-20"));
        QComboBox& setups = f.List(QStringLiteral("cmbMachineSetup"));
        QStringList entries;
        for (int i = 0; i < setups.count(); ++i)
            entries << setups.itemText(i);
        QCOMPARE(entries.size(), 4);
        QStringList ownNames = entries.mid(1, 2);
        ownNames.sort();
        QCOMPARE(ownNames, (QStringList{"Mine", "Standard"}));
        QCOMPARE(entries.last(), QStringLiteral("Small"));

        setups.setEditText(QStringLiteral("Standard")); // the shipped one is "{}": only the user's loads
        f.Control<QAbstractButton>(QStringLiteral("cmdRefresh")).click();
        QVERIFY(f.messages->Messages().isEmpty());
        QVERIFY(f.host.Log().FailedCallbacks().isEmpty());
        QCOMPARE(f.document->data.machineSetup.machineSetupName, QStringLiteral("Standard"));
        QVERIFY(!f.document->data.machineSetup.turrets.isEmpty());
    }

    // Tool Data on an installed add-in: New, Edit and Del change the user's
    // own copy (with its .bak, in Windows-1252), the title says which library
    // is shown, and the shipped file keeps every byte.
    void toolDataChangesTheUsersCopy()
    {
        ToolDataFixture f;
        f.WriteLibrary(kL5, kShipped);
        const QString shipped = f.LibraryPath(kL5);
        const QString copy = f.stores.UserDataDir() + QStringLiteral("/ToolHolders/") + kL5;
        ReadOnlyFolder readOnly(f.addIn.path() + QStringLiteral("/ToolHolders"));

        frmToolData form(f.application);
        QCOMPARE(form.windowTitle(), QStringLiteral("Tool Data - L5-16-20 ToolHolders.txt (shipped with the add-in)"));
        QCOMPARE(form.ToolDataFile(), shipped);

        whenModal<frmNewHolder>([](frmNewHolder& dialog) {
            setText(dialog, "txtHolderName", QStringLiteral("GDB5190"));
            setText(dialog, "txtHolderDesc", QStringLiteral("Bohrhalter \u00e9"));
            dialog.findChild<QPushButton*>("cmdOK")->click();
        });
        form.cmdNew_Click();
        QCOMPARE(form.ToolDataFile(), copy);
        QCOMPARE(form.windowTitle(), QStringLiteral("Tool Data - L5-16-20 ToolHolders.txt (your own copy)"));
        QCOMPARE(form.HolderTable().size(), 3);
        QVERIFY(readAll(copy).endsWith("\"GDB5190\",\"Bohrhalter \xe9\",0,0,0,-1,1,1\r\n"));
        QCOMPARE(readAll(copy + QStringLiteral(".bak")), kShipped);

        auto* holders = form.findChild<QComboBox*>(QStringLiteral("cmbHolders"));
        holders->setCurrentIndex(0);
        whenModal<frmEditHolder>([](frmEditHolder& dialog) {
            setText(dialog, "txtHolderDesc", QStringLiteral("Gang 1, changed"));
            dialog.cmdOK_Click();
        });
        form.cmdEdit_Click();
        QCOMPARE(form.HolderTable().first().description, QStringLiteral("Gang 1, changed"));
        holders->setCurrentIndex(2);
        form.cmdDelete_Click();
        QCOMPARE(form.HolderTable().size(), 2);
        QVERIFY(readAll(copy + QStringLiteral(".bak")).contains("GDB5190"));
        QVERIFY(!readAll(copy).contains("GDB5190"));

        QCOMPARE(readAll(shipped), kShipped);
        QVERIFY(!QFileInfo::exists(shipped + QStringLiteral(".bak")));

        // Opened again, Tool Data shows the user's copy.
        frmToolData again(f.application);
        QCOMPARE(again.ToolDataFile(), copy);
        QCOMPARE(again.HolderTable().first().description, QStringLiteral("Gang 1, changed"));
    }

    // Removing the user's copy goes back to the shipped library; where the
    // add-in's folder can be written (a developer's build) changes stay there.
    void backToTheShippedLibrary()
    {
        ToolDataFixture f;
        f.WriteLibrary(kL5, kShipped);
        const QString copy = f.stores.UserDataDir() + QStringLiteral("/ToolHolders/") + kL5;
        write(copy, "\"OWN\",\"Own holder\",0,0,0,0,1,1\r\n");
        {
            frmToolData form(f.application);
            QCOMPARE(form.HolderTable().size(), 1);
        }
        QFile::remove(copy);
        frmToolData form(f.application);
        QCOMPARE(form.HolderTable().size(), 2);
        form.findChild<QComboBox*>(QStringLiteral("cmbHolders"))->setCurrentIndex(0);
        form.cmdDelete_Click();
        QCOMPARE(readAll(f.LibraryPath(kL5)), kShipped.mid(kShipped.indexOf('\n') + 1));
        QVERIFY(!QFileInfo::exists(copy));
        QCOMPARE(form.windowTitle(), QStringLiteral("Tool Data - L5-16-20 ToolHolders.txt (shipped with the add-in)"));
    }
};

QTEST_MAIN(tst_UserDataLocation)
#include "tst_UserDataLocation.moc"
