#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <memory>

namespace host {
class Document;
}

// Reads document values through the host facade by the facade's own names, as
// an add-in sees them: "MachineSetup.Param814", "Tools.Item(1).XShift",
// "Operations.Item(2).Technology.Parameter(\"797\").Value". Every read starts
// afresh at the document. Properties without arguments read as values
// ("Tools.Count"); calls with arguments take them in parentheses.
namespace feldra {

struct FacadeStep {
    QString name;
    QVariantList arguments;
    bool called = false; // arguments were given (possibly none)
};

struct FacadeResult {
    enum Kind { Value, Object, Call };
    Kind kind = Value;
    QVariant value;   // Value
    QString typeName; // Object: the facade class ("Tool")
};

// Walks the steps from the document; throws host::HostError naming the step
// that has no such member, a value followed by more steps, or a failing read.
FacadeResult ResolveFacadePath(const std::shared_ptr<host::Document>& document, const QList<FacadeStep>& steps);

// Parses the text form ("Tools.Item(1).XShift"); throws host::HostError.
QList<FacadeStep> ParseFacadePath(const QString& path);

} // namespace feldra
