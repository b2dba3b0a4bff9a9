#pragma once

#include "feldra/DocumentState.h"

#include <QStringList>
#include <QVariant>
#include <memory>
#include <random>

// Feldra documents for the Auto Sync tests and benchmark.
namespace autosynctest {

// A technology parameter left invalid is missing from the operation.
struct OperationPlan {
    QString name;
    int type = 44;
    QVariant toolId;
    QVariant headId = 1;
    QVariant spindleId = 1;
};

struct NodeSpec {
    int operationId = 0; // 0: no operation
    int placement = 0;
    int elementIndex = 0;
};

class DocumentBuilder {
public:
    // Setup entries "G821", "G820", "G811", "G810", "M77"; no tools, operations or synchronisations.
    DocumentBuilder();

    DocumentBuilder& SetupEntries(const QStringList& names);
    DocumentBuilder& Tool(int number, const QString& toolId);
    // Tools 1 to 7 and 21 to 23, with the identifiers "T01" ... "T23".
    DocumentBuilder& StandardTools();
    // Operations get the ids 1, 2, ... in the order they are added.
    DocumentBuilder& Operation(const OperationPlan& operation);
    DocumentBuilder& Sync(int typeIndex, const QList<NodeSpec>& nodes);

    std::shared_ptr<feldra::DocumentState> Build() const;

private:
    feldra::DocumentData data_;
};

// The operation names in document order.
QStringList OrderOf(const feldra::DocumentData& document);

// The synchronisations, one per element: "G821 Back Turn P3 E0 / Pick-Up P3 E0";
// a node without an operation reads "-", an unknown type "(0)". Empty nodes are left out.
QStringList SyncsOf(const feldra::DocumentData& document);

// A random document: operations with random tools (some unknown, some missing),
// heads and spindles, a few cut-off and pick-up operations or none, a shuffled
// setup entry list and random synchronisations. Names repeat when uniqueNames
// is false; backToolShare is the share of operations on tools 21 to 23.
std::shared_ptr<feldra::DocumentState> RandomDocument(std::mt19937& random, int operations, int syncs,
                                                      bool uniqueNames, double backToolShare = 0.3);

// The document's operation names in a random order, as a user might leave the list.
QStringList ShuffledNames(std::mt19937& random, const feldra::DocumentData& document);

} // namespace autosynctest
