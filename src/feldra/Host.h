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

    // ---- undo
    // Whatever the code runs while a Step stands changes in the open documents
    // becomes one undo step of each changed document, named after the
    // command (an add-in command by its handle, shown by its caption); a Step
    // inside another belongs to the outer one. Changes made before it and not
    // yet recorded (a modeless window's OK, a macro's write) become a step of
    // their own first.
    class Step {
    public:
        // command: an add-in command's key (StepCommand), 0 for the host's own.
        Step(Host& host, const QString& name, int command = 0);
        ~Step();
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;

    private:
        Host& host_;
    };
    // Records the changes not yet in a step as one, named name; the last
    // command's name when name is empty. Nothing while a Step stands: its
    // end records them.
    void CommitChanges(const QString& name = {}, int command = 0);
    // The title of a step in the host's language: an add-in command's caption
    // as the add-in gives it now, or the host's name of it translated by the
    // window (HostServices::translateStep).
    QString StepTitle(const QString& name, int command) const;
    // The key of an add-in command in the undo history.
    static int StepCommand(const CommandData& command);
    // Undo and redo on the active document. Each throws host::HostError when
    // it cannot run: no document, nothing to undo or redo, a dialog of an
    // add-in open or a command running. After either the add-ins see the
    // document as opened again (AfterDocumentOpen).
    void Undo();
    void Redo();
    // Why undo cannot run now; empty when it can (there being steps aside).
    QString UndoBlocked() const;
    // The title of the step Undo would undo; empty when there is none.
    QString UndoText() const;
    QString RedoText() const;

private:
    DocumentHistory& activeHistory(const QString& operation) const;
    void followHistory(const std::shared_ptr<DocumentState>& document);
    std::shared_ptr<OperationData> operationAt(const DocumentState& document, int position) const;
    void makeActive(const std::shared_ptr<DocumentState>& document);

    std::shared_ptr<HostContext> ctx_;
    std::unique_ptr<AddInLoader> addIns_;
    int stepDepth_ = 0;
    QString stepName_ = QStringLiteral("Change");
    int stepCommand_ = 0;
};

} // namespace feldra
