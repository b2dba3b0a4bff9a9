#include "datapage/BarLoader.h"

#include <QtTest>

using marelon::BarLoaderLine;

Q_DECLARE_METATYPE(BarLoaderLine)

namespace {

BarLoaderLine Line(double x, double z, double w, bool stop, double rpm, bool m1 = false)
{
    return {x, z, w, stop, rpm, m1};
}

} // namespace

class tst_BarLoader : public QObject {
    Q_OBJECT

private slots:
    // The line is written with "." whatever the user's locale.
    void build_data()
    {
        QTest::addColumn<BarLoaderLine>("line");
        QTest::addColumn<QString>("expected");
        QTest::newRow("bar stock") << Line(0.5, 0.3, 2.25, false, 800) << "M155 X0.5 Z0.3 W2.25 R1 S800";
        QTest::newRow("whole numbers keep the point") << Line(2, 0, 1, false, 0) << "M155 X2. Z0. W1. R1 S0";
        QTest::newRow("spindle stops") << Line(0.5, 0.3, 2.25, true, 800) << "M155 X0.5 Z0.3 W2.25";
        QTest::newRow("polygon stock") << Line(0.5, 0.3, 2.25, true, 800, true) << "M155 X0.5 Z0.3 W2.25 M1";
        QTest::newRow("rounded by the masks") << Line(0.12345, 1.0006, 2.256, false, 799.6)
                                              << "M155 X0.123 Z1.001 W2.26 R1 S800";
    }
    void build()
    {
        QFETCH(BarLoaderLine, line);
        QFETCH(QString, expected);
        for (const QLocale& locale : {QLocale(QLocale::English), QLocale(QLocale::German, QLocale::Germany)}) {
            QLocale::setDefault(locale);
            QCOMPARE(marelon::BuildBarLoaderCommand(line), expected);
        }
    }

    void read_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<BarLoaderLine>("expected");
        QTest::newRow("ours") << "M155 X0.5 Z0.3 W2.25 R1 S800" << Line(0.5, 0.3, 2.25, false, 800);
        QTest::newRow("whole numbers") << "M155 X2. Z0. W1." << Line(2, 0, 1, true, 0);
        QTest::newRow("M1 not read") << "M155 X0.5 Z0.3 W2.25 M1" << Line(0.5, 0.3, 2.25, true, 0);
        QTest::newRow("not a number") << "M155 Xabc" << Line(0, 0, 0, true, 0);
        QTest::newRow("empty markers") << "M155 X Z W R1 S" << Line(0, 0, 0, false, 0);
        QTest::newRow("lower case") << "m155 x0.5 z0.3 w2.25 r1 s800" << Line(0, 0, 0, true, 0);
        QTest::newRow("decimal comma") << "M155 X0,5 Z1,5" << Line(0, 1, 0, true, 0);
        QTest::newRow("first marker wins") << "M155 X1 X2 S5 R1" << Line(1, 0, 0, false, 5);
        QTest::newRow("too large") << "M155 X1e999 Z-1e999 W1e-999" << Line(0, 0, 0, true, 0);
        QTest::newRow("empty") << "" << Line(0, 0, 0, true, 0);
    }
    void read()
    {
        QFETCH(QString, command);
        QFETCH(BarLoaderLine, expected);
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const BarLoaderLine line = marelon::ReadBarLoaderCommand(command);
        QCOMPARE(line.chamferX, expected.chamferX);
        QCOMPARE(line.chamferZ, expected.chamferZ);
        QCOMPARE(line.pullBack, expected.pullBack);
        QCOMPARE(line.spindleStop, expected.spindleStop);
        QCOMPARE(line.spindleRpm, expected.spindleRpm);
        QCOMPARE(line.m1, false);
    }

    void typeAndEnabling_data()
    {
        QTest::addColumn<bool>("magazine");
        QTest::addColumn<int>("programType");
        QTest::addColumn<int>("code");
        QTest::addColumn<QList<bool>>("enabled"); // sub program number, program type, M code fields
        QTest::newRow("sub program") << true << 0 << 1 << QList{true, true, false};
        QTest::newRow("M code") << true << 1 << 2 << QList{false, true, true};
        QTest::newRow("hydrostatic") << false << 0 << 0 << QList{false, false, false};
        QTest::newRow("hydrostatic, M code") << false << 1 << 0 << QList{false, false, false};
        QTest::newRow("magazine, no program type") << true << -1 << 2 << QList{false, true, true};
    }
    void typeAndEnabling()
    {
        QFETCH(bool, magazine);
        QFETCH(int, programType);
        QFETCH(int, code);
        QFETCH(QList<bool>, enabled);
        QCOMPARE(marelon::BarLoaderTypeCode(magazine, programType), code);
        const auto enabling = marelon::BarLoaderEnablingFor(magazine, programType);
        QCOMPARE((QList{enabling.subProgramNumber, enabling.programType, enabling.mCodeFields}), enabled);
    }
};

QTEST_MAIN(tst_BarLoader)
#include "tst_BarLoader.moc"
