#pragma once

#include "addin/host/HostError.h"

namespace marelon {

// A failed registry operation of cRegistry: error number 26001 from the source
// "Marelon.cRegistry". It is a HostError so that a handler's failure reaches
// the host, and a continue-on-error routine skips it, like any other failure.
class RegistryError : public host::HostError {
public:
    static constexpr int kNumber = 26001;

    explicit RegistryError(const QString& description)
        : host::HostError(Source(), description)
    {
    }

    static QString Source() { return QStringLiteral("Marelon.cRegistry"); }
    int Number() const { return kNumber; }
};

} // namespace marelon
