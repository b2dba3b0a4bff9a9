#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <QVariant>
#include <memory>

namespace host {

// A named custom property of a graphic object.
class CustomProperty {
public:
    virtual ~CustomProperty() = default;
    virtual QVariant Value() = 0;
    virtual void setValue(const QVariant& value) = 0;
    // 5 a double, 8 a text.
    virtual int Type() = 0;
    virtual void setCaption(const QString& caption) = 0;
};

} // namespace host
