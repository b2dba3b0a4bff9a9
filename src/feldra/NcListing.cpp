#include "feldra/NcListing.h"

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

constexpr qsizetype kLabelWidth = 28; // wider than the longest Data Page label

QString Number(double value)
{
    return numeric::NumberToInvariantText(value);
}

QString Quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString UnitName(int code)
{
    switch (code) {
    case 70: return QStringLiteral("INCH");
    case 71: return QStringLiteral("METRIC");
    default: return QStringLiteral("UNKNOWN ") + Number(code);
    }
}

// The unit of the listing's lengths: the document's.
QString NumbersUnit(int code)
{
    switch (code) {
    case 70: return QStringLiteral("INCHES");
    case 71: return QStringLiteral("MILLIMETRES");
    default: return QStringLiteral("THE DOCUMENT'S UNIT ") + Number(code);
    }
}

QString SpindleDirectionName(int direction)
{
    switch (direction) {
    case -1: return QStringLiteral("FORWARD");
    case 0: return QStringLiteral("NONE");
    case 1: return QStringLiteral("REVERSE");
    default: return QStringLiteral("UNKNOWN ") + Number(direction);
    }
}

QString BarLoaderTypeText(double type)
{
    const QString name = type == 0   ? QStringLiteral("HYDROSTATIC")
                         : type == 1 ? QStringLiteral("MAGAZINE, SUB PROGRAM")
                         : type == 2 ? QStringLiteral("MAGAZINE, M CODE")
                                     : QStringLiteral("UNKNOWN");
    return Number(type) + QStringLiteral(" (") + name + QLatin1Char(')');
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

    QString Write()
    {
        WriteHeader();
        WriteDataPage();
        WriteTools();
        WriteOperations();
        WriteSyncs();
        return lines_.join(QLatin1Char('\n')) + QLatin1Char('\n');
    }

private:
    void Line(const QString& text) { lines_.append(text); }

    void Field(const QString& label, const QString& value)
    {
        Line(QStringLiteral("  ") + label.leftJustified(kLabelWidth) + value);
    }

    void WriteHeader()
    {
        const NCHeadData* head = head_.head;
        Line(head ? QStringLiteral("HEAD %1 OF %2").arg(Number(head_.number), Number(head_.count))
                  : QStringLiteral("MACHINE (NO NC HEADS)"));
        const QString name = head && !head->programName.isEmpty() ? head->programName : setup_.programName;
        const int number = head && head->programNumber != 0 ? head->programNumber : setup_.programNumber;
        Line(QStringLiteral("PROGRAM O") + Number(number) + QLatin1Char(' ') + Quoted(name));
        if (head)
            Line(QStringLiteral("COMMENT ") + Quoted(head->comment));
        Line(QStringLiteral("OUTPUT UNIT ") + UnitName(head ? head->outputUnit : document_.unitSystem));
        Line(QStringLiteral("DOCUMENT UNIT ") + UnitName(document_.unitSystem));
        // The numbers below are the document's values, whatever the output unit.
        Line(QStringLiteral("NUMBERS IN ") + NumbersUnit(document_.unitSystem)
             + QStringLiteral(" (LENGTHS), DEGREES, RPM AND SECONDS"));
    }

    void WriteDataPage()
    {
        Section(QStringLiteral("DATA PAGE"));
        for (const DataPageParameter& parameter : kDataPageParameters) {
            const auto it = setup_.params.constFind(parameter.number);
            Field(Number(parameter.number) + QLatin1Char(' ') + QLatin1String(parameter.caption),
                  it == setup_.params.cend() ? QStringLiteral("(NOT SET)") : Number(*it));
        }
        Field(QStringLiteral("Face Amount"), Number(setup_.faceAmount));
        Field(QStringLiteral("Startup Spindle Speed"), Number(setup_.startupSpindleSpeed));
        Field(QStringLiteral("Bar Loader Dwell (s)"), Number(setup_.barLoaderDwell));
        Field(QStringLiteral("Bar Loader Type"), BarLoaderTypeText(setup_.barLoaderType));
        Field(QStringLiteral("Bar Loader Sub Program"), Quoted(setup_.barLoaderSubProgram));
        Field(QStringLiteral("Bar Loader Command"),
              setup_.barLoaderCommand.isEmpty() ? QStringLiteral("(NONE)") : setup_.barLoaderCommand);
    }

    void WriteTools()
    {
        Section(QStringLiteral("TOOLS"));
        for (const ToolData* tool : tools_)
            Line(QStringLiteral("  T%1 ID=%2 X=%3 Y=%4 Z=%5 SPINDLE=%6 GEAR=%7 HOLDER=%8 TURRET=%9")
                     .arg(Number(tool->number), Quoted(tool->toolId), Number(tool->xShift),
                          Number(tool->yShift), Number(tool->zShift),
                          SpindleDirectionName(tool->spindleDirection), Number(tool->gearRatio),
                          Number(tool->holderIndex), Number(tool->turretNumber))
                 + QStringLiteral(" STATION=%1 UNIT=%2 COMMENT=%3")
                       .arg(Number(tool->stationIndex), UnitName(tool->unitSystem), Quoted(tool->comment)));
        if (tools_.isEmpty())
            Line(QStringLiteral("  (NONE)"));
    }

    void WriteOperations()
    {
        Section(QStringLiteral("OPERATIONS"));
        bool any = false;
        for (const OperationData* operation : operations_) {
            if (!BelongsToHead(*operation))
                continue;
            any = true;
            Line(QStringLiteral("  ") + OperationLine(*operation));
            WriteSyncsOf(*operation);
        }
        if (!any)
            Line(QStringLiteral("  (NONE)"));
    }

    void WriteSyncs()
    {
        Section(QStringLiteral("SYNCS"));
        for (qsizetype i = 0; i < syncs_.size(); ++i) {
            QStringList nodes;
            for (const SyncNodeData& node : syncs_[i]->nodes)
                if (!IsEmptyNode(node))
                    nodes.append(NodeText(node));
            Line(QStringLiteral("  #%1 %2 %3")
                     .arg(Number(double(i + 1)), TypeName(*syncs_[i]),
                          nodes.isEmpty() ? QStringLiteral("NO NODES") : nodes.join(QStringLiteral(", "))));
        }
        if (syncs_.isEmpty())
            Line(QStringLiteral("  (NONE)"));
    }

    void Section(const QString& title)
    {
        Line(QString());
        Line(title);
    }

    // "OP 7 "Face" TYPE=37 TOOL=T1 ID="OD55" HEAD=1 SUPPRESSED"
    QString OperationLine(const OperationData& operation) const
    {
        const TechnologyData* technology = operation.technology.get();
        QString line = QStringLiteral("OP %1 %2 TYPE=%3")
                           .arg(Number(numbers_.value(&operation)), Quoted(operation.name),
                                Number(technology ? technology->type : 0));
        if (const auto toolId = ToolIdOf(technology)) {
            const ToolData* tool = FindTool(*toolId);
            line += QStringLiteral(" TOOL=") + (tool ? QLatin1Char('T') + Number(tool->number) : QStringLiteral("?"))
                    + QStringLiteral(" ID=") + Quoted(*toolId);
        } else {
            line += QStringLiteral(" TOOL=NONE");
        }
        if (const ParameterData* headId = FindParameter(technology, "HeadID"))
            line += QStringLiteral(" HEAD=") + TextOf(headId->value);
        if (operation.suppressed)
            line += QStringLiteral(" SUPPRESSED");
        return line;
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
                QStringList others;
                for (std::size_t other = 0; other < nodes.size(); ++other)
                    if (other != own && !IsEmptyNode(nodes[other]))
                        others.append(NodeText(nodes[other]));
                Line(QStringLiteral("    SYNC %1 #%2 %3 WITH %4")
                         .arg(TypeName(*syncs_[i]), Number(double(i + 1)), PlacementText(nodes[own]),
                              others.isEmpty() ? QStringLiteral("NO OTHER NODE")
                                               : others.join(QStringLiteral(", "))));
            }
        }
    }

    QString NodeText(const SyncNodeData& node) const
    {
        QString operation;
        if (node.operationId == 0) {
            operation = QStringLiteral("NO OPERATION");
        } else {
            const OperationData* found = byId_.value(node.operationId);
            operation = found ? QStringLiteral("OP ") + Number(numbers_.value(found))
                                    + QLatin1Char(' ') + Quoted(found->name)
                              : QStringLiteral("OP (MISSING ID ") + Number(node.operationId) + QLatin1Char(')');
        }
        return operation + QLatin1Char(' ') + PlacementText(node);
    }

    static QString PlacementText(const SyncNodeData& node)
    {
        return QLatin1Char('P') + Number(node.placement) + QStringLiteral(" E") + Number(node.elementIndex);
    }

    // The name of the setup entry that the type index points to.
    QString TypeName(const SyncData& sync) const
    {
        const qsizetype index = sync.typeIndex;
        if (index < 1 || index > setup_.setupEntries.size() || !setup_.setupEntries[index - 1]
            || setup_.setupEntries[index - 1]->name.isEmpty())
            return QStringLiteral("(NO TYPE)");
        return setup_.setupEntries[index - 1]->name;
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
    QStringList lines_;
};

} // namespace

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

QStringList GenerateNcListings(const DocumentData& document)
{
    const QList<const NCHeadData*> heads = Present(document.machineSetup.heads);
    if (heads.isEmpty())
        return {ListingWriter(document, ListingHead{}).Write()};

    QStringList listings;
    for (qsizetype i = 0; i < heads.size(); ++i)
        listings.append(ListingWriter(document, ListingHead{int(i + 1), int(heads.size()), heads[i]}).Write());
    return listings;
}

QString GenerateNcListing(const DocumentData& document)
{
    return GenerateNcListings(document).join(QLatin1Char('\n'));
}

} // namespace feldra
