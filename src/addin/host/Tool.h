#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// A tool of a document.
class Tool {
public:
    virtual ~Tool() = default;
    virtual int Number() = 0;
    virtual void setNumber(int number) = 0;
    virtual QString ToolID() = 0;
    virtual void setToolID(const QString& id) = 0;
    virtual QString Comment() = 0;
    virtual void setComment(const QString& comment) = 0;
    virtual int ToolType() = 0;
    virtual int UnitSystem() = 0;
    virtual double XShift() = 0;
    virtual void setXShift(double value) = 0;
    virtual double YShift() = 0;
    virtual void setYShift(double value) = 0;
    virtual double ZShift() = 0;
    virtual void setZShift(double value) = 0;
    virtual double HolderIndex() = 0;
    virtual void setHolderIndex(double value) = 0;
    virtual void setGearRatio(double value) = 0;
    // 0 main spindle, 1 back spindle.
    virtual int BackSpindle() = 0;
    virtual void setBackSpindle(int value) = 0;
    virtual int TurretNumber() = 0;
    virtual int StationIndex() = 0;
    // -1 forward, 1 reverse (0 when not set).
    virtual int SpindleDirection() = 0;
    virtual void setSpindleDirection(int value) = 0;
    // The tool's technology parameter with this number as text ("121").
    virtual std::shared_ptr<host::TechnologyParameter> Parameter(const QString& number) = 0;
    // The kind-specific views; they fail for a tool of another kind.
    virtual std::shared_ptr<host::LatheToolKind16> AsLatheToolKind16() = 0;
    virtual std::shared_ptr<host::LatheToolKind17> AsLatheToolKind17() = 0;
    virtual std::shared_ptr<host::LatheToolKind18> AsLatheToolKind18() = 0;
    virtual std::shared_ptr<host::LatheToolKind19> AsLatheToolKind19() = 0;
    virtual std::shared_ptr<host::LatheToolKind21> AsLatheToolKind21() = 0;
    virtual std::shared_ptr<host::LatheToolKind22> AsLatheToolKind22() = 0;
    virtual std::shared_ptr<host::LatheToolKind23> AsLatheToolKind23() = 0;
};

} // namespace host
