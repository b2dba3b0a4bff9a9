#include "feldra/Host.h"

#include "feldra/AddInLoader.h"
#include "feldra/ApplicationViews.h"
#include "feldra/Views.h"

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
    if (!ctx_->documents.contains(document))
        ctx_->documents.append(document);
    ctx_->activeDocument = document;
}

void Host::OpenDocument(std::shared_ptr<DocumentState> document)
{
    makeActive(document);
    ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterDocumentOpen",
                                  [&](host::ApplicationEvents& sink) { sink.AfterDocumentOpen(document->fileName); });
}

void Host::OpenNewDocument(std::shared_ptr<DocumentState> document)
{
    makeActive(document);
    ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterNewDocumentOpen",
                                  [](host::ApplicationEvents& sink) { sink.AfterNewDocumentOpen(); });
}

void Host::OpenTemplate(std::shared_ptr<DocumentState> document)
{
    makeActive(document);
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
    if (const auto document = ctx_->activeDocument)
        ctx_->applicationEvents.Raise(ctx_->log, "Application.AfterDocumentOpen", [&](host::ApplicationEvents& sink) {
            sink.AfterDocumentOpen(document->fileName);
        });
}

bool Host::BeforeCommandRun(int nCmdId, int nAuxId)
{
    bool bOverride = false;
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
    document.simulationEvents.Raise(ctx_->log, "Simulation.OnBegin",
                                    [](host::SimulationEvents& sink) { sink.OnBegin(); });
}

void Host::OperationStart(const std::shared_ptr<DocumentState>& document, int position)
{
    auto operation = std::make_shared<OperationView>(ctx_, document, operationAt(*document, position));
    document->simulationEvents.Raise(ctx_->log, "Simulation.OnOperationStart",
                                     [&](host::SimulationEvents& sink) { sink.OnOperationStart(operation); });
}

void Host::SimulateOperation(const std::shared_ptr<DocumentState>& document, int position)
{
    auto operation = std::make_shared<OperationView>(ctx_, document, operationAt(*document, position));
    document->simulationEvents.Raise(ctx_->log, "Simulation.OnSimulateOperation",
                                     [&](host::SimulationEvents& sink) { sink.OnSimulateOperation(operation); });
}

Host::EditOutcome Host::EditTechnology(const std::shared_ptr<DocumentState>& document, int position, int editType)
{
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

} // namespace feldra
