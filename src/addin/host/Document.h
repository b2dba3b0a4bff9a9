#pragma once

#include "addin/host/DocumentEvents.h"
#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A host document, and the source of its events.
class Document {
public:
    virtual ~Document() = default;
    virtual int MachineType() = 0;
    // 70 inches, 71 millimetres.
    virtual int UnitSystem() = 0;
    virtual std::shared_ptr<host::MachineSetup> MachineSetup() = 0;
    virtual std::shared_ptr<host::Tools> Tools() = 0;
    // True when an operation uses the tool.
    virtual bool IsToolUsed(std::shared_ptr<host::Tool> tool) = 0;
    virtual std::shared_ptr<host::Operations> Operations() = 0;
    virtual std::shared_ptr<host::Syncs> Syncs() = 0;
    virtual std::shared_ptr<host::Simulation> Simulation() = 0;
    virtual std::shared_ptr<host::TechnologyUtility> TechnologyUtility() = 0;
    virtual std::shared_ptr<host::WorkPlanes> WorkPlanes() = 0;
    virtual void setActiveWorkPlane(std::shared_ptr<host::WorkPlane> plane) = 0;
    virtual std::shared_ptr<host::Layers> Layers() = 0;
    virtual std::shared_ptr<host::FeatureChains> FeatureChains() = 0;
    // Lets the user pick an object of the kind filter names; none when the user cancels.
    virtual std::shared_ptr<host::GraphicObject> PickObject(const QString& prompt, int filter) = 0;
    virtual void RefreshView() = 0;
    virtual std::shared_ptr<host::Point> MakePoint(double x, double y, double z) = 0;
    virtual void setUpdateState(bool state) = 0;
    virtual void setTitle(const QString& title) = 0;
    virtual void Advise(host::DocumentEvents* sink) = 0;
    virtual void Unadvise(host::DocumentEvents* sink) = 0;
};

} // namespace host
