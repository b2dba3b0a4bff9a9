#pragma once

#include "addin/host/HostError.h"
#include "feldra/HostLog.h"

#include <QList>
#include <exception>

namespace feldra {

// A connection point: the sinks advised on one host object, and the raising of
// an event to each of them. A sink that throws is recorded in the host log as a
// failed callback; the other sinks still receive the event.
template <class Sink>
class EventSource {
public:
    void Advise(Sink* sink)
    {
        if (sink && !sinks_.contains(sink))
            sinks_.append(sink);
    }
    void Unadvise(Sink* sink) { sinks_.removeAll(sink); }
    bool IsAdvised(Sink* sink) const { return sinks_.contains(sink); }
    qsizetype Count() const { return sinks_.size(); }

    // Calls call(sink) for every sink advised when the event starts and still
    // advised when its turn comes.
    template <class Call>
    void Raise(HostLog& log, const QString& callback, Call call)
    {
        const QList<Sink*> sinks = sinks_;
        for (Sink* sink : sinks) {
            if (!sinks_.contains(sink))
                continue;
            try {
                call(*sink);
            } catch (const host::HostError& error) {
                log.RecordFailedCallback(callback, error.Operation(), error.Description());
            } catch (const std::exception& error) {
                log.RecordFailedCallback(callback, QString(), QString::fromUtf8(error.what()));
            }
        }
    }

private:
    QList<Sink*> sinks_;
};

} // namespace feldra
