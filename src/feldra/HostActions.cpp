#include "feldra/HostActions.h"

#include "feldra/DocumentFile.h"
#include "feldra/Host.h"
#include "feldra/NcListing.h"

namespace feldra {

std::shared_ptr<DocumentState> ReadDocumentState(const QString& path, OpenAs as)
{
    auto document = std::make_shared<DocumentState>();
    document->data = LoadDocument(path);
    if (as != OpenAs::NewDocument)
        document->fileName = path;
    return document;
}

void PresentDocument(Host& host, const std::shared_ptr<DocumentState>& document, OpenAs as)
{
    switch (as) {
    case OpenAs::Document: host.OpenDocument(document); break;
    case OpenAs::NewDocument: host.OpenNewDocument(document); break;
    case OpenAs::Template: host.OpenTemplate(document); break;
    }
}

namespace {

std::shared_ptr<DocumentState> Open(Host& host, const QString& path, OpenAs as)
{
    auto document = ReadDocumentState(path, as);
    PresentDocument(host, document, as);
    return document;
}

} // namespace

std::shared_ptr<DocumentState> OpenDocumentFile(Host& host, const QString& path)
{
    return Open(host, path, OpenAs::Document);
}

std::shared_ptr<DocumentState> NewDocumentFromTemplate(Host& host, const QString& templatePath)
{
    return Open(host, templatePath, OpenAs::NewDocument);
}

std::shared_ptr<DocumentState> OpenTemplateFile(Host& host, const QString& path)
{
    return Open(host, path, OpenAs::Template);
}

void SaveDocumentFile(Host& host, DocumentState& document, const QString& path)
{
    host.CommitChanges();
    SaveDocument(path, document.data);
    document.fileName = path;
    document.history.MarkSaved();
    host.DocumentSaved(document);
}

std::optional<NcListings> GenerateNcCodeListings(Host& host)
{
    const auto requireDocument = [&host] {
        if (!host.ActiveDocument())
            throw host::HostError("Feldra.GenerateNcCode", "No document is open.");
    };
    requireDocument();
    if (host.BeforeCommandRun(kGenerateNcCommand))
        return std::nullopt;
    requireDocument(); // a handler may have closed it
    return NcListings(host.ActiveDocument()->data);
}

std::optional<QString> GenerateNcCode(Host& host)
{
    const std::optional<NcListings> listings = GenerateNcCodeListings(host);
    if (!listings)
        return std::nullopt;
    const std::shared_ptr<host::Localizer> localizer =
        host.Services().createLocalizer ? host.Services().createLocalizer() : nullptr;
    if (localizer)
        localizer->Initialise();
    return listings->Text(localizer.get());
}

} // namespace feldra
