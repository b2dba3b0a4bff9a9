#include "datapage/ParameterUpdates.h"

#include "addin/ContinueOnError.h"
#include "addin/host/Document.h"
#include "addin/host/Feature.h"
#include "addin/host/GeometryList.h"
#include "addin/host/LatheToolKind17.h"
#include "addin/host/LatheToolKind23.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/host/Point.h"
#include "addin/host/Technology.h"
#include "addin/host/Technology154.h"
#include "addin/host/Technology207.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "numeric/NumberText.h"

#include <QList>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <type_traits>
#include <utility>

namespace marelon {
namespace {

constexpr int kType154 = 154;
constexpr int kPointEntry = 903;
constexpr int kMillimetres = 71;
constexpr double kMillimetresPerInch = 25.4;
const QString kLengthMask = QStringLiteral("##,##0.0000");

// The operations whose geometry gives the machining length, as ranges of types.
bool IsGeometryOperation(int type)
{
    static constexpr std::array<std::pair<int, int>, 11> kTypes{{
        {37, 37}, {44, 45}, {145, 145}, {148, 152}, {180, 180}, {215, 215},
        {253, 254}, {300, 315}, {317, 317}, {388, 388}, {395, 397},
    }};
    return std::any_of(kTypes.begin(), kTypes.end(),
                       [type](const auto& range) { return type >= range.first && type <= range.second; });
}

bool HoldsPoints(int kind)
{
    return kind == 902 || kind == 903 || kind == 12 || kind == 13;
}

// What read delivers, or none when a host call in it fails.
template <class F>
auto Read(F&& read)
{
    std::optional<std::invoke_result_t<F>> value;
    ContinueOnError([&] { value = read(); });
    return value;
}

struct ActiveOperation {
    std::shared_ptr<host::Operation> operation;
    std::shared_ptr<host::Technology> technology;
    int type = 0;
};

// The operations that are not suppressed, in document order; an operation
// that cannot be read is left out.
QList<ActiveOperation> ActiveOperations(host::Document& document)
{
    QList<ActiveOperation> active;
    ContinueOnError([&] {
        const auto operations = document.Operations();
        const int count = operations->Count();
        for (int i = 1; i <= count; ++i)
            ContinueOnError([&] {
                ActiveOperation op;
                op.operation = operations->Item(i);
                if (op.operation->Suppressed())
                    return;
                op.technology = op.operation->Technology();
                op.type = op.technology->TechnologyType();
                active.append(op);
            });
    });
    return active;
}

// A technology parameter as a number; 0 when it cannot be read or is no number.
double ParameterNumber(host::Technology& technology, const QString& number)
{
    return Read([&] { return numeric::VariantToNumber(technology.Parameter(number)->Value()); })
        .value_or(std::nullopt)
        .value_or(0);
}

std::optional<QString> ToolIdentifier(host::Technology& technology)
{
    return Read([&] { return technology.Parameter(QStringLiteral("498"))->Value().toString(); });
}

// The first tool of the document with this identifier.
std::shared_ptr<host::Tool> FindTool(host::Document& document, const std::optional<QString>& id)
{
    std::shared_ptr<host::Tool> found;
    if (!id)
        return found;
    ContinueOnError([&] {
        const auto tools = document.Tools();
        const int count = tools->Count();
        for (int i = 1; i <= count && !found; ++i)
            ContinueOnError([&] {
                auto tool = tools->Item(i);
                if (tool->ToolID() == *id)
                    found = tool;
            });
    });
    return found;
}

// The technology of the first operation, not suppressed, that cuts off
// (153 or 398); a host refusal leaves the caller.
std::shared_ptr<host::Technology> FirstCutOffTechnology(host::Document& document)
{
    const auto operations = document.Operations();
    const int count = operations->Count();
    for (int i = 1; i <= count; ++i) {
        const auto operation = operations->Item(i);
        if (operation->Suppressed())
            continue;
        auto technology = operation->Technology();
        if (IsCutOffTechnology(technology->TechnologyType()))
            return technology;
    }
    return nullptr;
}

// The first tool of the document with this identifier; a host refusal leaves the caller.
std::shared_ptr<host::Tool> FirstToolWithId(host::Document& document, const QString& id)
{
    const auto tools = document.Tools();
    const int count = tools->Count();
    for (int i = 1; i <= count; ++i)
        if (auto tool = tools->Item(i); tool->ToolID() == id)
            return tool;
    return nullptr;
}

// The width of a parting tool (kind 17 or 23 with corner code 13 or 14).
std::optional<double> PartingWidth(host::Tool& tool)
{
    auto widthIfParting = [](auto view) -> std::optional<double> {
        const int corner = view->CornerCode();
        if (corner == 13 || corner == 14)
            return view->Width();
        return std::nullopt;
    };
    return Read([&]() -> std::optional<double> {
               switch (tool.ToolType()) {
               case 17:
                   return widthIfParting(tool.AsLatheToolKind17());
               case 23:
                   return widthIfParting(tool.AsLatheToolKind23());
               default:
                   return std::nullopt;
               }
           })
        .value_or(std::nullopt);
}

std::optional<double> FirstPointX(host::Operation& operation)
{
    return Read([&]() -> std::optional<double> {
               const auto geometry = operation.GeometryList();
               const int count = geometry->Count();
               for (int i = 1; i <= count; ++i)
                   if (geometry->Kind(i) == kPointEntry) {
                       const auto points = geometry->Points(i);
                       return points.isEmpty() ? std::nullopt : std::optional<double>(points.first()->X());
                   }
               return std::nullopt;
           })
        .value_or(std::nullopt);
}

// The machining length walk: its running values over the operations.
class MachiningLength {
public:
    explicit MachiningLength(host::Document& document) : document_(document) {}

    void Add(const ActiveOperation& op)
    {
        host::Technology& technology = *op.technology;
        if (IsCutOffTechnology(op.type)) {
            if (ParameterNumber(technology, QStringLiteral("793")) == 1)
                Consider(CutOffCandidate(op), true);
        } else if (IsGeometryOperation(op.type)) {
            if (ParameterNumber(technology, QStringLiteral("793")) == 1)
                Consider(GeometryCandidate(*op.operation, FindTool(document_, ToolIdentifier(technology))), false);
        } else if (op.type == kType154) {
            const auto view = Read([&] { return technology.AsTechnology154(); });
            if (view && Read([&] { return (*view)->SpindleCode(); }) == 1) {
                const bool withoutTool = Read([&] { return (*view)->WithoutTool(); }).value_or(0) != 0;
                const auto tool = withoutTool ? nullptr : FindTool(document_, Read([&] { return (*view)->ToolID(); }));
                Consider(GeometryCandidate(*op.operation, tool), false);
            }
        }
    }

    double Length() const { return length_; }
    double BestCutOff() const { return bestCutOff_; }

private:
    void Consider(double candidate, bool cutOff)
    {
        if (candidate <= length_)
            return;
        length_ = candidate;
        if (cutOff)
            bestCutOff_ = candidate;
    }

    double CutOffCandidate(const ActiveOperation& op)
    {
        host::Technology& technology = *op.technology;
        if (const auto tool = FindTool(document_, ToolIdentifier(technology)))
            width_ = PartingWidth(*tool).value_or(width_);
        const double x = Read([&] { return op.operation->Feature()->Element(2)->X(); }).value_or(0);
        const double z = std::nearbyint(std::fabs(x) * 10000) / 10000;
        const double approach = ParameterNumber(technology, QStringLiteral("239")) == 0
                                    ? ParameterNumber(technology, QStringLiteral("233"))
                                    : ParameterNumber(technology, QStringLiteral("232"));
        return z + width_ + approach;
    }

    double GeometryCandidate(host::Operation& operation, const std::shared_ptr<host::Tool>& tool)
    {
        ContinueOnError([&] {
            const auto geometry = operation.GeometryList();
            const int count = geometry->Count();
            for (int i = 1; i <= count; ++i)
                ContinueOnError([&] {
                    if (!HoldsPoints(geometry->Kind(i)))
                        return;
                    for (const auto& point : geometry->Points(i))
                        largestX_ = std::max(largestX_, point->X());
                });
        });
        const double zShift = tool ? Read([&] { return tool->ZShift(); }).value_or(0) : 0;
        return largestX_ - zShift;
    }

    host::Document& document_;
    double length_ = 0;
    double width_ = 0;
    double largestX_ = 0; // over every geometry operation so far, never reset
    double bestCutOff_ = 0;
};

// The longest machining length a model allows, in inches; 0 for no limit.
struct ModelLimit {
    const char* model;
    double limit;
    double limitWith12Setup; // when the document's setup name holds "12"; 0: the same
};

constexpr std::array kModelLimits{
    ModelLimit{"B12", 5.31, 0},        ModelLimit{"B2 12-20", 7.8, 5.31}, ModelLimit{"E2 16J", 12.5, 0},
    ModelLimit{"E2 25J-32", 12.5, 0},  ModelLimit{"E2 32IV", 12.5, 0},    ModelLimit{"L4 25-32", 12.5, 0},
    ModelLimit{"M2-3 20-32", 12.5, 0}, ModelLimit{"L3 16-20", 7.9, 0},    ModelLimit{"L5 16-20", 7.9, 0},
    ModelLimit{"L7 16-20", 7.9, 0},    ModelLimit{"M2-3 12-16", 7.8, 0},
};

// The model's limit in the document's unit; 0 when it has none.
double LimitFor(host::Document& document, const QString& modelName)
{
    const auto row = std::find_if(kModelLimits.begin(), kModelLimits.end(),
                                  [&](const ModelLimit& r) { return modelName == QLatin1String(r.model); });
    if (row == kModelLimits.end())
        return 0;
    double limit = row->limit;
    if (row->limitWith12Setup != 0
        && Read([&] { return document.MachineSetup()->MachineSetupName(); })
               .value_or(QString())
               .contains(QLatin1String("12")))
        limit = row->limitWith12Setup;
    if (Read([&] { return document.UnitSystem(); }) == kMillimetres)
        limit *= kMillimetresPerInch;
    return limit;
}

} // namespace

std::optional<QString> UpdateCutOffTool(host::Document& document)
{
    const auto operations = ActiveOperations(document);
    const auto cutOff = std::find_if(operations.crbegin(), operations.crend(),
                                     [](const ActiveOperation& op) { return IsCutOffTechnology(op.type); });
    if (cutOff == operations.crend())
        return std::nullopt;
    const auto tool = FindTool(document, ToolIdentifier(*cutOff->technology));
    if (!tool)
        return std::nullopt;
    return Read([&] { return numeric::NumberToText(tool->Number()); });
}

std::optional<QString> UpdateColletExtension(host::Document& document)
{
    const auto operations = ActiveOperations(document);
    const auto pickUp = std::find_if(operations.crbegin(), operations.crend(),
                                     [](const ActiveOperation& op) { return op.type == kPickUpTechnology; });
    if (pickUp == operations.crend())
        return QStringLiteral("0");
    return Read([&] { return numeric::NumberToText(pickUp->technology->AsTechnology207()->ColletExtension()); });
}

BackSpindleChuckPosition UpdateBackSpindleChuckPos(host::Document& document, const QString& colletExtensionText)
{
    BackSpindleChuckPosition result;
    bool cutOffMet = false;
    bool pickUpMet = false;
    std::optional<double> pointX;
    const auto operations = ActiveOperations(document);
    for (auto op = operations.crbegin(); op != operations.crend() && !(cutOffMet && pickUpMet); ++op) {
        if (op->type == kPickUpTechnology) {
            if (auto text = Read([&] {
                    return numeric::NumberToText(op->technology->AsTechnology207()->ColletExtension());
                }))
                result.colletExtension = text;
            if (!pickUpMet)
                pointX = FirstPointX(*op->operation);
            pickUpMet = true;
        } else if (IsCutOffTechnology(op->type)) {
            // The host is asked for the point at the cut-off's end; the position does not use it.
            ContinueOnError([&] {
                const auto end = op->operation->Feature()->Element(2);
                document.MakePoint(end->X(), end->Y(), end->Z());
            });
            cutOffMet = true;
        }
    }
    if (!(cutOffMet && pickUpMet)) {
        result.chuckPosition = QStringLiteral("0");
        return result;
    }
    const QString colletText = result.colletExtension.value_or(colletExtensionText);
    const double collet = numeric::IsNumeric(colletText) ? numeric::ToDouble(colletText) : 0;
    const double partLength = Read([&] { return document.MachineSetup()->PartLength(); }).value_or(0);
    result.chuckPosition =
        numeric::Format(partLength - std::fabs(pointX.value_or(0)) + collet, kLengthMask).trimmed();
    return result;
}

QString UpdateMachiningLength(host::Document& document, const QString& modelName, bool writeTo813)
{
    MachiningLength walk(document);
    for (const ActiveOperation& op : ActiveOperations(document))
        walk.Add(op);
    if (writeTo813)
        return numeric::Format(std::fabs(walk.BestCutOff()), kLengthMask);
    double length = walk.Length();
    const double limit = LimitFor(document, modelName);
    if (limit != 0 && length >= limit)
        length = limit;
    return numeric::Format(std::fabs(length), kLengthMask);
}

double EvalFaceAmount(host::Document& document, double zFacingAmount)
{
    const auto cutOff = FirstCutOffTechnology(document);
    if (!cutOff)
        return 0;
    const QString id = cutOff->Parameter(QStringLiteral("498"))->Value().toString();
    const auto tool = FirstToolWithId(document, id);
    if (!tool)
        return 0;
    auto face = [zFacingAmount](auto kind) {
        return kind->CornerCode() == 14 ? -std::abs(zFacingAmount)
                                         : kind->CentreOffset() - kind->Width() - std::abs(zFacingAmount);
    };
    double amount = 0;
    if (tool->ToolType() == 17)
        amount = face(tool->AsLatheToolKind17());
    else if (tool->ToolType() == 23)
        amount = face(tool->AsLatheToolKind23());
    return numeric::LeadingNumber(numeric::NumberToInvariantText(amount));
}

} // namespace marelon
