#include "addin/settings/MachineCodes.h"
#include "tooldata/HolderLibrary.h"
#include "tooldata/modToolData.h"
#include "tooldata/Windows1252.h"
#include "numeric/NumberText.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
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
    void init()
    {
        path_ = dir_.filePath(QStringLiteral("L5-16-20 ToolHolders.txt"));
        QFile::remove(path_);
        QFile::remove(BackupPath(path_));
    }

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

    // Every change keeps the file as it was before it beside it; the first
    // line of a new file has nothing to keep.
    void everyChangeKeepsThePreviousFile_data()
    {
        QTest::addColumn<QString>("operation");
        QTest::newRow("new") << "append";
        QTest::newRow("edit") << "rewrite";
        QTest::newRow("del") << "delete";
    }
    void everyChangeKeepsThePreviousFile()
    {
        QFETCH(QString, operation);
        const QString backup = BackupPath(path_);
        QVERIFY(AppendHolder(path_, holder("first")));
        QVERIFY(!QFile::exists(backup));
        writeAll(path_, lines(3));
        for (int change = 1; change <= 2; ++change) {
            const QByteArray before = readAll(path_);
            if (operation == QLatin1String("append"))
                QVERIFY(AppendHolder(path_, holder("new")));
            else if (operation == QLatin1String("rewrite"))
                QVERIFY(WriteHolderFile(path_, {holder(QStringLiteral("only %1").arg(change))}));
            else
                DeleteHolder(path_, 0);
            QVERIFY(readAll(path_) != before);
            QCOMPARE(readAll(backup), before);
        }
        QCOMPARE(backup, path_ + QStringLiteral(".bak"));
    }

    // Names and descriptions are read and written in the Windows-1252 code page.
    void windows1252Text_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("Latin-1 letters") << QByteArray("Fr\xe4se \xd8 6") << QStringLiteral("Fräse Ø 6");
        QTest::newRow("euro, quotes, dashes") << QByteArray("\x80 \x84" "a\x93 \x96 \x97 \x85") << QStringLiteral("€ „a“ – — …");
        QTest::newRow("letters of 0x80 to 0x9F") << QByteArray("\x8a\x8c\x8e\x9a\x9c\x9e\x9f\x83") << QStringLiteral("ŠŒŽšœžŸƒ");
        QTest::newRow("unused codes stand for themselves") << QByteArray("\x81\x8d\x8f\x90\x9d")
                                                          << QStringLiteral("\u0081\u008d\u008f\u0090\u009d");
    }
    void windows1252Text()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        const QByteArray line = "\"" + bytes + "\",\"" + bytes + "\",0,0,0,-1,1,1\r\n";
        const auto records = ParseHolderRecords(line);
        QCOMPARE(records.size(), 1);
        QCOMPARE(records[0].name, text);
        QCOMPARE(records[0].description, text);
        QCOMPARE(HolderLine(records[0]), line);
        QVERIFY(CharactersOutsideWindows1252(text).isEmpty());
    }

    void charactersTheCodePageCannotHold()
    {
        QCOMPARE(CharactersOutsideWindows1252(QStringLiteral("Фреза €1")), QStringLiteral("Фреза"));
        QCOMPARE(CharactersOutsideWindows1252(QStringLiteral("a🙂b🙂\u0080")), QStringLiteral("🙂\u0080"));
        QCOMPARE(ToWindows1252(QStringLiteral("Ф€")), QByteArray("?\x80"));
    }

    void unwritableFolder()
    {
        const QString path = dir_.filePath(QStringLiteral("no such folder/A20 ToolHolders.txt"));
        QVERIFY(!AppendHolder(path, holder("A")));
        QVERIFY(!WriteHolderFile(path, {holder("A")}));
    }

    // The holders of each machine's gang tool patterns are in its library;
    // a machine with back-spindle tool work (all but the B12) has back-spindle holders.
    void deliveredLibrariesHoldWhatTheMachinesUse()
    {
        const QStringList l5{"GTF3813", "GTF3812", "GTF3513", "GTF3512", "GTF3613", "GTF3612", "GSE910", "GSE1007", "GDF1107"};
        const QStringList l7 = l5 + QStringList{"GTF3110", "GTF3110L", "GTF3210", "GTF3210L", "GTF3410", "GTF3410L",
                                                "GTF3510", "GTF3510L", "GTF3112", "GTF3212", "GTF3412", "GTF3113",
                                                "GTF3213", "GTF3413", "GDF607", "GDF606", "GDF306", "GDF307",
                                                "GSE1110", "GSE1307", "GSE1407", "GDF1108"};
        const QStringList m23{"GTF5016", "GTF5216", "GTF5013", "GTF5213", "GTF5012", "GTF5212", "GDF904", "GDF906"};
        const QStringList c{"GTF6010L", "U30B", "U31B", "GDF905"};
        const QHash<QString, QStringList> patternHolders{
            {"L5 16-20", l5}, {"L7 16-20", l7}, {"M2-3 20-32", m23}, {"C12-16", c}, {"C20-32", c}};
        for (const QString& machine : MachineModelNames(false)) {
            QStringList names;
            bool backSpindle = false;
            for (const auto& record : ReadHolderFile(HolderFilePath(QStringLiteral(MARELON_ADDIN_DIR "/"), machine))) {
                names << record.name;
                backSpindle = backSpindle || record.description.contains(QLatin1String(" back "));
            }
            for (const QString& name : patternHolders.value(machine))
                QVERIFY2(names.contains(name), qPrintable(machine + QStringLiteral(": ") + name));
            QVERIFY2(backSpindle == (machine != QLatin1String("B12")), qPrintable(machine));
        }
    }

    // Every model is a metric machine: its holders are made to round
    // millimetre dimensions, so each shift is the exact inch equivalent of
    // one (to 15 significant digits) and a millimetre part gets -22, not -21.99894.
    void metricLibrariesHoldExactMillimetres()
    {
        for (const QString& machine : MachineModelNames(false)) {
            const QByteArray text = readAll(HolderFilePath(QStringLiteral(MARELON_ADDIN_DIR "/"), machine));
            const auto records = ParseHolderRecords(text);
            QByteArray written;
            for (const auto& record : records) {
                written += HolderLine(record);
                for (const double inches : {record.xShift, record.zShift, record.yShift}) {
                    const double millimetres = std::round(inches * 25.4 * 100) / 100;
                    const QString context = machine + QStringLiteral(" ") + record.name;
                    QVERIFY2(std::fmod(millimetres * 2, 1) == 0, qPrintable(context)); // whole or half millimetres
                    QCOMPARE(numeric::NumberToInvariantText(inches), numeric::NumberToInvariantText(millimetres / 25.4));
                    QCOMPARE(HolderShiftText(inches, 71), numeric::NumberToText(millimetres));
                }
            }
            QCOMPARE(written, text); // as the library writes it: 15 digits
        }
    }

    void everyDeliveredLibraryLoads()
    {
        const QStringList machines = MachineModelNames(false);
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
