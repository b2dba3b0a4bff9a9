#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace feldra {

// Makes facade operations fail by name, for tests and macros. Operations are
// named "Object.Property" for reads, "Object.Property write" for writes and
// "Object.Call" for calls ("MachineSetup.Param893 write", "Document.Tools",
// "Syncs.Add"). Once named, every later call of the operation throws
// host::HostError until it is healed; nothing else changes. Every facade call
// is also counted, so that a test can tell whether a call was made at all.
class FaultInjector {
public:
    void Fail(const QString& operation) { failing_.insert(operation); }
    void Heal(const QString& operation) { failing_.remove(operation); }
    void HealAll() { failing_.clear(); }
    bool IsFailing(const QString& operation) const { return failing_.contains(operation); }

    // Counts the call and throws host::HostError when the operation is made to fail.
    void Check(const QString& operation);

    int CallCount(const QString& operation) const { return calls_.value(operation); }
    // Every operation called since the counts were last reset.
    QStringList CalledOperations() const { return calls_.keys(); }
    int TotalCalls() const;
    void ResetCounts() { calls_.clear(); }

private:
    QSet<QString> failing_;
    QHash<QString, int> calls_;
};

} // namespace feldra
