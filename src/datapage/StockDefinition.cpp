#include "datapage/StockDefinition.h"

#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/host/Feature.h"
#include "addin/host/FeatureChains.h"
#include "addin/host/GeometryUtility.h"
#include "addin/host/HostError.h"
#include "addin/host/Layer.h"
#include "addin/host/Layers.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Simulation.h"
#include "addin/host/Spindles.h"
#include "addin/host/Stock.h"
#include "datapage/DataPageSettings.h"
#include "numeric/NumberText.h"

#include <algorithm>
#include <cmath>

namespace marelon {
namespace {

const QString kMainStock = QStringLiteral("Main Stock");
const QString kTempLayer = QStringLiteral("Temp");
constexpr int kSweptStock = 1;
constexpr int kStockStyle = 2;
constexpr int kMainSpindle = 1;
constexpr double kLargestCode = 2147483647.0;

// The layer of that name, added when the document does not have it.
std::shared_ptr<host::Layer> LayerNamed(host::Document& document, const QString& name)
{
    const auto layers = document.Layers();
    try {
        return layers->Item(name);
    } catch (const host::HostError&) {
        return layers->Add(name);
    }
}

// An outline whose stock was not built goes again: nothing else knows of it,
// and the next OK would leave it behind. What the host refuses here, the
// caller's error about the stock already tells the user.
void RemoveOutline(host::Document& document, host::Feature& outline)
{
    try {
        document.FeatureChains()->Remove(outline.Key());
    } catch (const host::HostError&) {
    }
}

} // namespace

double Pi()
{
    return 4 * std::atan(1.0);
}

QString PackStockCode(const StockChoice& choice)
{
    int code = choice.type * 10000;
    if (choice.type == kPolygon)
        code += (choice.insideCircle ? 1000 : 0) + std::clamp(choice.sidesPosition, 0, 9) * 100
                + std::clamp(choice.baseAngle, 0, 99);
    return numeric::NumberToText(code);
}

StockChoice UnpackStockCode(double code)
{
    StockChoice choice;
    if (!(code >= 0 && code <= kLargestCode) || int(code / 10000) > kProfile)
        return choice; // a code of no stock type: a bar
    const int whole = numeric::RoundToInt32(code);
    choice.type = int(code / 10000);
    choice.insideCircle = int(code / 1000) == 21;
    choice.sidesPosition = whole % 1000 / 100;
    choice.baseAngle = whole % 100;
    return choice;
}

double PolygonOutsideDiameter(double circleDiameter, int sides, bool insideCircle)
{
    if (!insideCircle)
        return circleDiameter;
    return std::fabs(circleDiameter / std::cos(Pi() / sides));
}

double NormaliseBaseAngle(double angle, int sides)
{
    if (!std::isfinite(angle))
        return 0;
    if (sides < 3)
        return angle;
    const double pitch = 360.0 / sides;
    double normalised = std::fmod(angle, pitch);
    if (normalised < 0)
        normalised += pitch;
    return normalised < pitch ? normalised : 0;
}

std::shared_ptr<host::Stock> AddMainStock(host::Document& document, std::shared_ptr<host::Feature> feature,
                                          double start, double length)
{
    const auto simulation = document.Simulation();
    auto stock = simulation->AddStock(kMainStock, kSweptStock, std::move(feature), length, start);
    stock->setColour(simulation->DefaultStockColour());
    stock->setStyleCode(kStockStyle);
    stock->setOptionFlag(false);
    stock->setSpindle(document.MachineSetup()->Spindles()->Item(kMainSpindle));
    // The origin, then the three unit vectors of a right-handed frame.
    stock->setPlacement({0, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 0});
    return stock;
}

void BuildPolygonStock(host::Application& application, int circleKind, double diameter, int sides,
                       double baseAngle, double start, double length)
{
    const auto document = application.ActiveDocument();
    if (!document)
        throw host::HostError(QStringLiteral("Application.ActiveDocument"), QStringLiteral("No document is open."));
    const auto geometry = application.GeometryUtility();
    const auto centre = document->MakePoint(0, 0, 0);
    const QList<host::Segment> sidesOfPolygon = geometry->RegularPolygon(centre, circleKind, diameter, baseAngle, sides);
    if (sidesOfPolygon.isEmpty())
        throw host::HostError(QStringLiteral("GeometryUtility.RegularPolygon"), QStringLiteral("No polygon."));

    const auto chain = document->FeatureChains()->Add(sidesOfPolygon.first());
    try {
        for (qsizetype i = 1; i < sidesOfPolygon.size(); ++i)
            chain->AddSegment(sidesOfPolygon.at(i));
        chain->setLayer(LayerNamed(*document, kTempLayer));
        geometry->RotateAboutY(chain, Pi() / 2);
        AddMainStock(*document, chain, start, length);
    } catch (...) {
        RemoveOutline(*document, *chain);
        throw;
    }
}

QString PolygonOutlineKey(host::Document& document)
{
    const auto profile = document.Simulation()->Stock(kMainStock)->Profile();
    return profile->Layer()->Name() == kTempLayer ? profile->Key() : QString();
}

void BuildProfileStock(host::Document& document, std::shared_ptr<host::Feature> feature, double start,
                       double length)
{
    AddMainStock(document, std::move(feature), start, length);
    document.Simulation()->Update(false);
}

} // namespace marelon
