#pragma once

#include "feldra/DocumentData.h"

#include <memory>

namespace feldra {

// Calls visit(record) for every record of a document: the document itself
// first (a handle that does not own it), then every shared record reachable
// from it, each once, parents before their children. A record's value holds
// its children as handles, so the values of all records visited describe the
// whole document.
template <class Visit>
void ForEachRecord(DocumentData& document, Visit&& visit)
{
    const auto each = [&visit](const auto& list) {
        for (const auto& record : list)
            visit(record);
    };
    const auto eachWithProperties = [&visit, &each](const auto& list) {
        for (const auto& record : list) {
            visit(record);
            each(record->customProperties);
        }
    };

    visit(std::shared_ptr<DocumentData>(std::shared_ptr<void>(), &document));

    const MachineSetupData& setup = document.machineSetup;
    each(setup.setupEntries);
    for (const auto& turret : setup.turrets) {
        visit(turret);
        each(turret->stations);
        each(turret->axisLimits);
    }
    each(setup.spindles);
    each(setup.heads);

    each(document.tools);
    for (const auto& operation : document.operations) {
        visit(operation);
        if (operation->technology)
            visit(operation->technology);
        each(operation->customProperties);
    }
    eachWithProperties(document.features);
    each(document.syncs);
    each(document.workPlanes);
    each(document.layers);

    for (const auto& group : document.simulation.machineModel.axisGroups) {
        visit(group);
        each(group->axes);
    }
    each(document.simulation.machineModel.components);
    each(document.simulation.stocks);
}

} // namespace feldra
