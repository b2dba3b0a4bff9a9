#pragma once

#include "addin/host/DocumentEvents.h"
#include "addin/host/SimulationEvents.h"
#include "addin/host/TechnologyUtilityEvents.h"
#include "feldra/DocumentData.h"
#include "feldra/DocumentHistory.h"
#include "feldra/EventSource.h"

#include <QString>

namespace feldra {

// An open Feldra document: its data, its file and the event sources of the
// document, its simulation and its technology utility.
struct DocumentState {
    DocumentData data;
    QString fileName;
    // Changed since it was opened or last saved.
    bool modified = false;
    bool updateState = true;
    // Every change goes through the history first (undo and redo).
    DocumentHistory history{*this};
    EventSource<host::DocumentEvents> documentEvents;
    EventSource<host::SimulationEvents> simulationEvents;
    EventSource<host::TechnologyUtilityEvents> technologyUtilityEvents;

    // The operation's id, given one when it has none yet.
    int OperationId(OperationData& operation);
    std::shared_ptr<OperationData> OperationById(int id) const;
    std::shared_ptr<FeatureData> Feature(const QString& key) const;
    // A key no feature or operation of the document has yet: prefix and a number.
    QString NewKey(const QString& prefix) const;
};

} // namespace feldra
