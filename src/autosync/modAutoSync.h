#pragma once

#include "addin/host/SyncNode.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace host {
class Document;
class Operation;
class Sync;
} // namespace host

namespace marelon {

inline const QString kAutoSyncSection = QStringLiteral("Auto Sync");
inline const QString kMachineNameKey = QStringLiteral("Machine Name");

// The machines of the Auto Sync dialog, in list order. Shown as written, never localised.
const QStringList& AutoSyncMachines();
// Auto Sync knows the L-series machines only.
bool IsAutoSyncSupported(const QString& machine);

// What Auto Sync needs of one document operation, read once.
struct SyncOperation {
    std::shared_ptr<host::Operation> operation;
    QString name;
    int technologyType = 0;
    bool backTool = false;    // its tool is number 21, 22 or 23
    bool headOne = false;     // "HeadID" is 1
    bool backSpindle = false; // "SpindleID" is greater than 1
};

// Whether the dialog's list still describes the document's operations.
enum class ListCheck {
    Fits,
    Outdated,     // an entry names no operation, or the operation count changed
    NameRepeated, // operations share a name, so the list cannot tell them apart
};

// Which of the operations that cut-off and pick-up synchronisations tie were found.
struct CutoffAndPickup {
    bool cutoff = false;
    bool pickup = false;
    bool Created() const { return cutoff && pickup; }
};

// Auto Sync on one document: puts the operations into the order of the
// dialog's list and rebuilds the document's synchronisations from that order.
// The document is read once when the object is made; every look-up by name
// afterwards is a hash look-up, so one run stays linear in the number of
// operations and synchronisations. The first operation of a name stands for
// that name, except when the order is built, where the last one does.
class AutoSync {
public:
    // Reads the operations with their tools and parameters, and the
    // synchronisation types of the machine setup. A host failure while reading
    // throws before anything is changed.
    AutoSync(std::shared_ptr<host::Document> document, QStringList list);

    // Checks the list before anything changes; the name of a repeated operation
    // is returned through repeatedName.
    ListCheck CheckList(QString* repeatedName = nullptr) const;
    // OK: the order, then RemoveAllSyncs, SyncSubSpindleOps and SyncCutoffAndPickup.
    // Call it only for a list that fits.
    CutoffAndPickup Run();

    void RemoveAllSyncs();
    // One synchronisation of the named type; nodes beyond nodesCount stay empty.
    std::shared_ptr<host::Sync> MakeSync(const QString& syncName, int16_t nodesCount,
                                         const std::array<host::SyncNode, 4>& nodes);
    // A "G821"/"G820" pair around each run of back-spindle tool work of head 1.
    void SyncSubSpindleOps();
    // "G811" and "G810" between the last cut-off and the last pick-up operation;
    // nothing when either is missing.
    CutoffAndPickup SyncCutoffAndPickup();

    // The first back-spindle operation of the whole list, provided the list names
    // the main-spindle operation; nothing otherwise.
    std::shared_ptr<host::Operation> GetNextSubSpindleOP(const std::shared_ptr<host::Operation>& MainSpindleOP);
    // One more than the largest element index of any node tied to an operation
    // of the document; 0 when there is none. The operation does not narrow it.
    double GetNextElementIndex(const std::shared_ptr<host::Operation>& OPToBeSynced);

private:
    // The operations in the list's order: position i holds the last operation
    // named as entry i, or nothing. Always as many positions as operations.
    QList<std::shared_ptr<host::Operation>> OperationOrder() const;
    // Rearranges the document's operations into OperationOrder().
    void Arrange();
    void readOperations();
    void indexNames();
    const SyncOperation* firstNamed(const QString& name) const;
    int elementIndexInUse();
    void noteElementIndices(const std::array<host::SyncNode, 4>& nodes);
    void tie(const QString& syncName, const SyncOperation& own, int ownPlacement,
             const std::shared_ptr<host::Operation>& other, int otherPlacement);

    std::shared_ptr<host::Document> document_;
    QStringList list_;
    QSet<QString> listed_;
    QList<SyncOperation> operations_; // document order
    QHash<QString, qsizetype> firstByName_;
    QHash<QString, qsizetype> lastByName_;
    QHash<QString, int> typeIndex_; // first setup entry of each name, from 1
    std::shared_ptr<host::Operation> firstBackSpindle_;
    std::optional<int> nextElementIndex_; // read from the document when first asked
};

} // namespace marelon
