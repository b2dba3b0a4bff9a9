#pragma once

#include "feldra/DocumentData.h"
#include "feldra/DocumentError.h"

#include <QByteArray>
#include <QString>

// Feldra document files: documents ("*.fdoc") and templates ("*.fdt") are the
// same JSON text, a top object with "format": "feldra-document" and
// "version": 1 beside the document's fields. Every failure throws a
// DocumentError that names the file and the place in it.
namespace feldra {

// True for a template ("*.fdt"), by the file's extension.
bool IsTemplateFile(const QString& path);

// Reads a whole document, or nothing: a file that is missing, not JSON, of
// another format or version, has a value of the wrong type anywhere, or whose
// synchronisations name an operation the document does not have, throws.
DocumentData LoadDocument(const QString& path);

// Writes a document atomically: when anything fails the old file stays whole.
// A document that would not load again (a synchronisation naming a missing
// operation) is not written.
void SaveDocument(const QString& path, const DocumentData& document);

// The same on text in memory; `fileName` names the text in errors.
// WriteDocument leaves the reference check to its caller.
DocumentData ReadDocument(const QByteArray& text, const QString& fileName);
QByteArray WriteDocument(const DocumentData& document);

} // namespace feldra
