#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <QVariant>
#include <memory>

namespace host {

// A numbered parameter of a technology.
class TechnologyParameter {
public:
    virtual ~TechnologyParameter() = default;
    virtual QVariant Value() = 0;
    virtual void setValue(const QVariant& value) = 0;
    virtual QString Caption() = 0;
    virtual void setCaption(const QString& caption) = 0;
};

} // namespace host
