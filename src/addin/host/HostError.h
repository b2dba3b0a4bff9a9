#pragma once

#include <QString>
#include <stdexcept>

namespace host {

// A failed call into the Feldra host: what went wrong and which operation failed.
class HostError : public std::runtime_error {
public:
    HostError(const QString& operation, const QString& description);

    const QString& Operation() const { return operation_; }
    const QString& Description() const { return description_; }

private:
    QString operation_;
    QString description_;
};

} // namespace host
