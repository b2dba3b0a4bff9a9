#include "addin/host/HostError.h"

namespace host {

HostError::HostError(const QString& operation, const QString& description)
    : std::runtime_error((operation + QStringLiteral(": ") + description).toStdString()),
      operation_(operation),
      description_(description)
{
}

} // namespace host
