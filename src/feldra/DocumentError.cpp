#include "feldra/DocumentError.h"

#include <QStringList>

namespace feldra {
namespace {

QString describe(const QString& file, const QString& place, const QString& problem)
{
    QStringList parts{file};
    if (!place.isEmpty())
        parts << place;
    parts << problem;
    return parts.join(QStringLiteral(": "));
}

} // namespace

DocumentError::DocumentError(const QString& operation, const QString& file, const QString& place,
                             const QString& problem)
    : host::HostError(operation, describe(file, place, problem)),
      file_(file),
      place_(place),
      problem_(problem)
{
}

} // namespace feldra
