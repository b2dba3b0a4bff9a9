#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <memory>

namespace host {

// Sink of the host application's events.
class ApplicationEvents {
public:
    virtual ~ApplicationEvents() = default;
    virtual void AfterDocumentOpen(const QString& FileName) { (void)FileName; }
    virtual void AfterNewDocumentOpen() {}
    virtual void AfterTemplateOpen(const QString& FileName) { (void)FileName; }
    virtual void BeforeCommandRun(int nCmdId, int nAuxId, bool& bOverride)
    {
        (void)nCmdId; (void)nAuxId; (void)bOverride;
    }
    virtual void BeforeQuit() {}
};

} // namespace host
