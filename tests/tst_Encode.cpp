#include "numeric/Encode.h"

#include <QTest>

#include <cmath>
#include <numbers>

using namespace numeric;

namespace {

QString repeated(const char* part, int times)
{
    return QString::fromLatin1(part).repeated(times);
}

} // namespace

class tst_Encode : public QObject {
    Q_OBJECT

private slots:
    // Results compared within rounding (relative 1e-12, or both near zero).
    void value_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<double>("expected");

        QTest::newRow("product before sum") << "1+2*3" << 7.0;
        QTest::newRow("parentheses first") << "(1+2)*3" << 9.0;
        QTest::newRow("power is left-associative") << "2^3^2" << 64.0;
        QTest::newRow("subtraction is left-associative") << "10-4-3" << 3.0;
        QTest::newRow("division is left-associative") << "8/4/2" << 1.0;
        QTest::newRow("power before product") << "2*3^2" << 18.0;
        QTest::newRow("unary minus after power") << "-2^2" << -4.0;
        QTest::newRow("unary minus after operator") << "2*-3" << -6.0;
        QTest::newRow("unary minus then sum") << "2*-3+1" << -5.0;
        QTest::newRow("negative exponent") << "2^-1" << 0.5;
        QTest::newRow("negated group") << "-(2+3)" << -5.0;
        QTest::newRow("negative base in group") << "(-2)^2" << 4.0;
        QTest::newRow("Pi") << "Pi" << std::numbers::pi;
        QTest::newRow("negated Pi") << "-Pi" << -std::numbers::pi;

        QTest::newRow("Sin of Rad") << "2*Sin(Rad(30))" << 1.0;
        QTest::newRow("Cos of Rad") << "Cos(Rad(60))" << 0.5;
        QTest::newRow("Cos of right angle") << "Cos(Pi/2)" << 0.0;
        QTest::newRow("Tan") << "Tan(Pi/4)" << 1.0;
        QTest::newRow("ATan") << "4*ATan(1)" << std::numbers::pi;
        QTest::newRow("Ln of Exp") << "Ln(Exp(2))" << 2.0;
        QTest::newRow("Sqrt") << "Sqrt(16)" << 4.0;
        QTest::newRow("Sqr") << "Sqr(3)" << 9.0;
        QTest::newRow("Abs") << "Abs(-3.5)" << 3.5;
        QTest::newRow("function of expression") << "Sqrt(9+16)*2" << 10.0;

        QTest::newRow("lower case") << "sqrt(16)" << 4.0;
        QTest::newRow("upper case") << "SQRT(16)+PI-pi" << 4.0;
        QTest::newRow("mixed case") << "dMS(1;30;0)" << 1.5;

        QTest::newRow("blanks around operators") << "1 + 2" << 3.0;
        QTest::newRow("blanks inside a number") << "1 2" << 12.0;
        QTest::newRow("blanks inside a name") << " S qr ( 3 ) " << 9.0;

        QTest::newRow("Dms") << "Dms(10;30;0)" << 10.5;
        QTest::newRow("Dms with seconds") << "Dms(10;30;36)" << 10.51;
        QTest::newRow("Dms with blanks") << "Dms(10 ; 30 ; 0)" << 10.5;
        QTest::newRow("Dms of expressions") << "Dms(1+1;2*15;Sqr(60))" << 3.5;
        QTest::newRow("Dms nested in last argument") << "Dms(1;0;Dms(0;60;0))" << 1.0 + 1.0 / 3600;
        QTest::newRow("Dms inside an expression") << "2*Dms(10;30;0)-1" << 20.0;

        QTest::newRow("leading point") << ".5" << 0.5;
        QTest::newRow("exponent") << "1.5E2" << 150.0;
        QTest::newRow("negative exponent, lower case") << "1.5e-1" << 0.15;
        QTest::newRow("exponent with plus") << "1e+2" << 100.0;
        QTest::newRow("leading zeros") << "007" << 7.0;
        QTest::newRow("trailing point") << "5." << 5.0;
        QTest::newRow("trailing point then operator") << "5.+1" << 6.0;
        QTest::newRow("underflow is zero") << "1e-400" << 0.0;
    }
    void value()
    {
        QFETCH(QString, expression);
        QFETCH(double, expected);
        double result = -1;
        QCOMPARE(Evaluate(expression, result), kEvalOk);
        QCOMPARE(result, expected);
    }

    // Values a user checks by eye come out exact, not merely close.
    void exactValue_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<double>("expected");

        QTest::newRow("ACos(1)") << "ACos(1)" << 0.0;
        QTest::newRow("ACos(-1)") << "ACos(-1)" << std::numbers::pi;
        QTest::newRow("ASin(1)") << "ASin(1)" << std::numbers::pi / 2;
        QTest::newRow("ASin(-1)") << "ASin(-1)" << -std::numbers::pi / 2;
        QTest::newRow("ACos(0)") << "ACos(0)" << std::numbers::pi / 2;
        QTest::newRow("Log of a power of ten") << "Log(1000)" << 3.0;
        QTest::newRow("Log of a negative power of ten") << "Log(0.001)" << -3.0;
        QTest::newRow("Deg(Pi)") << "Deg(Pi)" << 180.0;
    }
    void exactValue()
    {
        QFETCH(QString, expression);
        QFETCH(double, expected);
        double result = -1;
        QCOMPARE(Evaluate(expression, result), kEvalOk);
        QVERIFY2(result == expected, qPrintable(QString::number(result, 'g', 17)));
    }

    void error_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<int>("code");

        QTest::newRow("unknown name") << "abc" << int(kEvalUnknownToken);
        QTest::newRow("unknown name after operator") << "1+x" << int(kEvalUnknownToken);
        QTest::newRow("comma is no decimal point") << "1,5" << int(kEvalUnknownToken);
        QTest::newRow("lone point") << "." << int(kEvalUnknownToken);
        QTest::newRow("point before exponent") << ".e5" << int(kEvalUnknownToken);
        QTest::newRow("exponent without digits") << "2e" << int(kEvalUnknownToken);
        QTest::newRow("exponent sign without digits") << "2e+" << int(kEvalUnknownToken);
        QTest::newRow("tab is not a blank") << "1\t+2" << int(kEvalUnknownToken);
        QTest::newRow("non-ASCII letter") << QString::fromUtf8("S\u0131n(1)") << int(kEvalUnknownToken);

        QTest::newRow("number after group") << "(1)2" << int(kEvalNumberNotAllowed);
        QTest::newRow("number after Pi") << "Pi2" << int(kEvalNumberNotAllowed);
        QTest::newRow("second point starts a number") << "1.2.3" << int(kEvalNumberNotAllowed);

        QTest::newRow("Pi after number") << "2Pi" << int(kEvalConstantNotAllowed);
        QTest::newRow("function after number") << "2Sin(1)" << int(kEvalFunctionNotAllowed);
        QTest::newRow("Exp after number") << "2Exp(1)" << int(kEvalFunctionNotAllowed);

        QTest::newRow("operator at start") << "*2" << int(kEvalOperatorNotAllowed);
        QTest::newRow("no unary plus") << "+2" << int(kEvalOperatorNotAllowed);
        QTest::newRow("two operators") << "1+*2" << int(kEvalOperatorNotAllowed);
        QTest::newRow("function without parenthesis") << "Sin+1" << int(kEvalOperatorNotAllowed);

        QTest::newRow("parenthesis after number") << "2(3)" << int(kEvalOpenNotAllowed);
        QTest::newRow("parenthesis after Pi") << "Pi(1)" << int(kEvalOpenNotAllowed);

        QTest::newRow("close at start") << ")" << int(kEvalCloseNotAllowed);
        QTest::newRow("close without open") << "1)" << int(kEvalCloseNotAllowed);
        QTest::newRow("close after operator") << "(1+)" << int(kEvalCloseNotAllowed);
        QTest::newRow("empty group") << "()" << int(kEvalCloseNotAllowed);

        QTest::newRow("separator outside Dms") << "Cos(1;2)" << int(kEvalSeparatorNotAllowed);
        QTest::newRow("separator at top level") << "1;2" << int(kEvalSeparatorNotAllowed);
        QTest::newRow("third separator in Dms") << "Dms(10;30;0;1)" << int(kEvalSeparatorNotAllowed);
        QTest::newRow("empty Dms argument") << "Dms(;1;2)" << int(kEvalSeparatorNotAllowed);

        QTest::newRow("double minus") << "2--3" << int(kEvalUnaryMinusNotAllowed);
        QTest::newRow("minus after plus") << "1+-2" << int(kEvalUnaryMinusNotAllowed);
        QTest::newRow("minus after function name") << "Sin-1" << int(kEvalUnaryMinusNotAllowed);

        QTest::newRow("Dms missing an argument") << "Dms(10;30)" << int(kEvalFailed);
        // The pending separators are counted for the whole expression, so a
        // Dms fits only into the last argument of another.
        QTest::newRow("Dms in first argument") << "Dms(Dms(1;2;3);4;5)" << int(kEvalFailed);
        QTest::newRow("group left open") << "(1+2" << int(kEvalFailed);
        QTest::newRow("function left open") << "Sin(" << int(kEvalFailed);
        QTest::newRow("missing right operand") << "1+" << int(kEvalFailed);
        QTest::newRow("missing argument") << "Sin" << int(kEvalFailed);
        QTest::newRow("empty") << "" << int(kEvalFailed);
        QTest::newRow("blanks only") << "   " << int(kEvalFailed);
        QTest::newRow("division by zero") << "1/0" << int(kEvalFailed);
        QTest::newRow("zero by zero") << "0/0" << int(kEvalFailed);
        QTest::newRow("zero to negative power") << "0^-1" << int(kEvalFailed);
        QTest::newRow("root of negative") << "Sqrt(-1)" << int(kEvalFailed);
        QTest::newRow("fractional power of negative") << "(-8)^(1/3)" << int(kEvalFailed);
        QTest::newRow("Log of zero") << "Log(0)" << int(kEvalFailed);
        QTest::newRow("Ln of negative") << "Ln(-1)" << int(kEvalFailed);
        QTest::newRow("ACos out of domain") << "ACos(1.5)" << int(kEvalFailed);
        QTest::newRow("ASin out of domain") << "ASin(-2)" << int(kEvalFailed);
        QTest::newRow("Exp overflow") << "Exp(1000)" << int(kEvalFailed);
        QTest::newRow("product overflow") << "1e200*1e200" << int(kEvalFailed);
        QTest::newRow("number overflow") << "1e999" << int(kEvalFailed);
    }
    void error()
    {
        QFETCH(QString, expression);
        QFETCH(int, code);
        double result = -1;
        QCOMPARE(Evaluate(expression, result), code);
        QCOMPARE(result, 0.0);
    }

    // The working storage: 101 queue entries, 21 stacked operators, 20 values.
    void storage_data()
    {
        QTest::addColumn<QString>("expression");
        QTest::addColumn<int>("code");
        QTest::addColumn<double>("expected");

        // n ones summed need 2n - 1 queue entries.
        QTest::newRow("101 queue entries") << "1" + repeated("+1", 50) << int(kEvalOk) << 51.0;
        QTest::newRow("102 queue entries") << "Abs(1)" + repeated("+1", 50) << int(kEvalFailed) << 0.0;
        QTest::newRow("21 open parentheses")
            << repeated("(", 21) + "1" + repeated(")", 21) << int(kEvalOk) << 1.0;
        QTest::newRow("22 open parentheses")
            << repeated("(", 22) + "1" + repeated(")", 22) << int(kEvalFailed) << 0.0;
        // Each "*-1" stacks two operators and queues two values before any
        // operator: "-1" and 9 of them hold 20 values at once, "1" and 10 of them 21.
        QTest::newRow("20 values") << "-1" + repeated("*-1", 9) << int(kEvalOk) << 1.0;
        QTest::newRow("21 values") << "1" + repeated("*-1", 10) << int(kEvalFailed) << 0.0;
        QTest::newRow("long text, short queue") << repeated(" ", 10000) + "1" << int(kEvalOk) << 1.0;
    }
    void storage()
    {
        QFETCH(QString, expression);
        QFETCH(int, code);
        QFETCH(double, expected);
        double result = -1;
        QCOMPARE(Evaluate(expression, result), code);
        QCOMPARE(result, expected);
    }
};

QTEST_GUILESS_MAIN(tst_Encode)
#include "tst_Encode.moc"
