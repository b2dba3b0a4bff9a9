#include "feldra/FaultInjector.h"

#include "addin/host/HostError.h"

#include <numeric>

namespace feldra {

void FaultInjector::Check(const QString& operation)
{
    ++calls_[operation];
    if (failing_.contains(operation))
        throw host::HostError(operation, QStringLiteral("Injected failure."));
}

int FaultInjector::TotalCalls() const
{
    return std::accumulate(calls_.cbegin(), calls_.cend(), 0);
}

} // namespace feldra
