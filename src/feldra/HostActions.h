#pragma once

#include "feldra/NcListing.h"

#include <QString>
#include <memory>
#include <optional>

// What the Feldra application and the macro runner do on the host: open, create
// and save document files, and run the host's NC code generation. File errors
// throw feldra::DocumentError (a host::HostError) naming the file.
namespace feldra {

class Host;
struct DocumentState;

// The host's command id of NC code generation.
inline constexpr int kGenerateNcCommand = 3320;

// How a file is opened: as the document it is, as a new unnamed document made
// from a template, or as the template itself for editing.
enum class OpenAs { Document, NewDocument, Template };

// Reads a file as a document that is not open yet: unmodified, named after the
// file unless it is a new document.
std::shared_ptr<DocumentState> ReadDocumentState(const QString& path, OpenAs as);
// Makes a read document the active one and raises the application event of
// its kind (AfterDocumentOpen, AfterNewDocumentOpen, AfterTemplateOpen).
void PresentDocument(Host& host, const std::shared_ptr<DocumentState>& document, OpenAs as);

// Opens a document file; it becomes the active document (AfterDocumentOpen).
std::shared_ptr<DocumentState> OpenDocumentFile(Host& host, const QString& path);
// A new, unnamed document made from a template file (AfterNewDocumentOpen).
std::shared_ptr<DocumentState> NewDocumentFromTemplate(Host& host, const QString& templatePath);
// Opens a template file itself for editing (AfterTemplateOpen).
std::shared_ptr<DocumentState> OpenTemplateFile(Host& host, const QString& path);
// Writes the document to path, which becomes its file name, and marks it
// unmodified (AfterDocumentSave). A failed write leaves the file as it was and
// the document as it was: open, modified and under its old name.
void SaveDocumentFile(Host& host, DocumentState& document, const QString& path);

// Command 3320 on the active document: BeforeCommandRun first; the NC listing,
// or nothing when an add-in overrides the command. Throws without a document.
// The listings as made, to be shown in any language; and their text in the
// language of the user interface.
std::optional<NcListings> GenerateNcCodeListings(Host& host);
std::optional<QString> GenerateNcCode(Host& host);

} // namespace feldra
