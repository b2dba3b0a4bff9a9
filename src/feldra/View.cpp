#include "feldra/View.h"

#include "addin/host/HostError.h"

namespace feldra {

void View::fail(const QString& operation, const QString& description)
{
    throw host::HostError(operation, description);
}

} // namespace feldra
