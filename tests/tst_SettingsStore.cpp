#include "TempStores.h"

#include "addin/settings/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <memory>

using namespace marelon;

class tst_SettingsStore : public QObject {
    Q_OBJECT

private slots:
    void init() { stores_ = std::make_unique<TempStores>(); }
    void cleanup() { stores_.reset(); }

    void roundTrip_data()
    {
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::newRow("warning") << "NC Code Dialog" << "Don't Show" << "1";
        QTest::newRow("General section") << "General" << "Machine Name" << "3";
        QTest::newRow("empty") << "Auto Sync" << "Machine Name" << "";
        QTest::newRow("blanks around") << "Auto Sync" << "Machine Name" << "  7 ";
        QTest::newRow("list-like") << "Auto Sync" << "Machine Name" << "1,2";
        QTest::newRow("at sign") << "Auto Sync" << "Machine Name" << "@ByteArray(x)";
        QTest::newRow("INI syntax") << "Auto Sync" << "Machine Name" << "[a]=b;c #d \"e\" \\f";
        QTest::newRow("line break") << "Auto Sync" << "Machine Name" << "a\nb";
        QTest::newRow("unicode") << "Auto Sync" << "Machine Name" << "Ü € 丸";
        QTest::newRow("key punctuation") << "Sect=ion;[x]" << "K%y \"q\" #1" << "v";
    }

    void roundTrip()
    {
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        QVERIFY(SaveSetting(kAppName, section, key, value));
        QCOMPARE(GetSetting(kAppName, section, key, "default"), value);

        // The text survives the file: read back from a copy in a new folder.
        const QString file = stores_->SettingsDir() + QStringLiteral("/Marelon Add-In.ini");
        const QString copyFolder = stores_->Path() + QStringLiteral("/copy");
        QVERIFY(QDir().mkpath(copyFolder));
        QVERIFY(QFile::copy(file, copyFolder + QStringLiteral("/Marelon Add-In.ini")));
        qputenv("MARELON_SETTINGS_DIR", copyFolder.toLocal8Bit());
        QCOMPARE(GetSetting(kAppName, section, key, "default"), value);
    }

    void addressIsExact()
    {
        QVERIFY(SaveSetting(kAppName, "Data Page Settings", "Chamfer Dist X", "1"));
        QCOMPARE(GetSetting(kAppName, "Data Page Settings", "Chamfer Dist X", "0"), QStringLiteral("1"));
        QCOMPARE(GetSetting(kAppName, "Data Page Settings", "Chamf Dist Z", "0"), QStringLiteral("0"));
        QCOMPARE(GetSetting(kAppName, "Auto Sync", "Chamfer Dist X", "0"), QStringLiteral("0"));
        QCOMPARE(GetSetting("Other Application", "Data Page Settings", "Chamfer Dist X", "0"),
                 QStringLiteral("0"));
        QVERIFY(SaveSetting(kAppName, "Data Page Settings", "Chamfer Dist X", "2"));
        QCOMPARE(GetSetting(kAppName, "Data Page Settings", "Chamfer Dist X", "0"), QStringLiteral("2"));
    }

    void damagedFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("binary") << QByteArray("\0\xff\xfe[[[=]]\n\x01", 12);
        QTest::newRow("broken group") << QByteArray("[NC%20Code%20Dialog\nfoo\n");
        QTest::newRow("not text") << QByteArray("[NC%20Code%20Dialog]\nDon%27t%20Show=@Variant(\\0\\0)\n");
        QTest::newRow("list") << QByteArray("[NC%20Code%20Dialog]\nDon%27t%20Show=1,2\n");
    }

    void damagedFile()
    {
        QFETCH(QByteArray, content);
        QVERIFY(QDir().mkpath(stores_->SettingsDir()));
        QFile file(stores_->SettingsDir() + QStringLiteral("/Marelon Add-In.ini"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        QCOMPARE(GetSetting(kAppName, "NC Code Dialog", "Don't Show", "0"), QStringLiteral("0"));
        QVERIFY(SaveSetting(kAppName, "NC Code Dialog", "Don't Show", "1"));
        QCOMPARE(GetSetting(kAppName, "NC Code Dialog", "Don't Show", "0"), QStringLiteral("1"));
    }

    void unusableStore_data()
    {
        QTest::addColumn<QString>("folderInTheWay");
        QTest::addColumn<QString>("fileInTheWay");
        QTest::newRow("file is a folder") << "/settings/Marelon Add-In.ini" << "";
        QTest::newRow("folder is a file") << "" << "/settings";
    }

    void unusableStore()
    {
        QFETCH(QString, folderInTheWay);
        QFETCH(QString, fileInTheWay);
        if (!folderInTheWay.isEmpty())
            QVERIFY(QDir().mkpath(stores_->Path() + folderInTheWay));
        if (!fileInTheWay.isEmpty()) {
            QFile file(stores_->Path() + fileInTheWay);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(!SaveSetting(kAppName, "Auto Sync", "Machine Name", "4"));
        QCOMPARE(GetSetting(kAppName, "Auto Sync", "Machine Name", "0"), QStringLiteral("0"));
    }

private:
    std::unique_ptr<TempStores> stores_;
};

QTEST_GUILESS_MAIN(tst_SettingsStore)
#include "tst_SettingsStore.moc"
