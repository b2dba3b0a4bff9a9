#include "feldra/macro/FacadePath.h"

#include "addin/host/Document.h"
#include "addin/host/HostError.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/host/Sync.h"
#include "addin/host/Syncs.h"
#include "addin/host/Technology.h"
#include "addin/host/TechnologyParameter.h"
#include "addin/host/Tool.h"
#include "addin/host/Tools.h"
#include "addin/host/WorkPlane.h"
#include "addin/host/WorkPlanes.h"

#include <QMap>
#include <QRegularExpression>
#include <functional>

namespace feldra {

namespace {

struct Node;
using NodePtr = std::shared_ptr<Node>;

// What a member gives: a value or another facade object.
struct Member {
    int arguments = 0;
    std::function<QVariant(const QVariantList&)> value;
    std::function<NodePtr(const QVariantList&)> object;
};

struct Node {
    QString type;
    QMap<QString, Member> members;

    template <class Read>
    void Value(const QString& name, Read read)
    {
        members.insert(name, {0, [read](const QVariantList&) { return QVariant::fromValue(read()); }, {}});
    }
    template <class Read>
    void Object(const QString& name, Read read)
    {
        members.insert(name, {0, {}, [read](const QVariantList&) { return read(); }});
    }
    template <class Read>
    void Item(const QString& name, Read read)
    {
        members.insert(name, {1, {}, [read](const QVariantList& args) { return read(args.value(0)); }});
    }
};

[[noreturn]] void Fail(const QString& description)
{
    throw host::HostError(QStringLiteral("Macro.FacadePath"), description);
}

NodePtr ParameterNode(std::shared_ptr<host::TechnologyParameter> parameter)
{
    auto node = std::make_shared<Node>();
    node->type = "TechnologyParameter";
    node->Value("Value", [parameter] { return parameter->Value(); });
    node->Value("Caption", [parameter] { return parameter->Caption(); });
    return node;
}

NodePtr TechnologyNode(std::shared_ptr<host::Technology> technology)
{
    auto node = std::make_shared<Node>();
    node->type = "Technology";
    node->Value("TechnologyType", [technology] { return technology->TechnologyType(); });
    node->Item("Parameter", [technology](const QVariant& n) { return ParameterNode(technology->Parameter(n.toString())); });
    return node;
}

NodePtr OperationNode(std::shared_ptr<host::Operation> operation)
{
    auto node = std::make_shared<Node>();
    node->type = "Operation";
    node->Value("Name", [operation] { return operation->Name(); });
    node->Value("Suppressed", [operation] { return operation->Suppressed(); });
    node->Object("Technology", [operation] { return TechnologyNode(operation->Technology()); });
    return node;
}

NodePtr ToolNode(std::shared_ptr<host::Tool> tool)
{
    auto node = std::make_shared<Node>();
    node->type = "Tool";
    node->Value("Number", [tool] { return tool->Number(); });
    node->Value("ToolID", [tool] { return tool->ToolID(); });
    node->Value("Comment", [tool] { return tool->Comment(); });
    node->Value("ToolType", [tool] { return tool->ToolType(); });
    node->Value("UnitSystem", [tool] { return tool->UnitSystem(); });
    node->Value("XShift", [tool] { return tool->XShift(); });
    node->Value("YShift", [tool] { return tool->YShift(); });
    node->Value("ZShift", [tool] { return tool->ZShift(); });
    node->Value("HolderIndex", [tool] { return tool->HolderIndex(); });
    node->Value("BackSpindle", [tool] { return tool->BackSpindle(); });
    node->Value("TurretNumber", [tool] { return tool->TurretNumber(); });
    node->Value("StationIndex", [tool] { return tool->StationIndex(); });
    node->Value("SpindleDirection", [tool] { return tool->SpindleDirection(); });
    node->Item("Parameter", [tool](const QVariant& n) { return ParameterNode(tool->Parameter(n.toString())); });
    return node;
}

// A collection counted from 1: Count and Item(i).
template <class Collection, class MakeItem>
NodePtr CollectionNode(const QString& type, std::shared_ptr<Collection> collection, MakeItem makeItem)
{
    auto node = std::make_shared<Node>();
    node->type = type;
    node->Value("Count", [collection] { return collection->Count(); });
    node->Item("Item", [collection, makeItem](const QVariant& i) { return makeItem(collection->Item(i.toInt())); });
    return node;
}

NodePtr SyncNode(std::shared_ptr<host::Sync> sync)
{
    auto node = std::make_shared<Node>();
    node->type = "Sync";
    node->Value("TypeIndex", [sync] { return sync->TypeIndex(); });
    return node;
}

NodePtr WorkPlaneNode(std::shared_ptr<host::WorkPlane> plane)
{
    auto node = std::make_shared<Node>();
    node->type = "WorkPlane";
    node->Value("Name", [plane] { return plane->Name(); });
    return node;
}

NodePtr WorkPlanesNode(std::shared_ptr<host::WorkPlanes> planes)
{
    auto node = std::make_shared<Node>();
    node->type = "WorkPlanes";
    node->Value("Count", [planes] { return planes->Count(); });
    node->Item("Item", [planes](const QVariant& key) {
        return WorkPlaneNode(key.typeId() == QMetaType::QString ? planes->Item(key.toString())
                                                               : planes->Item(key.toInt()));
    });
    return node;
}

NodePtr MachineSetupNode(std::shared_ptr<host::MachineSetup> s)
{
    auto node = std::make_shared<Node>();
    node->type = "MachineSetup";
    node->Value("MakerTag", [s] { return s->MakerTag(); });
    node->Value("MachineCode", [s] { return s->MachineCode(); });
    node->Value("MachineSetupName", [s] { return s->MachineSetupName(); });
    node->Value("StockFrontZ", [s] { return s->StockFrontZ(); });
    node->Value("StockDiameter", [s] { return s->StockDiameter(); });
    node->Value("StockInsideDiameter", [s] { return s->StockInsideDiameter(); });
    node->Value("StockLength", [s] { return s->StockLength(); });
    node->Value("PartLength", [s] { return s->PartLength(); });
    node->Value("StockCode", [s] { return s->StockCode(); });
    node->Value("ProgramName", [s] { return s->ProgramName(); });
    node->Value("ProgramNumber", [s] { return s->ProgramNumber(); });
    node->Value("StartupSpindleSpeed", [s] { return s->StartupSpindleSpeed(); });
    node->Value("BarLoaderDwell", [s] { return s->BarLoaderDwell(); });
    node->Value("BarLoaderType", [s] { return s->BarLoaderType(); });
    node->Value("ToolBreakageDetection", [s] { return s->ToolBreakageDetection(); });
    node->Value("BackSpindleExtension", [s] { return s->BackSpindleExtension(); });
    node->Value("BarLoaderSubProgram", [s] { return s->BarLoaderSubProgram(); });
    node->Value("BarLoaderCommand", [s] { return s->BarLoaderCommand(); });
    using Read = double (host::MachineSetup::*)();
    const QList<std::pair<int, Read>> params{
        {813, &host::MachineSetup::Param813}, {814, &host::MachineSetup::Param814},
        {815, &host::MachineSetup::Param815}, {816, &host::MachineSetup::Param816},
        {817, &host::MachineSetup::Param817}, {818, &host::MachineSetup::Param818},
        {819, &host::MachineSetup::Param819}, {820, &host::MachineSetup::Param820},
        {821, &host::MachineSetup::Param821}, {822, &host::MachineSetup::Param822},
        {824, &host::MachineSetup::Param824}, {893, &host::MachineSetup::Param893},
        {990, &host::MachineSetup::Param990}, {991, &host::MachineSetup::Param991},
        {992, &host::MachineSetup::Param992}};
    for (const auto& param : params) {
        const Read read = param.second;
        node->Value(QStringLiteral("Param%1").arg(param.first), [s, read] { return ((*s).*read)(); });
    }
    return node;
}

NodePtr DocumentNode(std::shared_ptr<host::Document> d)
{
    auto node = std::make_shared<Node>();
    node->type = "Document";
    node->Value("MachineType", [d] { return d->MachineType(); });
    node->Value("UnitSystem", [d] { return d->UnitSystem(); });
    node->Object("MachineSetup", [d] { return MachineSetupNode(d->MachineSetup()); });
    node->Object("Tools", [d] { return CollectionNode("Tools", d->Tools(), ToolNode); });
    node->Object("Operations", [d] { return CollectionNode("Operations", d->Operations(), OperationNode); });
    node->Object("Syncs", [d] { return CollectionNode("Syncs", d->Syncs(), SyncNode); });
    node->Object("WorkPlanes", [d] { return WorkPlanesNode(d->WorkPlanes()); });
    return node;
}

} // namespace

FacadeResult ResolveFacadePath(const std::shared_ptr<host::Document>& document, const QList<FacadeStep>& steps)
{
    if (!document)
        Fail(QStringLiteral("No document is open."));
    NodePtr node = DocumentNode(document);
    QString walked = QStringLiteral("Document");
    for (int i = 0; i < steps.size(); ++i) {
        const FacadeStep& step = steps[i];
        const auto member = node->members.constFind(step.name);
        if (member == node->members.cend())
            Fail(QStringLiteral("%1 (a %2) has no member %3.").arg(walked, node->type, step.name));
        walked += '.' + step.name;
        if (member->arguments > step.arguments.size()) {
            if (i + 1 == steps.size() && !step.called)
                return {FacadeResult::Call, {}, {}};
            Fail(QStringLiteral("%1 takes %2 argument(s).").arg(walked).arg(member->arguments));
        }
        if (member->value) {
            if (i + 1 < steps.size())
                Fail(QStringLiteral("%1 is a value, not an object.").arg(walked));
            return {FacadeResult::Value, member->value(step.arguments), {}};
        }
        node = member->object(step.arguments);
    }
    return {FacadeResult::Object, {}, node->type};
}

QList<FacadeStep> ParseFacadePath(const QString& path)
{
    // Name, optionally followed by (argument) with a number or a "text".
    static const QRegularExpression step(
        QStringLiteral(R"re(^\s*([A-Za-z_]\w*)\s*(?:\(\s*(?:(-?\d+)|"([^"]*)")?\s*\))?\s*(\.|$))re"));
    QList<FacadeStep> steps;
    QString rest = path;
    while (!rest.isEmpty()) {
        const QRegularExpressionMatch match = step.match(rest);
        if (!match.hasMatch())
            Fail(QStringLiteral("Cannot read the facade path \"%1\" at \"%2\".").arg(path, rest));
        FacadeStep parsed{match.captured(1), {}, match.capturedLength(0) > 0 && match.captured(0).contains('(')};
        if (match.capturedStart(2) >= 0)
            parsed.arguments << match.captured(2).toInt();
        else if (match.capturedStart(3) >= 0)
            parsed.arguments << match.captured(3);
        steps << parsed;
        rest = rest.mid(match.capturedLength(0));
        if (match.captured(4).isEmpty() && !rest.isEmpty())
            Fail(QStringLiteral("Cannot read the facade path \"%1\".").arg(path));
    }
    return steps;
}

} // namespace feldra
