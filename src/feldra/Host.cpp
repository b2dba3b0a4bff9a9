#include "feldra/Host.h"

#include "feldra/AddInLoader.h"
#include "feldra/ApplicationViews.h"
#include "feldra/HostActions.h"
#include "feldra/Views.h"

#include <QApplication>
#include <stdexcept>

namespace feldra {

Host::Host() : ctx_(std::make_shared<HostContext>()), addIns_(std::make_unique<AddInLoader>(*this)) {}

Host::~Host()
{
    addIns_.reset();
}

std::shared_ptr<host::Application> Host::ApplicationFor(const QString& progId)
{
    int cookie = CookieOf(progId);
    if (cookie == 0) {
        cookie = int(ctx_->app.addIns.size()) + 1;
        ctx_->app.addIns.append({progId, cookie});
    }
    return std::make_shared<ApplicationView>(ctx_, cookie);
}

int Host::CookieOf(const QString& progId) const
{
    for (const AddInData& addIn : ctx_->app.addIns)
        if (addIn.progId == progId)
            return addIn.cookie;
    return 0;
}

std::shared_ptr<host::Document> Host::DocumentObject(std::shared_ptr<DocumentState> document) const
{
    return MakeDocument(ctx_, std::move(document));
}

void Host::makeActive(const std::shared_ptr<DocumentState>& document)
{
    if (!ctx_->documents.contains(document)) {
        ctx_->documents.append(document);
        followHistory(document);
    }
    ctx_->activeDocument = document;
}

void Host::OpenDocument(std::shared_ptr<DocumentState> document)
{
    makeActive(document);
    Step step(*this, QStringLiteral("Open"));
    ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterDocumentOpen",
                                  [&](host::ApplicationEvents& sink) { sink.AfterDocumentOpen(document->fileName); });
}

void Host::OpenNewDocument(std::shared_ptr<DocumentState> document)
{
    makeActive(document);
    Step step(*this, QStringLiteral("New Document"));
    ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterNewDocumentOpen",
                                  [](host::ApplicationEvents& sink) { sink.AfterNewDocumentOpen(); });
}

void Host::OpenTemplate(std::shared_ptr<DocumentState> document)
{
    makeActive(document);
    Step step(*this, QStringLiteral("Open Template"));
    ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterTemplateOpen",
                                  [&](host::ApplicationEvents& sink) { sink.AfterTemplateOpen(document->fileName); });
}

void Host::Activate(std::shared_ptr<DocumentState> document) { makeActive(document); }

void Host::CloseDocument(const std::shared_ptr<DocumentState>& document)
{
    ctx_->documents.removeAll(document);
    if (ctx_->activeDocument == document)
        ctx_->activeDocument = ctx_->documents.isEmpty() ? nullptr : ctx_->documents.last();
}

void Host::DocumentSaved(DocumentState& document)
{
    Step step(*this, QStringLiteral("Save"));
    document.documentEvents.Raise(ctx_->log, "Document.AfterDocumentSave",
                                  [](host::DocumentEvents& sink) { sink.AfterDocumentSave(); });
}

void Host::SetLanguage(int languageCode)
{
    if (ctx_->app.languageCode == languageCode)
        return;
    ctx_->app.languageCode = languageCode;
    if (addIns_->LoadedProgIds().isEmpty() || addIns_->ReconnectAll() == 0)
        return;
    Step step(*this, QStringLiteral("Language"));
    if (const auto document = ctx_->activeDocument)
        ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterDocumentOpen", [&](host::ApplicationEvents& sink) {
            sink.AfterDocumentOpen(document->fileName);
        });
}

bool Host::BeforeCommandRun(int nCmdId, int nAuxId)
{
    bool bOverride = false;
    Step step(*this, nCmdId == kGenerateNcCommand ? QStringLiteral("Generate NC Code") : QStringLiteral("Command"));
    ctx_->applicationEvents.Raise(ctx_->log, "Application.BeforeCommandRun", [&](host::ApplicationEvents& sink) {
        sink.BeforeCommandRun(nCmdId, nAuxId, bOverride);
    });
    return bOverride;
}

void Host::Quit()
{
    ctx_->applicationEvents.Raise(ctx_->log, "Application.BeforeQuit",
                                  [](host::ApplicationEvents& sink) { sink.BeforeQuit(); });
}

bool Host::InvokeCommand(int commandHandle)
{
    const CommandData* command = ctx_->app.Command(commandHandle);
    if (!command)
        return false;
    const CommandData call = *command; // the handler may remove the command
    Step step(*this, ctx_->app.CommandCaption(commandHandle), StepCommand(call));
    ctx_->CommandEvents(call.cookie).Raise(ctx_->log, "AddInCommands.OnCommand", [&](host::AddInCommandsEvents& sink) {
        sink.OnCommand(call.cookie, call.id);
    });
    return true;
}

bool Host::CommandEnabled(int commandHandle, bool enabled)
{
    const CommandData* command = ctx_->app.Command(commandHandle);
    if (!command)
        return false;
    const CommandData call = *command;
    bool checked = false;
    ctx_->CommandEvents(call.cookie).Raise(ctx_->log, "AddInCommands.OnCommandUI",
                                           [&](host::AddInCommandsEvents& sink) {
                                               sink.OnCommandUI(call.cookie, call.id, enabled, checked);
                                           });
    return enabled;
}

std::shared_ptr<OperationData> Host::operationAt(const DocumentState& document, int position) const
{
    const auto& operations = document.data.operations;
    if (position < 1 || position > operations.size())
        throw std::out_of_range("No operation at this position.");
    return operations[position - 1];
}

void Host::SimulationBegin(DocumentState& document)
{
    Step step(*this, QStringLiteral("Simulate"));
    document.simulationEvents.Raise(ctx_->log, "Simulation.OnBegin",
                                    [](host::SimulationEvents& sink) { sink.OnBegin(); });
}

void Host::OperationStart(const std::shared_ptr<DocumentState>& document, int position)
{
    Step step(*this, QStringLiteral("Simulate"));
    auto operation = std::make_shared<OperationView>(ctx_, document, operationAt(*document, position));
    document->simulationEvents.Raise(ctx_->log, "Simulation.OnOperationStart",
                                     [&](host::SimulationEvents& sink) { sink.OnOperationStart(operation); });
}

void Host::SimulateOperation(const std::shared_ptr<DocumentState>& document, int position)
{
    Step step(*this, QStringLiteral("Simulate"));
    auto operation = std::make_shared<OperationView>(ctx_, document, operationAt(*document, position));
    document->simulationEvents.Raise(ctx_->log, "Simulation.OnSimulateOperation",
                                     [&](host::SimulationEvents& sink) { sink.OnSimulateOperation(operation); });
}

Host::EditOutcome Host::EditTechnology(const std::shared_ptr<DocumentState>& document, int position, int editType)
{
    Step step(*this, QStringLiteral("Edit Technology"));
    auto technology =
        std::make_shared<TechnologyView>(ctx_, document, operationAt(*document, position)->technology);
    EditOutcome outcome;
    document->technologyUtilityEvents.Raise(ctx_->log, "TechnologyUtility.OnEdit",
                                            [&](host::TechnologyUtilityEvents& sink) {
                                                sink.OnEdit(technology, editType, outcome.bOverride,
                                                            outcome.resultCode);
                                            });
    return outcome;
}

// ---- undo ------------------------------------------------------------------------

// An add-in command's key in the undo history: its add-in's cookie and its
// id, which stay when the add-in connects again under another language and
// its commands get new handles.
int Host::StepCommand(const CommandData& command) { return command.cookie << 16 | (command.id & 0xffff); }

Host::Step::Step(Host& host, const QString& name, int command) : host_(host)
{
    if (host_.stepDepth_ == 0) {
        host_.CommitChanges();
        host_.stepName_ = name;
        host_.stepCommand_ = command;
    }
    ++host_.stepDepth_;
}

Host::Step::~Step()
{
    if (--host_.stepDepth_ == 0)
        host_.CommitChanges(host_.stepName_, host_.stepCommand_);
}

void Host::CommitChanges(const QString& name, int command)
{
    if (stepDepth_ > 0)
        return; // the step running records them
    const bool named = !name.isEmpty() || command != 0;
    const QString stepName = named ? name : stepName_;
    const int stepCommand = named ? command : stepCommand_;
    const auto title = [this](const QString& n, int handle) { return StepTitle(n, handle); };
    for (const auto& document : ctx_->documents)
        document->history.Commit(stepName, stepCommand, title);
}

QString Host::StepTitle(const QString& name, int command) const
{
    for (const CommandData& data : ctx_->app.commands)
        if (command != 0 && StepCommand(data) == command) {
            const QString caption = ctx_->app.CommandCaption(data.handle);
            if (!caption.isEmpty())
                return caption;
        }
    return ctx_->services.translateStep ? ctx_->services.translateStep(name) : name;
}

// The add-ins see a document brought back by undo or redo as they see one
// being opened.
void Host::followHistory(const std::shared_ptr<DocumentState>& document)
{
    document->history.Start();
    const std::weak_ptr<HostContext> context = ctx_;
    const std::weak_ptr<DocumentState> restored = document;
    QObject::connect(&document->history, &DocumentHistory::Restored, &document->history, [context, restored] {
        const auto ctx = context.lock();
        const auto document = restored.lock();
        if (!ctx || !document || ctx->activeDocument != document)
            return;
        ctx->applicationEvents.Raise(ctx->log, "Application.AfterDocumentOpen", [&](host::ApplicationEvents& sink) {
            sink.AfterDocumentOpen(document->fileName);
        });
        document->history.Adopt();
    });
}

QString Host::UndoBlocked() const
{
    if (!ctx_->activeDocument)
        return QStringLiteral("No document is open.");
    if (stepDepth_ > 0)
        return QStringLiteral("A command is running.");
    if (QApplication::activeModalWidget())
        return QStringLiteral("A dialog is open.");
    return {};
}

DocumentHistory& Host::activeHistory(const QString& operation) const
{
    const QString blocked = UndoBlocked();
    if (!blocked.isEmpty())
        throw host::HostError(operation, blocked);
    return ctx_->activeDocument->history;
}

void Host::Undo()
{
    CommitChanges();
    DocumentHistory& history = activeHistory(QStringLiteral("Feldra.Undo"));
    if (!history.Stack().canUndo())
        throw host::HostError(QStringLiteral("Feldra.Undo"), QStringLiteral("There is nothing to undo."));
    history.Stack().undo();
}

void Host::Redo()
{
    CommitChanges();
    DocumentHistory& history = activeHistory(QStringLiteral("Feldra.Redo"));
    if (!history.Stack().canRedo())
        throw host::HostError(QStringLiteral("Feldra.Redo"), QStringLiteral("There is nothing to redo."));
    history.Stack().redo();
}

QString Host::UndoText() const
{
    return ctx_->activeDocument ? ctx_->activeDocument->history.Stack().undoText() : QString();
}

QString Host::RedoText() const
{
    return ctx_->activeDocument ? ctx_->activeDocument->history.Stack().redoText() : QString();
}

} // namespace feldra
