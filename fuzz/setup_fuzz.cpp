// Any bytes read as a machine setup file are loaded whole or give a
// DocumentError that names the file and leaves the setup and the machine model
// as they were.
#include "feldra/SetupFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString name = QStringLiteral("fuzz.EMS");
    feldra::MachineSetupData setup;
    setup.machineSetupName = QStringLiteral("before");
    setup.turrets = {std::make_shared<feldra::TurretData>()};
    setup.spindles = {std::make_shared<feldra::SpindleData>()};
    setup.heads = {std::make_shared<feldra::NCHeadData>()};
    setup.setupEntries = {std::make_shared<feldra::SetupEntryData>()};
    feldra::MachineModelData model;
    model.axisGroups = {std::make_shared<feldra::AxisGroupData>()};
    model.components = {std::make_shared<feldra::ComponentData>()};
    const feldra::MachineSetupData setupBefore = setup;
    const feldra::MachineModelData modelBefore = model;

    try {
        feldra::ReadSetupFile(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)), name,
                              setup, model);
    } catch (const feldra::DocumentError& error) {
        const bool untouched = setup.machineSetupName == setupBefore.machineSetupName
                               && setup.turrets == setupBefore.turrets
                               && setup.spindles == setupBefore.spindles
                               && setup.heads == setupBefore.heads
                               && setup.setupEntries == setupBefore.setupEntries
                               && model.axisGroups == modelBefore.axisGroups
                               && model.components == modelBefore.components;
        if (error.File() != name || error.Problem().isEmpty() || !untouched)
            std::abort();
    }
    return 0;
}
