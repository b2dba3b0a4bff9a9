#include "TempStores.h"

#include "registry/FileRegistryHive.h"
#include "addin/settings/cRegistry.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <functional>
#include <limits>
#include <memory>

using namespace marelon;

using Action = std::function<void(cRegistry&)>;

namespace {

const QString kSection = QStringLiteral("Software\\Marelon Test\\Values");

cRegistry At(const QString& section, const QString& name = QString(), std::int32_t type = kRegSz)
{
    cRegistry registry;
    registry.setClassKey(kHKeyCurrentUser);
    registry.setSectionKey(section);
    registry.setValueKey(name);
    registry.setValueType(type);
    registry.setDefault(QStringLiteral("default"));
    return registry;
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void WriteFile(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

class tst_cRegistry : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        stores_ = std::make_unique<TempStores>();
        qputenv("MARELON_TEST_DIR", "/opt/marelon");
    }
    void cleanup() { stores_.reset(); }

    void roundTrip_data()
    {
        QTest::addColumn<int>("writeType");
        QTest::addColumn<QVariant>("written");
        QTest::addColumn<int>("storedType");
        QTest::addColumn<QVariant>("read");
        QTest::newRow("text") << 1 << QVariant("Chamf Dist Z") << 1 << QVariant("Chamf Dist Z");
        QTest::newRow("unicode text") << 1 << QVariant("Ü € 丸") << 1 << QVariant("Ü € 丸");
        QTest::newRow("number as text") << 1 << QVariant(42) << 1 << QVariant("42");
        QTest::newRow("adjacent percents") << 2 << QVariant("a%%b") << 1 << QVariant("a%%b");
        QTest::newRow("reference") << 1 << QVariant("%MARELON_TEST_DIR%\\bin") << 2
                                   << QVariant("/opt/marelon\\bin");
        QTest::newRow("one char between") << 1 << QVariant("%x%") << 2 << QVariant("%x%");
        QTest::newRow("bytes") << 3 << QVariant(QByteArray("\0\1\xff", 3)) << 3
                               << QVariant(QByteArray("\0\1\xff", 3));
        QTest::newRow("dword") << 4 << QVariant(42) << 4 << QVariant(42);
        QTest::newRow("unsigned maximum") << 4 << QVariant(4294967295LL) << 4 << QVariant(-1);
        QTest::newRow("big-endian written as dword") << 5 << QVariant(258) << 4 << QVariant(258);
    }

    void roundTrip()
    {
        QFETCH(int, writeType);
        QFETCH(QVariant, written);
        QFETCH(int, storedType);
        QFETCH(QVariant, read);
        At(kSection, QStringLiteral("Value Name"), writeType).setValue(written);

        cRegistry reader = At(kSection, QStringLiteral("value name"), kRegNone);
        QCOMPARE(reader.Value(), read);
        QCOMPARE(reader.ValueType(), storedType);
    }

    void storedTypesAreDecoded_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QVariant>("read");
        QTest::newRow("big-endian") << 5 << QByteArray("\0\0\1\2", 4) << QVariant(258);
        QTest::newRow("big-endian high bit") << 5 << QByteArray("\x80\0\0\0", 4)
                                             << QVariant(std::numeric_limits<int>::min());
        QTest::newRow("string list keeps inner zeros") << 7 << TextData(QString::fromUtf16(u"a\0b\0", 4))
                                                       << QVariant(QString::fromUtf16(u"a\0b\0", 4));
        QTest::newRow("text without terminator") << 1 << QByteArray("h\0i\0", 4) << QVariant("hi");
        QTest::newRow("other type as bytes") << 11 << QByteArray("\1\2\3\4\5\6\7\x08", 8)
                                             << QVariant(QByteArray("\1\2\3\4\5\6\7\x08", 8));
    }

    void storedTypesAreDecoded()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, data);
        QFETCH(QVariant, read);
        FileRegistryHive hive(stores_->RegistryDir());
        QVERIFY(hive.CreateKey(kHKeyCurrentUser, kSection));
        QVERIFY(hive.SetValue(kHKeyCurrentUser, kSection, QStringLiteral("v"), {type, data}));
        // A second hive object reads the value back from the file.
        QCOMPARE(FileRegistryHive(stores_->RegistryDir()).QueryValue(kHKeyCurrentUser, kSection, "v"),
                 std::optional(RegistryValue{type, data}));
        cRegistry reader = At(kSection, QStringLiteral("v"));
        QCOMPARE(reader.Value(), read);
        QCOMPARE(reader.ValueType(), type);
    }

    void expandEnvironmentReferences_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expanded");
        QTest::newRow("twice") << "%MARELON_TEST_DIR%%MARELON_TEST_DIR%" << "/opt/marelon/opt/marelon";
        QTest::newRow("unset then set") << "%NO_SUCH_VAR%MARELON_TEST_DIR%"
                                        << "%NO_SUCH_VAR/opt/marelon";
        QTest::newRow("empty name") << "%%MARELON_TEST_DIR%" << "%/opt/marelon";
        QTest::newRow("unclosed") << "x%MARELON_TEST_DIR" << "x%MARELON_TEST_DIR";
    }

    void expandEnvironmentReferences()
    {
        QFETCH(QString, text);
        QFETCH(QString, expanded);
        QCOMPARE(ExpandEnvironmentReferences(text), expanded);
    }

    void missingValueGivesDefault()
    {
        QCOMPARE(At(kSection, QStringLiteral("nothing")).Value(), QVariant("default"));
        At(kSection, QStringLiteral("other")).setValue(QStringLiteral("x"));
        QCOMPARE(At(kSection, QStringLiteral("nothing")).Value(), QVariant("default"));
        cRegistry noRoot = At(kSection, QStringLiteral("other"));
        noRoot.setClassKey(12345);
        QCOMPARE(noRoot.Value(), QVariant("default"));
    }

    void keysAndEnumeration()
    {
        cRegistry key = At(QStringLiteral("Software\\Marelon Test"));
        QVERIFY(!key.KeyExists());
        key.CreateKey();
        QVERIFY(key.KeyExists());
        At(kSection, QStringLiteral("Don't Show")).setValue(QStringLiteral("1"));
        At(kSection, QStringLiteral("Chamf Dist Z")).setValue(QStringLiteral("0"));
        At(QStringLiteral("Software\\Marelon Test\\Other")).CreateKey();

        QStringList names;
        int count = -1;
        QVERIFY(At(QStringLiteral("SOFTWARE\\marelon test\\values\\")).EnumerateValues(names, count));
        QCOMPARE(names, QStringList({"Chamf Dist Z", "Don't Show"}));
        QCOMPARE(count, 2);
        QVERIFY(key.EnumerateSections(names, count));
        QCOMPARE(names, QStringList({"Other", "Values"}));
        QCOMPARE(count, 2);
        QVERIFY(!At(QStringLiteral("Software\\Missing")).EnumerateSections(names, count));
        QCOMPARE(count, 0);

        At(kSection, QStringLiteral("don't show")).DeleteValue();
        QVERIFY(key.EnumerateSections(names, count));
        QVERIFY(At(kSection).EnumerateValues(names, count));
        QCOMPARE(names, QStringList({"Chamf Dist Z"}));
        At(QStringLiteral("Software\\Marelon Test\\Other")).DeleteKey();
        QVERIFY(!At(QStringLiteral("Software\\Marelon Test\\Other")).KeyExists());
    }

    void errors_data()
    {
        QTest::addColumn<Action>("action");
        QTest::addColumn<bool>("hiveInTheWay");
        QTest::addColumn<QString>("description");
        const QString writeFailure = QStringLiteral(
            "Failed to set registry value Key: '-2147483647',Section: 'Software\\Marelon Test\\Values',"
            "Key: 'Name' to value: 'text'");
        QTest::newRow("create key")
            << Action([](cRegistry& r) { r.CreateKey(); }) << true
            << "Failed to create registry Key: 'Software\\Marelon Test\\Values";
        QTest::newRow("delete missing key")
            << Action([](cRegistry& r) { r.DeleteKey(); }) << false
            << "Failed to delete registry Key: '-2147483647',Section: 'Software\\Marelon Test\\Values";
        QTest::newRow("delete key with subkeys")
            << Action([](cRegistry& r) { r.setSectionKey("Software\\Marelon Test"); r.DeleteKey(); })
            << false << "Failed to delete registry Key: '-2147483647',Section: 'Software\\Marelon Test";
        QTest::newRow("delete value of missing key")
            << Action([](cRegistry& r) { r.DeleteValue(); }) << false
            << "Failed to open key '-2147483647',Section: 'Software\\Marelon Test\\Values' for delete access";
        QTest::newRow("delete missing value")
            << Action([](cRegistry& r) { r.CreateKey(); r.DeleteValue(); }) << false
            << "Failed to delete registry Key: '-2147483647',Section: 'Software\\Marelon Test\\Values',Key: 'Name";
        QTest::newRow("write text")
            << Action([](cRegistry& r) { r.setValue("text"); }) << true << writeFailure;
        QTest::newRow("write text as bytes")
            << Action([](cRegistry& r) { r.setValueType(kRegBinary); r.setValue("text"); }) << false
            << writeFailure;
        QTest::newRow("write text as dword")
            << Action([](cRegistry& r) { r.setValueType(kRegDword); r.setValue("text"); }) << false
            << writeFailure;
    }

    void errors()
    {
        QFETCH(Action, action);
        QFETCH(bool, hiveInTheWay);
        QFETCH(QString, description);
        if (hiveInTheWay)
            WriteFile(stores_->RegistryDir(), "a file where the hive folder belongs");
        else
            At(QStringLiteral("Software\\Marelon Test\\Sub")).CreateKey();
        cRegistry registry = At(kSection, QStringLiteral("Name"));
        try {
            action(registry);
            QFAIL("no error raised");
        } catch (const RegistryError& error) {
            QCOMPARE(error.Number(), 26001);
            QCOMPARE(error.Source(), QStringLiteral("Marelon.cRegistry"));
            QCOMPARE(error.Description(), description);
        }
    }

    void damagedHive_data()
    {
        QTest::addColumn<QByteArray>("content"); // null: a folder where the file belongs
        QTest::newRow("a folder") << QByteArray();
        QTest::newRow("empty file") << QByteArray("");
        QTest::newRow("not JSON") << QByteArray("{\"keys\": {\"Software\": ");
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("keys not an object") << QByteArray("{\"keys\": 5}");
        QTest::newRow("value without data") << QByteArray("{\"values\": {\"v\": {\"type\": 4}}}");
        QTest::newRow("number for a text type")
            << QByteArray("{\"values\": {\"v\": {\"type\": 1, \"number\": 1}}}");
        QTest::newRow("bad hex") << QByteArray("{\"values\": {\"v\": {\"type\": 3, \"bytes\": \"0g\"}}}");
        QTest::newRow("dword too large")
            << QByteArray("{\"values\": {\"v\": {\"type\": 4, \"number\": 4294967296}}}");
    }

    void damagedHive()
    {
        QFETCH(QByteArray, content);
        const QString file = stores_->RegistryDir() + QStringLiteral("/HKEY_CURRENT_USER.json");
        if (content.isNull())
            QVERIFY(QDir().mkpath(file));
        else
            WriteFile(file, content);
        cRegistry registry = At(QString(), QStringLiteral("v"), kRegDword);
        QCOMPARE(registry.Value(), QVariant("default"));
        QVERIFY(!registry.KeyExists());
        QVERIFY_THROWS_EXCEPTION(RegistryError, registry.setValue(1));
        QVERIFY_THROWS_EXCEPTION(RegistryError, registry.DeleteValue());
        QCOMPARE(ReadFile(file), content);
        // Other roots keep working.
        registry.setClassKey(kHKeyLocalMachine);
        registry.setValue(1);
        QCOMPARE(registry.Value(), QVariant(1));
    }

private:
    std::unique_ptr<TempStores> stores_;
};

QTEST_GUILESS_MAIN(tst_cRegistry)
#include "tst_cRegistry.moc"
