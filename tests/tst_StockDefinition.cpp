#include "FeldraFixture.h"
#include "datapage/StockDefinition.h"

#include <QtTest>

#include <cmath>
#include <numbers>

using namespace feldra;
using marelon::StockChoice;

Q_DECLARE_METATYPE(StockChoice)

namespace {

StockChoice Polygon(bool inside, int sidesPosition, int angle)
{
    return {2, inside, sidesPosition, angle};
}

std::shared_ptr<StockData> MainStock(const DocumentState& doc)
{
    for (const auto& stock : doc.data.simulation.stocks)
        if (stock->name == "Main Stock")
            return stock;
    return nullptr;
}

} // namespace

class tst_StockDefinition : public QObject {
    Q_OBJECT

private slots:
    void stockCode_data()
    {
        QTest::addColumn<StockChoice>("choice");
        QTest::addColumn<QString>("code");
        QTest::newRow("bar") << StockChoice{} << "0";
        QTest::newRow("tube") << StockChoice{1} << "10000";
        QTest::newRow("hexagon on OD at 30") << Polygon(false, 1, 30) << "20130";
        QTest::newRow("octagon on ID at 44") << Polygon(true, 2, 44) << "21244";
        QTest::newRow("square on ID at 0") << Polygon(true, 0, 0) << "21000";
        QTest::newRow("profile") << StockChoice{3} << "30000";
    }
    void stockCode()
    {
        QFETCH(StockChoice, choice);
        QFETCH(QString, code);
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        QCOMPARE(marelon::PackStockCode(choice), code);
        const StockChoice back = marelon::UnpackStockCode(code.toDouble());
        QCOMPARE(back.type, choice.type);
        QCOMPARE(back.insideCircle, choice.insideCircle);
        QCOMPARE(back.sidesPosition, choice.sidesPosition);
        QCOMPARE(back.baseAngle, choice.baseAngle);
    }

    void unpackOddCodes()
    {
        // A base angle that would spill into the sides digit is kept at 99.
        QCOMPARE(marelon::PackStockCode(Polygon(false, 1, 120)), QStringLiteral("20199"));
        for (double odd : {-20130.0, std::nan(""), 1e300}) {
            const StockChoice choice = marelon::UnpackStockCode(odd);
            QCOMPARE(choice.type, 0);
            QCOMPARE(choice.baseAngle, 0);
        }
    }

    void polygonOutsideDiameter_data()
    {
        QTest::addColumn<double>("diameter");
        QTest::addColumn<int>("sides");
        QTest::addColumn<bool>("inside");
        QTest::addColumn<double>("expected");
        QTest::newRow("hexagon ID 20") << 20.0 << 6 << true << 23.0940107675850;
        QTest::newRow("hexagon OD 20") << 20.0 << 6 << false << 20.0;
        QTest::newRow("hexagon ID 10") << 10.0 << 6 << true << 11.5470053837925;
        QTest::newRow("square ID 10") << 10.0 << 4 << true << 10 * std::numbers::sqrt2;
        QTest::newRow("negative ID") << -10.0 << 8 << true << 10 / std::cos(std::numbers::pi / 8);
    }
    void polygonOutsideDiameter()
    {
        QFETCH(double, diameter);
        QFETCH(int, sides);
        QFETCH(bool, inside);
        QFETCH(double, expected);
        QVERIFY(std::fabs(marelon::PolygonOutsideDiameter(diameter, sides, inside) - expected) < 1e-12);
    }

    void normaliseBaseAngle_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<int>("sides");
        QTest::addColumn<double>("expected");
        QTest::newRow("-10, 4 sides") << -10.0 << 4 << 80.0;
        QTest::newRow("200, 8 sides") << 200.0 << 8 << 20.0;
        QTest::newRow("90, 4 sides") << 90.0 << 4 << 0.0;
        QTest::newRow("59.5, 6 sides") << 59.5 << 6 << 59.5;
        QTest::newRow("75, 6 sides") << 75.0 << 6 << 15.0;
        QTest::newRow("-720, 6 sides") << -720.0 << 6 << 0.0;
        QTest::newRow("huge") << 1e300 << 8 << std::fmod(1e300, 45.0);
        QTest::newRow("not finite") << double(INFINITY) << 4 << 0.0;
    }
    void normaliseBaseAngle()
    {
        QFETCH(double, angle);
        QFETCH(int, sides);
        QFETCH(double, expected);
        QCOMPARE(marelon::NormaliseBaseAngle(angle, sides), expected);
    }

    // The polygon's chain: its sides in order, closed, on "Temp", turned a
    // quarter turn about Y into the plane across the spindle axis.
    void polygonStock_data()
    {
        QTest::addColumn<int>("circleKind");
        QTest::addColumn<int>("sides");
        QTest::addColumn<bool>("hasTempLayer");
        QTest::addColumn<double>("cornerRadius");
        QTest::newRow("hexagon on ID 20") << 1 << 6 << false << 10 / std::cos(std::numbers::pi / 6);
        QTest::newRow("square on OD 20, Temp there") << 2 << 4 << true << 10.0;
    }
    void polygonStock()
    {
        QFETCH(int, circleKind);
        QFETCH(int, sides);
        QFETCH(bool, hasTempLayer);
        QFETCH(double, cornerRadius);
        fixture::LatheHost lathe;
        DocumentData& d = lathe.doc->data;
        if (hasTempLayer)
            d.layers.append(fixture::named<LayerData>("Temp"));
        const int layers = int(d.layers.size());
        const double baseAngle = marelon::Pi() / 12;

        marelon::BuildPolygonStock(*lathe.app, circleKind, 20, sides, baseAngle, 2, 48);

        QCOMPARE(int(d.layers.size()), hasTempLayer ? layers : layers + 1);
        const auto stock = MainStock(*lathe.doc);
        QVERIFY(stock);
        const auto chain = lathe.doc->Feature(stock->featureKey);
        QVERIFY(chain && chain != d.features.first());
        QCOMPARE(chain->layer, QStringLiteral("Temp"));
        QCOMPARE(int(chain->elements.size()), sides + 1);
        for (int k = 0; k <= sides; ++k) {
            const double a = baseAngle + 2 * std::numbers::pi * k / sides;
            const Point3& p = chain->elements.at(k);
            QVERIFY2(std::hypot(p.x, p.y - cornerRadius * std::sin(a), p.z + cornerRadius * std::cos(a)) < 1e-9,
                     qPrintable(QStringLiteral("corner %1").arg(k)));
        }
        QCOMPARE(stock->kind, 1);
        QCOMPARE(stock->start, 2.0);
        QCOMPARE(stock->length, 48.0);
        QCOMPARE(stock->colour, d.simulation.defaultStockColour);
        QCOMPARE(stock->styleCode, 2);
        QCOMPARE(stock->optionFlag, false);
        QCOMPARE(stock->spindle, 1);
        QCOMPARE(stock->placement, (std::array<double, 12>{0, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 0}));
    }

    void profileStock()
    {
        fixture::LatheHost lathe;
        lathe.doc->data.simulation.defaultStockColour = 0x123456;
        marelon::BuildProfileStock(*lathe.document(), lathe.document()->FeatureChains()->Item("F1"), -1, 30);
        const auto stock = MainStock(*lathe.doc);
        QVERIFY(stock);
        QCOMPARE(stock->featureKey, QStringLiteral("F1"));
        QCOMPARE(stock->start, -1.0);
        QCOMPARE(stock->length, 30.0);
        QCOMPARE(stock->colour, 0x123456);
        QCOMPARE(lathe.host.Faults().CallCount("Simulation.Update"), 1);
    }

    // A refusal of the host ends the build and reaches the caller.
    void hostRefusalPropagates_data()
    {
        QTest::addColumn<QString>("failing");
        QTest::addColumn<bool>("mainStockThere");
        QTest::addColumn<int>("stocksAfter");
        QTest::newRow("polygon") << "GeometryUtility.RegularPolygon" << false << 0;
        QTest::newRow("chain") << "FeatureChains.Add" << false << 0;
        QTest::newRow("new layer") << "Layers.Add" << false << 0;
        QTest::newRow("rotation") << "GeometryUtility.RotateAboutY" << false << 0;
        QTest::newRow("stock") << "Simulation.AddStock" << false << 0;
        QTest::newRow("spindle") << "Stock.Spindle write" << false << 1;
        QTest::newRow("a second Main Stock") << "Simulation.AddStock" << true << 1;
    }
    void hostRefusalPropagates()
    {
        QFETCH(QString, failing);
        QFETCH(bool, mainStockThere);
        QFETCH(int, stocksAfter);
        fixture::LatheHost lathe;
        if (mainStockThere)
            lathe.addStock();
        else
            lathe.host.Faults().Fail(failing);
        QCOMPARE(fixture::failingOperation([&] { marelon::BuildPolygonStock(*lathe.app, 2, 20, 6, 0, 0, 40); }),
                 failing);
        QCOMPARE(int(lathe.doc->data.simulation.stocks.size()), stocksAfter);
    }
};

QTEST_MAIN(tst_StockDefinition)
#include "tst_StockDefinition.moc"
