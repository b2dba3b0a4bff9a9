// Any bytes read as a document give a whole document or a DocumentError that
// names the file; a document that loads saves to a text that loads again and
// saves to the same text.
#include "feldra/DocumentFile.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString name = QStringLiteral("fuzz.fdoc");
    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    feldra::DocumentData document;
    try {
        document = feldra::ReadDocument(input, name);
    } catch (const feldra::DocumentError& error) {
        if (error.File() != name || error.Problem().isEmpty())
            std::abort();
        return 0;
    }
    const QByteArray saved = feldra::WriteDocument(document);
    if (feldra::WriteDocument(feldra::ReadDocument(saved, name)) != saved)
        std::abort();
    return 0;
}
