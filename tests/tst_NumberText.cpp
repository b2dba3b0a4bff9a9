#include "numeric/NumberText.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace numeric;

namespace {
const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);
const QLocale kGerman(QLocale::German, QLocale::Germany);
} // namespace

class tst_NumberText : public QObject {
    Q_OBJECT

private slots:
    void numberToText_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("german");

        QTest::newRow("15 significant digits") << 20.0 / std::sqrt(3.0) << "11.5470053837925" << "11,5470053837925";
        QTest::newRow("trailing zeros dropped") << 3.5 << "3.5" << "3,5";
        QTest::newRow("whole number") << -3.0 << "-3" << "-3";
        QTest::newRow("fraction below one") << 0.5 << "0.5" << "0,5";
        QTest::newRow("no grouping") << 1485.25 << "1485.25" << "1485,25";
        QTest::newRow("binary noise hidden") << 0.1 + 0.2 << "0.3" << "0,3";
        QTest::newRow("negative zero") << -0.0 << "0" << "0";
        QTest::newRow("large uses exponent") << 1e20 << "1E+20" << "1E+20";
        QTest::newRow("small uses exponent") << 0.00001 << "1E-05" << "1E-05";
        QTest::newRow("just below exponent") << 123456789012345.0 << "123456789012345" << "123456789012345";
    }
    void numberToText()
    {
        QFETCH(double, value);
        QFETCH(QString, english);
        QFETCH(QString, german);
        QCOMPARE(NumberToText(value, kEnglish), english);
        QCOMPARE(NumberToText(value, kGerman), german);
        QCOMPARE(NumberToInvariantText(value), english);
    }

    void leadingNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");

        QTest::newRow("plain") << "12.5" << 12.5;
        QTest::newRow("stops at letter") << "12abc" << 12.0;
        QTest::newRow("no number") << "abc" << 0.0;
        QTest::newRow("empty") << "" << 0.0;
        QTest::newRow("leading blanks") << "  7.25 mm" << 7.25;
        QTest::newRow("comma is not a decimal point") << "12,5" << 12.0;
        QTest::newRow("second point ends it") << "1.2.3" << 1.2;
        QTest::newRow("no leading zero") << ".5" << 0.5;
        QTest::newRow("lone point") << "." << 0.0;
        QTest::newRow("sign") << "-2.5x" << -2.5;
        QTest::newRow("exponent") << "1.5E2" << 150.0;
        QTest::newRow("signed exponent") << "1.5e-1" << 0.15;
        QTest::newRow("exponent without digits") << "2e" << 2.0;
        QTest::newRow("exponent sign without digits") << "2e+x" << 2.0;
        QTest::newRow("gear ratio label") << "1.5:1" << 1.5;
        QTest::newRow("too large") << "1.5e400" << HUGE_VAL;
        QTest::newRow("too large, no exponent") << "1" + QString(400, '0') << HUGE_VAL;
        QTest::newRow("too small") << "-1.5e-400" << -0.0;
        QTest::newRow("too small, many zeros") << "0." + QString(400, '0') + "1" << 0.0;
        QTest::newRow("large mantissa, small exponent") << "1" + QString(400, '0') + "e-390" << 1e10;
    }
    void leadingNumber()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QCOMPARE(LeadingNumber(text), value);
    }

    void rounding_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<bool>("fits16");
        QTest::addColumn<int>("expected");

        QTest::newRow("2.5 to even") << 2.5 << true << 2;
        QTest::newRow("3.5 to even") << 3.5 << true << 4;
        QTest::newRow("-2.5 to even") << -2.5 << true << -2;
        QTest::newRow("2.7 up") << 2.7 << true << 3;
        QTest::newRow("16-bit top") << 32767.0 << true << 32767;
        QTest::newRow("16-bit bottom") << -32768.0 << true << -32768;
        QTest::newRow("rounds past the top") << 32767.5 << false << 32768;
        QTest::newRow("40000") << 40000.0 << false << 40000;
    }
    void rounding()
    {
        QFETCH(double, value);
        QFETCH(bool, fits16);
        QFETCH(int, expected);
        if (fits16)
            QCOMPARE(int(RoundToInt16(value)), expected);
        else
            QVERIFY_THROWS_EXCEPTION(NumberError, RoundToInt16(value));
        QCOMPARE(RoundToInt32(value), expected);
    }

    void rounding32Overflow_data()
    {
        QTest::addColumn<double>("value");
        QTest::newRow("above") << 2147483647.5;
        QTest::newRow("below") << -2147483649.0;
        QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
        QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
    }
    void rounding32Overflow()
    {
        QFETCH(double, value);
        QVERIFY_THROWS_EXCEPTION(NumberError, RoundToInt32(value));
        QVERIFY_THROWS_EXCEPTION(NumberError, RoundToInt16(value));
    }

    void userLocaleNumbers_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        QTest::addColumn<double>("value");

        QTest::newRow("en decimal") << kEnglish << "12.5" << true << 12.5;
        QTest::newRow("en grouped") << kEnglish << "1,485.5" << true << 1485.5;
        QTest::newRow("en blanks around") << kEnglish << " 3 " << true << 3.0;
        QTest::newRow("en negative") << kEnglish << "-0.25" << true << -0.25;
        QTest::newRow("en exponent") << kEnglish << "1.5E2" << true << 150.0;
        QTest::newRow("de decimal comma") << kGerman << "12,5" << true << 12.5;
        QTest::newRow("de grouped") << kGerman << "1.485,5" << true << 1485.5;
        QTest::newRow("letters") << kEnglish << "abc" << false << 0.0;
        QTest::newRow("empty") << kGerman << "" << false << 0.0;
        QTest::newRow("blank") << kEnglish << "   " << false << 0.0;
        QTest::newRow("trailing letters") << kEnglish << "12mm" << false << 0.0;
        QTest::newRow("infinity is no number") << kEnglish << "inf" << false << 0.0;
        QTest::newRow("nan is no number") << kEnglish << "nan" << false << 0.0;
    }
    void userLocaleNumbers()
    {
        QFETCH(QLocale, locale);
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        QFETCH(double, value);
        QCOMPARE(IsNumeric(text, locale), numeric);
        if (numeric)
            QCOMPARE(ToDouble(text, locale), value);
        else
            QVERIFY_THROWS_EXCEPTION(NumberError, ToDouble(text, locale));
    }

    void variantToNumber_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<bool>("isNumber");
        QTest::addColumn<double>("number");

        QTest::newRow("double") << QVariant(2.5) << kGerman << true << 2.5;
        QTest::newRow("integer") << QVariant(797) << kEnglish << true << 797.0;
        QTest::newRow("boolean") << QVariant(true) << kEnglish << true << 1.0;
        QTest::newRow("text in the locale") << QVariant("2,5") << kGerman << true << 2.5;
        QTest::newRow("text with leading zero") << QVariant("01") << kEnglish << true << 1.0;
        QTest::newRow("text invariant") << QVariant("2.5") << QLocale::c() << true << 2.5;
        QTest::newRow("text that is no number") << QVariant("T21") << kEnglish << false << 0.0;
        QTest::newRow("empty text") << QVariant("") << kEnglish << false << 0.0;
        QTest::newRow("no value") << QVariant() << kEnglish << false << 0.0;
    }
    void variantToNumber()
    {
        QFETCH(QVariant, value);
        QFETCH(QLocale, locale);
        QFETCH(bool, isNumber);
        QFETCH(double, number);
        const std::optional<double> read = VariantToNumber(value, locale);
        QCOMPARE(read.has_value(), isNumber);
        if (isNumber)
            QCOMPARE(*read, number);
    }

    void masks_data()
    {
        QTest::addColumn<QString>("mask");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("german");

        QTest::newRow("00 pads") << "00" << 3.0 << "03" << "03";
        QTest::newRow("00 wider") << "00" << 123.0 << "123" << "123";
        QTest::newRow("00 rounds half away") << "00" << 2.5 << "03" << "03";
        QTest::newRow("###0 rounds") << "###0" << 800.4 << "800" << "800";
        QTest::newRow("###0 zero") << "###0" << 0.2 << "0" << "0";
        QTest::newRow("###0.## two places") << "###0.##" << 2.25 << "2.25" << "2,25";
        QTest::newRow("###0.## whole keeps point") << "###0.##" << 2.0 << "2." << "2,";
        QTest::newRow("###0.### whole keeps point") << "###0.###" << 2.0 << "2." << "2,";
        QTest::newRow("###0.### trims zeros") << "###0.###" << 0.5 << "0.5" << "0,5";
        QTest::newRow("###0.### rounds to three") << "###0.###" << 0.12345 << "0.123" << "0,123";
        QTest::newRow("###0.### no grouping") << "###0.###" << 12345.5 << "12345.5" << "12345,5";
        QTest::newRow("####0.0000") << "####0.0000" << 12.5 << "12.5000" << "12,5000";
        QTest::newRow("####0.0000 no grouping") << "####0.0000" << 123456.0 << "123456.0000" << "123456,0000";
        QTest::newRow("####0.0000 negative") << "####0.0000" << -0.25 << "-0.2500" << "-0,2500";
        QTest::newRow("####0.0000 negative rounds to zero") << "####0.0000" << -0.00001 << "0.0000" << "0,0000";
        QTest::newRow("##,##0.0000 groups") << "##,##0.0000" << 1485.0 << "1,485.0000" << "1.485,0000";
        QTest::newRow("##,##0.0000 millions") << "##,##0.0000" << 1234567.5 << "1,234,567.5000" << "1.234.567,5000";
        QTest::newRow("##,##0.0000 small") << "##,##0.0000" << 0.5 << "0.5000" << "0,5000";
        QTest::newRow("##,##0.000000") << "##,##0.000000" << 12.7 << "12.700000" << "12,700000";
    }
    void masks()
    {
        QFETCH(QString, mask);
        QFETCH(double, value);
        QFETCH(QString, english);
        QFETCH(QString, german);
        QCOMPARE(Format(value, mask, kEnglish), english);
        QCOMPARE(Format(value, mask, kGerman), german);
    }

    void unknownMaskIsRefused()
    {
        QVERIFY_THROWS_EXCEPTION(std::invalid_argument, Format(1.0, QStringLiteral("0.0"), kEnglish));
    }
};

QTEST_GUILESS_MAIN(tst_NumberText)
#include "tst_NumberText.moc"
