#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <QVariant>
#include <memory>

namespace host {

// The custom properties of a graphic object, by name.
class CustomProperties {
public:
    virtual ~CustomProperties() = default;
    virtual std::shared_ptr<host::CustomProperty> Item(const QString& name) = 0;
    virtual int Count() = 0;
    virtual void Remove(const QString& name) = 0;
    virtual std::shared_ptr<host::CustomProperty> Add(const QString& name, const QString& caption, int type,
                                                  const QVariant& initialValue) = 0;
};

} // namespace host
