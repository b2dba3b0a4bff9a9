#include "feldra/HostLog.h"

namespace feldra {

void HostLog::RecordFailedCallback(const QString& callback, const QString& operation,
                                   const QString& description)
{
    failed_.append({callback, operation, description});
}

void HostLog::RecordRequest(const QString& operation, const QStringList& arguments)
{
    requests_.append({operation, arguments});
}

QList<HostLog::Request> HostLog::RequestsOf(const QString& operation) const
{
    QList<Request> found;
    for (const Request& request : requests_)
        if (request.operation == operation)
            found.append(request);
    return found;
}

void HostLog::Clear()
{
    failed_.clear();
    requests_.clear();
}

} // namespace feldra
