#pragma once

#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "feldra/HostContext.h"

#include <memory>

namespace feldra {

class AddInLoader;

// The Feldra host itself: what the application window, the macro runner and
// tests drive. It keeps the open documents and the add-in registry, hands each
// add-in its view of the application, and raises the host's events. A handler
// that throws is recorded in the log as a failed callback; the host goes on.
class Host {
public:
    Host();
    // Disconnects and unloads the add-ins still loaded, while the host still stands.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    const std::shared_ptr<HostContext>& Context() const { return ctx_; }
    FaultInjector& Faults() { return ctx_->faults; }
    HostLog& Log() { return ctx_->log; }
    HostServices& Services() { return ctx_->services; }
    ApplicationData& App() { return ctx_->app; }
    // The add-in modules loaded into this host.
    AddInLoader& AddIns() { return *addIns_; }

    // The application as the add-in with this ProgID sees it; the first call
    // registers the add-in and gives it its cookie.
    std::shared_ptr<host::Application> ApplicationFor(const QString& progId);
    int CookieOf(const QString& progId) const;

    // ---- documents
    const QList<std::shared_ptr<DocumentState>>& Documents() const { return ctx_->documents; }
    const std::shared_ptr<DocumentState>& ActiveDocument() const { return ctx_->activeDocument; }
    // The facade object of a document, as an add-in sees it.
    std::shared_ptr<host::Document> DocumentObject(std::shared_ptr<DocumentState> document) const;
    // Each makes the document the active one, then raises its application event.
    void OpenDocument(std::shared_ptr<DocumentState> document);    // AfterDocumentOpen
    void OpenNewDocument(std::shared_ptr<DocumentState> document); // AfterNewDocumentOpen
    void OpenTemplate(std::shared_ptr<DocumentState> document);    // AfterTemplateOpen
    void Activate(std::shared_ptr<DocumentState> document);
    // The last document opened before it becomes the active one.
    void CloseDocument(const std::shared_ptr<DocumentState>& document);
    // Raises AfterDocumentSave once the document has been written.
    void DocumentSaved(DocumentState& document);

    // The language of the host's texts and of the localisers the add-ins create
    // (1033 English, 1031 German). A change reconnects the loaded add-ins, so
    // that their captions, forms and messages follow at once; the active
    // document is then shown to them again as opened (AfterDocumentOpen).
    void SetLanguage(int languageCode);

    // ---- commands
    // Raises BeforeCommandRun; true when an add-in overrides (cancels) the command.
    bool BeforeCommandRun(int nCmdId, int nAuxId = 0);
    void Quit(); // BeforeQuit
    // Runs an add-in command (OnCommand to its add-in); false for an unknown handle.
    bool InvokeCommand(int commandHandle);
    // Asks the command's add-in whether it is enabled (OnCommandUI), starting from
    // what the host would show.
    bool CommandEnabled(int commandHandle, bool enabled = true);

    // ---- simulation and technology editing, on an operation by position from 1
    void SimulationBegin(DocumentState& document);
    void OperationStart(const std::shared_ptr<DocumentState>& document, int position);
    void SimulateOperation(const std::shared_ptr<DocumentState>& document, int position);
    struct EditOutcome {
        bool bOverride = false;
        int resultCode = 0;
    };
    EditOutcome EditTechnology(const std::shared_ptr<DocumentState>& document, int position, int editType);

private:
    std::shared_ptr<OperationData> operationAt(const DocumentState& document, int position) const;
    void makeActive(const std::shared_ptr<DocumentState>& document);

    std::shared_ptr<HostContext> ctx_;
    std::unique_ptr<AddInLoader> addIns_;
};

} // namespace feldra
