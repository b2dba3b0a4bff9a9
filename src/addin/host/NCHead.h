#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// An NC output head of the machine setup.
class NCHead {
public:
    virtual ~NCHead() = default;
    virtual QString ProgramName() = 0;
    virtual void setProgramName(const QString& name) = 0;
    virtual int ProgramNumber() = 0;
    virtual void setProgramNumber(int number) = 0;
    // 70 inches, 71 millimetres.
    virtual int OutputUnit() = 0;
    virtual void setOutputUnit(int unit) = 0;
    virtual QString Comment() = 0;
    virtual void setComment(const QString& comment) = 0;
};

} // namespace host
