#include "feldra/NcListing.h"

#include "addin/host/Localizer.h"
#include "numeric/NumberText.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace feldra {
namespace {

// The Data Page parameters in listing order, with the Data Page's captions.
constexpr DataPageParameter kDataPageParameters[] = {
    {813, "Work Receiver No.(##)"},
    {814, "Bar Stock O.D."},
    {815, "Tool Positioning Point"},
    {816, "Cut Off Tool"},
    {817, "Cut Off Speed"},
    {818, "Machining Length"},
    {819, "Parts Per/1 Chuck"},
    {820, "Pipe ID/Tube ID"},
    {821, "Back Spl Chuck POS"},
    {822, "Cut Off Feed"},
    {824, "Cut Off End Point"},
    {893, "Back Spindle"},
    {990, "Gang Holder"},
    {991, "Front Drill Holder"},
    {992, "Back Drill Holder"},
};

constexpr int kLabelWidth = 27; // the narrowest column of the field labels

QString Number(double value)
{
    return numeric::NumberToInvariantText(value);
}

QString Quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

// A value as it stands.
NcText Value(const QString& text) { return NcText{text, false, {}, 0}; }

// The host's words framing values: "HEAD %1 OF %2".
NcText Words(const char* english, std::vector<NcText> args = {})
{
    return NcText{QString::fromLatin1(english), true, std::move(args), 0};
}

// Texts one after the other, separated by a space.
NcText Joined(const std::vector<NcText>& parts, const QString& separator = QStringLiteral(" "))
{
    QString format;
    for (std::size_t i = 0; i < parts.size(); ++i)
        format += (i ? separator : QString()) + QLatin1Char('%') + QString::number(i + 1);
    return NcText{format, false, parts, 0};
}

NcText UnitName(int code)
{
    switch (code) {
    case 70: return Words("INCH");
    case 71: return Words("METRIC");
    default: return Words("UNKNOWN %1", {Value(Number(code))});
    }
}

// The unit of the listing's lengths: the document's.
NcText NumbersNote(int code)
{
    switch (code) {
    case 70: return Words("NUMBERS IN INCHES (LENGTHS), DEGREES, RPM AND SECONDS");
    case 71: return Words("NUMBERS IN MILLIMETRES (LENGTHS), DEGREES, RPM AND SECONDS");
    default: return Words("NUMBERS IN THE DOCUMENT'S UNIT %1 (LENGTHS), DEGREES, RPM AND SECONDS", {Value(Number(code))});
    }
}

NcText SpindleDirectionName(int direction)
{
    switch (direction) {
    case -1: return Words("FORWARD");
    case 0: return Words("NONE");
    case 1: return Words("REVERSE");
    default: return Words("UNKNOWN %1", {Value(Number(direction))});
    }
}

NcText BarLoaderTypeText(double type)
{
    const char* name = type == 0   ? "HYDROSTATIC"
                       : type == 1 ? "MAGAZINE, SUB PROGRAM"
                       : type == 2 ? "MAGAZINE, M CODE"
                                   : "UNKNOWN";
    return NcText{QStringLiteral("%1 (%2)"), false, {Value(Number(type)), Words(name)}, 0};
}

bool IsText(const QVariant& value)
{
    return value.typeId() == QMetaType::QString || value.typeId() == QMetaType::QByteArray;
}

// A parameter value as text: numbers in the invariant form, texts as they stand.
QString TextOf(const QVariant& value)
{
    const std::optional<double> number = IsText(value) ? std::nullopt : numeric::VariantToNumber(value, QLocale::c());
    return number ? Number(*number) : value.toString();
}

const ParameterData* FindParameter(const TechnologyData* technology, const char* name)
{
    if (!technology)
        return nullptr;
    const auto it = technology->parameters.constFind(QString::fromLatin1(name));
    return it == technology->parameters.cend() ? nullptr : &*it;
}

// The identifier of the operation's tool; none when the operation has no tool.
std::optional<QString> ToolIdOf(const TechnologyData* technology)
{
    if (!technology)
        return std::nullopt;
    if (technology->type == 154) {
        if (technology->withoutTool != 0 || technology->toolId.isEmpty())
            return std::nullopt;
        return technology->toolId;
    }
    for (const char* name : {"498", "ToolID"}) {
        if (const ParameterData* parameter = FindParameter(technology, name)) {
            const QString id = TextOf(parameter->value);
            if (!id.isEmpty())
                return id;
        }
    }
    return std::nullopt;
}

// The non-empty entries of a list of records.
template <typename T>
QList<const T*> Present(const QList<std::shared_ptr<T>>& records)
{
    QList<const T*> present;
    for (const auto& record : records)
        if (record)
            present.append(record.get());
    return present;
}

bool IsEmptyNode(const SyncNodeData& node)
{
    return node.operationId == 0 && node.placement == 0 && node.elementIndex == 0;
}

// What one listing is about: a head, or the whole machine when there is none.
struct ListingHead {
    int number = 0; // 1-based; 0 for the whole machine
    int count = 0;
    const NCHeadData* head = nullptr;
};

// Writes the listing of one head, line by line.
class ListingWriter {
public:
    ListingWriter(const DocumentData& document, ListingHead head)
        : document_(document), setup_(document.machineSetup), head_(head),
          tools_(Present(document.tools)), operations_(Present(document.operations)),
          syncs_(Present(document.syncs))
    {
        std::stable_sort(tools_.begin(), tools_.end(),
                         [](const ToolData* a, const ToolData* b) { return a->number < b->number; });
        for (qsizetype i = 0; i < document.operations.size(); ++i) {
            const OperationData* operation = document.operations[i].get();
            if (!operation)
                continue;
            numbers_.insert(operation, int(i + 1));
            if (operation->id != 0 && !byId_.contains(operation->id))
                byId_.insert(operation->id, operation);
        }
    }

    std::vector<NcText> Write()
    {
        WriteHeader();
        WriteDataPage();
        WriteTools();
        WriteOperations();
        WriteSyncs();
        return std::move(lines_);
    }

private:
    void Line(NcText text) { lines_.push_back(std::move(text)); }
    // A line indented by two spaces.
    void Item(NcText text) { Line(NcText{QStringLiteral("  %1"), false, {std::move(text)}, 0}); }

    // "813 Work Receiver No.(##)   25": the values of a listing's fields stand
    // in one column, after the widest label in the language shown.
    void Field(NcText label, NcText value)
    {
        label.width = NcText::kField;
        Item(NcText{QStringLiteral("%1 %2"), false, {std::move(label), std::move(value)}, 0});
    }

    void WriteHeader()
    {
        const NCHeadData* head = head_.head;
        Line(head ? Words("HEAD %1 OF %2", {Value(Number(head_.number)), Value(Number(head_.count))})
                  : Words("MACHINE (NO NC HEADS)"));
        const QString name = head && !head->programName.isEmpty() ? head->programName : setup_.programName;
        const int number = head && head->programNumber != 0 ? head->programNumber : setup_.programNumber;
        Line(Words("PROGRAM %1 %2", {Value(QLatin1Char('O') + Number(number)), Value(Quoted(name))}));
        if (head)
            Line(Words("COMMENT %1", {Value(Quoted(head->comment))}));
        Line(Words("OUTPUT UNIT %1", {UnitName(head ? head->outputUnit : document_.unitSystem)}));
        Line(Words("DOCUMENT UNIT %1", {UnitName(document_.unitSystem)}));
        // The numbers below are the document's values, whatever the output unit.
        Line(NumbersNote(document_.unitSystem));
    }

    void WriteDataPage()
    {
        Section("DATA PAGE");
        for (const DataPageParameter& parameter : kDataPageParameters) {
            const auto it = setup_.params.constFind(parameter.number);
            Field(Joined({Value(Number(parameter.number)), Words(parameter.caption)}),
                  it == setup_.params.cend() ? Words("(NOT SET)") : Value(Number(*it)));
        }
        Field(Words("Face Amount"), Value(Number(setup_.faceAmount)));
        Field(Words("Startup Spindle Speed"), Value(Number(setup_.startupSpindleSpeed)));
        Field(Words("Bar Loader Dwell (s)"), Value(Number(setup_.barLoaderDwell)));
        Field(Words("Bar Loader Type"), BarLoaderTypeText(setup_.barLoaderType));
        Field(Words("Bar Loader Sub Program"), Value(Quoted(setup_.barLoaderSubProgram)));
        Field(Words("Bar Loader Command"),
              setup_.barLoaderCommand.isEmpty() ? Words("(NONE)") : Value(setup_.barLoaderCommand));
    }

    void WriteTools()
    {
        Section("TOOLS");
        for (const ToolData* tool : tools_)
            Item(Words("T%1 ID=%2 X=%3 Y=%4 Z=%5 SPINDLE=%6 GEAR=%7 HOLDER=%8 TURRET=%9 STATION=%10 UNIT=%11 COMMENT=%12",
                       {Value(Number(tool->number)), Value(Quoted(tool->toolId)), Value(Number(tool->xShift)),
                        Value(Number(tool->yShift)), Value(Number(tool->zShift)),
                        SpindleDirectionName(tool->spindleDirection), Value(Number(tool->gearRatio)),
                        Value(Number(tool->holderIndex)), Value(Number(tool->turretNumber)),
                        Value(Number(tool->stationIndex)), UnitName(tool->unitSystem), Value(Quoted(tool->comment))}));
        if (tools_.isEmpty())
            Item(Words("(NONE)"));
    }

    void WriteOperations()
    {
        Section("OPERATIONS");
        bool any = false;
        for (const OperationData* operation : operations_) {
            if (!BelongsToHead(*operation))
                continue;
            any = true;
            Item(OperationLine(*operation));
            WriteSyncsOf(*operation);
        }
        if (!any)
            Item(Words("(NONE)"));
    }

    void WriteSyncs()
    {
        Section("SYNCS");
        for (qsizetype i = 0; i < syncs_.size(); ++i) {
            std::vector<NcText> nodes;
            for (const SyncNodeData& node : syncs_[i]->nodes)
                if (!IsEmptyNode(node))
                    nodes.push_back(NodeText(node));
            Item(Joined({Value(QLatin1Char('#') + Number(double(i + 1))), TypeName(*syncs_[i]),
                         nodes.empty() ? Words("NO NODES") : Joined(nodes, QStringLiteral(", "))}));
        }
        if (syncs_.isEmpty())
            Item(Words("(NONE)"));
    }

    void Section(const char* title)
    {
        Line(Value(QString()));
        Line(Words(title));
    }

    // "OP 7 "Face" TYPE=37 TOOL=T1 ID="OD55" HEAD=1 SUPPRESSED"
    NcText OperationLine(const OperationData& operation) const
    {
        const TechnologyData* technology = operation.technology.get();
        std::vector<NcText> parts{Words("OP %1 %2 TYPE=%3", {Value(Number(numbers_.value(&operation))),
                                                             Value(Quoted(operation.name)),
                                                             Value(Number(technology ? technology->type : 0))})};
        if (const auto toolId = ToolIdOf(technology)) {
            const ToolData* tool = FindTool(*toolId);
            parts.push_back(Words("TOOL=%1 ID=%2", {Value(tool ? QLatin1Char('T') + Number(tool->number) : QStringLiteral("?")),
                                                   Value(Quoted(*toolId))}));
        } else {
            parts.push_back(Words("TOOL=NONE"));
        }
        if (const ParameterData* headId = FindParameter(technology, "HeadID"))
            parts.push_back(Words("HEAD=%1", {Value(TextOf(headId->value))}));
        if (operation.suppressed)
            parts.push_back(Words("SUPPRESSED"));
        return Joined(parts);
    }

    // One line per node of a synchronisation that names the operation:
    // "SYNC G821 #1 P3 E0 WITH OP 9 "Back drill" P3 E1"
    void WriteSyncsOf(const OperationData& operation)
    {
        for (qsizetype i = 0; i < syncs_.size(); ++i) {
            const auto& nodes = syncs_[i]->nodes;
            for (std::size_t own = 0; own < nodes.size(); ++own) {
                if (nodes[own].operationId == 0 || nodes[own].operationId != operation.id)
                    continue;
                std::vector<NcText> others;
                for (std::size_t other = 0; other < nodes.size(); ++other)
                    if (other != own && !IsEmptyNode(nodes[other]))
                        others.push_back(NodeText(nodes[other]));
                Item(NcText{QStringLiteral("  %1"), false,
                            {Words("SYNC %1 #%2 %3 WITH %4",
                                   {TypeName(*syncs_[i]), Value(Number(double(i + 1))), Value(PlacementText(nodes[own])),
                                    others.empty() ? Words("NO OTHER NODE") : Joined(others, QStringLiteral(", "))})},
                            0});
            }
        }
    }

    NcText NodeText(const SyncNodeData& node) const
    {
        NcText operation;
        if (node.operationId == 0) {
            operation = Words("NO OPERATION");
        } else {
            const OperationData* found = byId_.value(node.operationId);
            operation = found ? Words("OP %1 %2", {Value(Number(numbers_.value(found))), Value(Quoted(found->name))})
                              : Words("OP (MISSING ID %1)", {Value(Number(node.operationId))});
        }
        return Joined({operation, Value(PlacementText(node))});
    }

    static QString PlacementText(const SyncNodeData& node)
    {
        return QLatin1Char('P') + Number(node.placement) + QStringLiteral(" E") + Number(node.elementIndex);
    }

    // The name of the setup entry that the type index points to.
    NcText TypeName(const SyncData& sync) const
    {
        const qsizetype index = sync.typeIndex;
        if (index < 1 || index > setup_.setupEntries.size() || !setup_.setupEntries[index - 1]
            || setup_.setupEntries[index - 1]->name.isEmpty())
            return Words("(NO TYPE)");
        return Value(setup_.setupEntries[index - 1]->name);
    }

    // Operations whose "HeadID" names one of the heads belong to that head
    // alone; every other operation belongs to every head.
    bool BelongsToHead(const OperationData& operation) const
    {
        if (!head_.head)
            return true;
        const ParameterData* headId = FindParameter(operation.technology.get(), "HeadID");
        const std::optional<double> named = headId ? numeric::VariantToNumber(headId->value, QLocale::c()) : std::nullopt;
        const bool namesAHead = named && *named >= 1 && *named <= head_.count && *named == int(*named);
        return !namesAHead || int(*named) == head_.number;
    }

    const ToolData* FindTool(const QString& toolId) const
    {
        const auto it = std::find_if(document_.tools.cbegin(), document_.tools.cend(),
                                     [&](const auto& tool) { return tool && tool->toolId == toolId; });
        return it == document_.tools.cend() ? nullptr : it->get();
    }

    const DocumentData& document_;
    const MachineSetupData& setup_;
    const ListingHead head_;
    QList<const ToolData*> tools_; // in tool-number order
    const QList<const OperationData*> operations_;
    const QList<const SyncData*> syncs_;
    QHash<const OperationData*, int> numbers_; // in document order, from 1
    QHash<int, const OperationData*> byId_;
    std::vector<NcText> lines_;
};

} // namespace

int NcText::FieldWidth(const host::Localizer* localizer) const
{
    int widest = width == kField ? int(Shown(localizer).size()) : 0;
    for (const NcText& arg : args)
        widest = std::max(widest, arg.FieldWidth(localizer));
    return widest;
}

QString NcText::Shown(const host::Localizer* localizer, int fieldWidth) const
{
    const QString format = words && localizer ? localizer->Translate(text) : text;
    QString shown;
    if (args.empty()) {
        shown = format;
    } else {
        // %1..%n replaced in one pass, so that a value holding "%2" stays as it is
        for (qsizetype i = 0; i < format.size(); ++i) {
            std::size_t n = 0;
            qsizetype digits = 0;
            while (format.at(i) == QLatin1Char('%') && i + 1 + digits < format.size() && digits < 2
                   && format.at(i + 1 + digits).isDigit()) {
                const std::size_t longer = n * 10 + std::size_t(format.at(i + 1 + digits).digitValue());
                if (longer < 1 || longer > args.size())
                    break;
                n = longer;
                ++digits;
            }
            if (n == 0) {
                shown += format.at(i);
                continue;
            }
            shown += args[n - 1].Shown(localizer, fieldWidth);
            i += digits;
        }
    }
    return width == kField ? shown.leftJustified(fieldWidth) : shown;
}

NcListings::NcListings(const DocumentData& document)
{
    const QList<const NCHeadData*> heads = Present(document.machineSetup.heads);
    if (heads.isEmpty())
        heads_.push_back(ListingWriter(document, ListingHead{}).Write());
    for (qsizetype i = 0; i < heads.size(); ++i)
        heads_.push_back(ListingWriter(document, ListingHead{int(i + 1), int(heads.size()), heads[i]}).Write());
}

QStringList NcListings::Heads(const host::Localizer* localizer) const
{
    QStringList listings;
    for (const std::vector<NcText>& lines : heads_) {
        int fieldWidth = kLabelWidth;
        for (const NcText& line : lines)
            fieldWidth = std::max(fieldWidth, line.FieldWidth(localizer));
        QString listing;
        for (const NcText& line : lines)
            listing += line.Shown(localizer, fieldWidth) + QLatin1Char('\n');
        listings.append(listing);
    }
    return listings;
}

QString NcListings::Text(const host::Localizer* localizer) const
{
    return Heads(localizer).join(QLatin1Char('\n'));
}

QList<DataPageParameter> DataPageParameters()
{
    return {std::begin(kDataPageParameters), std::end(kDataPageParameters)};
}

int OperationNumber(const DocumentData& document, int operationId)
{
    if (operationId == 0)
        return 0;
    for (qsizetype i = 0; i < document.operations.size(); ++i)
        if (document.operations[i] && document.operations[i]->id == operationId)
            return int(i + 1);
    return 0;
}

QStringList GenerateNcListings(const DocumentData& document, const host::Localizer* localizer)
{
    return NcListings(document).Heads(localizer);
}

QString GenerateNcListing(const DocumentData& document, const host::Localizer* localizer)
{
    return NcListings(document).Text(localizer);
}

} // namespace feldra
