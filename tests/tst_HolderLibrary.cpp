#include "tooldata/HolderLibrary.h"
#include "tooldata/modToolData.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace marelon;

namespace {

HolderRecord holder(const QString& name, double x = 0, double z = 0, double y = 0, int16_t rotation = -1,
                    double gear1 = 1, double gear2 = 1)
{
    return {name, QStringLiteral("Holder ") + name, x, z, y, rotation, gear1, gear2};
}

QByteArray lines(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += "\"H" + QByteArray::number(i) + "\",\"d\",0,0,0,-1,1,1\r\n";
    return text;
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void writeAll(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(contents);
}

// Lets no file grow beyond a few bytes while it lives, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &old_);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = old_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &old_); }

private:
    rlimit old_{};
};

} // namespace

class tst_HolderLibrary : public QObject {
    Q_OBJECT

    QTemporaryDir dir_;
    QString path_;

private slots:
    void init() { path_ = dir_.filePath(QStringLiteral("L5-16-20 ToolHolders.txt")); QFile::remove(path_); }

    void fileNames_data()
    {
        QTest::addColumn<QString>("machine");
        QTest::addColumn<QString>("file");
        QTest::newRow("plain") << "A20" << "A20 ToolHolders.txt";
        QTest::newRow("blank becomes hyphen") << "B2 12-20" << "B2-12-20 ToolHolders.txt";
        QTest::newRow("hyphen kept") << "M2-3 20-32" << "M2-3-20-32 ToolHolders.txt";
        QTest::newRow("case matters") << "a20" << "";
        QTest::newRow("not a model") << "Z99" << "";
    }
    void fileNames()
    {
        QFETCH(QString, machine);
        QFETCH(QString, file);
        QCOMPARE(HolderFileName(machine), file);
        QCOMPARE(HolderFilePath(QStringLiteral("/addin/"), machine),
                 file.isEmpty() ? QString() : QStringLiteral("/addin/ToolHolders/") + file);
    }

    void reading_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("lastName");

        QTest::newRow("example line") << QByteArray("\"GTF3110\",\"Gang holder 1\",0,1.25,-.5,-1,1,1\r\n") << 1 << "GTF3110";
        QTest::newRow("third X not numeric") << QByteArray("\"A\",\"a\",0,0,0,-1,1,1\r\n\"B\",\"b\",1,0,0,-1,1,1\r\n"
                                                           "\"C\",\"c\",x,0,0,-1,1,1\r\n\"D\",\"d\",0,0,0,-1,1,1\r\n")
                                              << 2 << "B";
        QTest::newRow("150 lines") << lines(150) << 101 << "H100";
        QTest::newRow("LF only") << QByteArray("\"A\",\"a\",0,0,0,-1,1,1\n\"B\",\"b\",0,0,0,1,1,1") << 2 << "B";
        QTest::newRow("blank line skipped") << QByteArray("\"A\",\"a\",0,0,0,-1,1,1\r\n\r\n  \r\n\"B\",\"b\",0,0,0,1,1,1\r\n") << 2 << "B";
        QTest::newRow("blanks around fields") << QByteArray("  \"A\" , \"a\" ,\t1 , 2,3 ,-1, 1 ,1  \r\n") << 1 << "A";
        QTest::newRow("comma in quotes") << QByteArray("\"A,1\",\"x, y\",0,0,0,-1,1,1\r\n") << 1 << "A,1";
        QTest::newRow("unquoted name") << QByteArray("GTF1,desc,0,0,0,-1,1,1\r\n") << 1 << "GTF1";
        QTest::newRow("nine fields") << QByteArray("\"A\",\"a\",0,0,0,-1,1,1,1\r\n") << 0 << "";
        QTest::newRow("unclosed quote") << QByteArray("\"A,\"a\",0,0,0,-1,1,1\r\n") << 0 << "";
        QTest::newRow("quote inside unquoted name") << QByteArray("GT\"F,\"a\",0,0,0,-1,1,1\r\n") << 0 << "";
        QTest::newRow("text after quote") << QByteArray("\"A\"b,\"a\",0,0,0,-1,1,1\r\n") << 0 << "";
        QTest::newRow("quoted number") << QByteArray("\"A\",\"a\",\"0\",0,0,-1,1,1\r\n") << 0 << "";
        QTest::newRow("decimal comma") << QByteArray("\"A\",\"a\",0;5,0,0,-1,1,1\r\n") << 0 << "";
        QTest::newRow("rotation beyond 16 bits") << QByteArray("\"A\",\"a\",0,0,0,40000,1,1\r\n") << 0 << "";
        QTest::newRow("number overflowing double") << QByteArray("\"A\",\"a\",1E999,0,0,-1,1,1\r\n") << 0 << "";
        QTest::newRow("empty file") << QByteArray() << 0 << "";
    }
    void reading()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, count);
        QFETCH(QString, lastName);
        const auto records = ParseHolderRecords(text);
        QCOMPARE(records.size(), count);
        if (count > 0)
            QCOMPARE(records.last().name, lastName);
    }

    void numbers_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<double>("value");
        QTest::newRow("negative fraction") << QByteArray("-.5") << -0.5;
        QTest::newRow("plus sign") << QByteArray("+2") << 2.0;
        QTest::newRow("exponent") << QByteArray("1.5E-2") << 0.015;
        QTest::newRow("trailing point") << QByteArray("3.") << 3.0;
        QTest::newRow("blank reads 0") << QByteArray("  ") << 0.0;
    }
    void numbers()
    {
        QFETCH(QByteArray, field);
        QFETCH(double, value);
        const auto records = ParseHolderRecords("\"A\",\"a\"," + field + ",0,0,-1,1,1");
        QCOMPARE(records.size(), 1);
        QCOMPARE(records[0].xShift, value);
    }

    // A line read gives the fields in file order, and the record written gives
    // the same line, whatever the user's locale.
    void lineReadAndWritten()
    {
        const QByteArray line("\"GTF3110\",\"Gang holder 1\",0.25,1.25,-0.5,1,2,1.5\r\n");
        const HolderRecord record{"GTF3110", "Gang holder 1", 0.25, 1.25, -0.5, 1, 2, 1.5};
        QCOMPARE(ParseHolderRecords(line), QList<HolderRecord>{record});
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(HolderLine(record), line);
        QLocale::setDefault(QLocale::c());
    }

    void appendRoundTrip()
    {
        const HolderRecord withComma{"GTF, wide", "Slot 1, 2 and 3", 1.0 / 3, -12.5, 1e-7, 1, 1, 2.5};
        QVERIFY(AppendHolder(path_, holder("first")));
        QVERIFY(AppendHolder(path_, withComma));
        const auto records = ReadHolderFile(path_);
        QCOMPARE(records.size(), 2);
        QCOMPARE(records[1].name, withComma.name);
        QCOMPARE(records[1].description, withComma.description);
        QCOMPARE(records[1].xShift, withComma.xShift); // 15 significant digits
        QCOMPARE(records[1].yShift, 1e-7);
    }

    // Every line stays, the last one without its end and those beyond the table too.
    void appendKeepsTheFile()
    {
        writeAll(path_, lines(120).chopped(2));
        QVERIFY(AppendHolder(path_, holder("B")));
        QCOMPARE(readAll(path_), lines(120) + HolderLine(holder("B")));
    }

    void missingFile()
    {
        QVERIFY(!HolderFileExists(path_));
        QVERIFY(ReadHolderFile(path_).isEmpty());
        QVERIFY(!HolderFileExists(dir_.path())); // a folder is no library file
    }

    void deleteHolder_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("only holder") << 1 << 0 << QStringList{};
        QTest::newRow("last of three") << 3 << 2 << QStringList{"H0", "H1"};
        QTest::newRow("middle of three") << 3 << 1 << QStringList{"H0", "H2"};
        QTest::newRow("position beyond the file") << 2 << 5 << QStringList{"H0", "H1"};
        QTest::newRow("file vanished") << 0 << 0 << QStringList{};
    }
    void deleteHolder()
    {
        QFETCH(int, count);
        QFETCH(int, index);
        QFETCH(QStringList, left);
        if (count > 0)
            writeAll(path_, lines(count));
        QCOMPARE(DeleteHolder(path_, index), count);
        QStringList names;
        for (const auto& record : ReadHolderFile(path_))
            names << record.name;
        QCOMPARE(names, left);
        QVERIFY(HolderFileExists(path_));
    }

    void deleteDropsWhatCannotBeRead()
    {
        writeAll(path_, lines(2) + "broken\r\n" + lines(1));
        QCOMPARE(DeleteHolder(path_, 0), 2);
        QCOMPARE(readAll(path_), QByteArray("\"H1\",\"d\",0,0,0,-1,1,1\r\n"));
    }

    void failedWritesLeaveTheOldFile_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::newRow("append") << "append";
        QTest::newRow("rewrite") << "rewrite";
        QTest::newRow("delete") << "delete";
    }
    void failedWritesLeaveTheOldFile()
    {
        QFETCH(QString, operation);
        const QByteArray old = lines(3);
        writeAll(path_, old);
        QList<HolderRecord> many;
        for (int i = 0; i < 50; ++i)
            many << holder(QStringLiteral("Long holder name %1").arg(i));
        {
            const FileSizeLimit full(old.size() / 2);
            if (operation == QLatin1String("append"))
                QVERIFY(!AppendHolder(path_, holder("new")));
            else if (operation == QLatin1String("rewrite"))
                QVERIFY(!WriteHolderFile(path_, many));
            else
                DeleteHolder(path_, 0);
        }
        QCOMPARE(readAll(path_), old);
        QCOMPARE(QDir(dir_.path()).entryList(QDir::Files), QStringList{QFileInfo(path_).fileName()});
    }

    void unwritableFolder()
    {
        const QString path = dir_.filePath(QStringLiteral("no such folder/A20 ToolHolders.txt"));
        QVERIFY(!AppendHolder(path, holder("A")));
        QVERIFY(!WriteHolderFile(path, {holder("A")}));
    }

    void everyDeliveredLibraryLoads()
    {
        const QStringList machines = MachineNames(false);
        QCOMPARE(machines.size(), 19);
        for (const QString& machine : machines) {
            const QString path = HolderFilePath(QStringLiteral(MARELON_ADDIN_DIR "/"), machine);
            QVERIFY2(HolderFileExists(path), qPrintable(machine));
            const QByteArray text = readAll(path);
            const auto records = ParseHolderRecords(text);
            QVERIFY2(records.size() >= 10, qPrintable(machine));
            QCOMPARE(text.count("\r\n"), records.size()); // every line is a holder
            for (const auto& record : records) {
                QVERIFY(!record.name.isEmpty() && !record.description.isEmpty());
                QVERIFY(!SpindleRotationText(record.spindleRotation).isEmpty());
                QVERIFY(record.gearRatio1 != 0 && record.gearRatio2 != 0);
            }
        }
    }
};

QTEST_GUILESS_MAIN(tst_HolderLibrary)
#include "tst_HolderLibrary.moc"
