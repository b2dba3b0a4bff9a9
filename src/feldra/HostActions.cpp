#include "feldra/HostActions.h"

#include "feldra/DocumentFile.h"
#include "feldra/Host.h"
#include "feldra/NcListing.h"

namespace feldra {

namespace {

std::shared_ptr<DocumentState> LoadState(const QString& path)
{
    auto document = std::make_shared<DocumentState>();
    document->data = LoadDocument(path);
    document->fileName = path;
    return document;
}

} // namespace

std::shared_ptr<DocumentState> OpenDocumentFile(Host& host, const QString& path)
{
    auto document = LoadState(path);
    host.OpenDocument(document);
    return document;
}

std::shared_ptr<DocumentState> NewDocumentFromTemplate(Host& host, const QString& templatePath)
{
    auto document = LoadState(templatePath);
    document->fileName.clear();
    host.OpenNewDocument(document);
    return document;
}

std::shared_ptr<DocumentState> OpenTemplateFile(Host& host, const QString& path)
{
    auto document = LoadState(path);
    host.OpenTemplate(document);
    return document;
}

void SaveDocumentFile(Host& host, DocumentState& document, const QString& path)
{
    SaveDocument(path, document.data);
    document.fileName = path;
    host.DocumentSaved(document);
}

std::optional<QString> GenerateNcCode(Host& host)
{
    const auto requireDocument = [&host] {
        if (!host.ActiveDocument())
            throw host::HostError("Feldra.GenerateNcCode", "No document is open.");
    };
    requireDocument();
    if (host.BeforeCommandRun(kGenerateNcCommand))
        return std::nullopt;
    requireDocument(); // a handler may have closed it
    return GenerateNcListing(host.ActiveDocument()->data);
}

} // namespace feldra
