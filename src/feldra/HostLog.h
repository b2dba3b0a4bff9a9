#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace feldra {

// What the host did on behalf of add-ins and what went wrong in their callbacks:
// a callback (event handler or command) that threw is recorded here and the host
// goes on; requests to the host's services (keystrokes, help, picking, view
// refreshes) are recorded with their arguments.
class HostLog {
public:
    struct FailedCallback {
        QString callback;    // "Application.AfterNewDocumentOpen", "AddInCommands.OnCommand", ...
        QString operation;   // the failing host operation, empty for other failures
        QString description;
    };
    struct Request {
        QString operation;   // "Application.SendKeys", "Document.PickObject", ...
        QStringList arguments;
    };

    void RecordFailedCallback(const QString& callback, const QString& operation,
                              const QString& description);
    void RecordRequest(const QString& operation, const QStringList& arguments = {});

    const QList<FailedCallback>& FailedCallbacks() const { return failed_; }
    const QList<Request>& Requests() const { return requests_; }
    // The requests of one operation, in order.
    QList<Request> RequestsOf(const QString& operation) const;
    void Clear();

private:
    QList<FailedCallback> failed_;
    QList<Request> requests_;
};

} // namespace feldra
