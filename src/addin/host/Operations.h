#pragma once

#include "addin/host/Fwd.h"

#include <QList>
#include <memory>

namespace host {

// The operations of a document in document order, from 1.
class Operations {
public:
    virtual ~Operations() = default;
    virtual std::shared_ptr<host::Operation> Item(int i) = 0;
    virtual int Count() = 0;
    // Puts the document's operations into the order of the list.
    virtual void Rearrange(const QList<std::shared_ptr<host::Operation>>& order, int mode, bool flag) = 0;
};

} // namespace host
