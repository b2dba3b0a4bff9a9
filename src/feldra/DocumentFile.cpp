#include "feldra/DocumentFile.h"

#include "feldra/DocumentJson.h"
#include "feldra/JsonFile.h"

#include <QFileInfo>
#include <QHash>

namespace feldra {
namespace {

const JsonFileFormat kDocumentFormat{"feldra-document", 1, "a Feldra document"};

// Operation ids are unique, and every synchronisation node names an
// operation of the document or none (0).
void checkReferences(const DocumentData& document)
{
    const JsonPlace root;
    const JsonPlace operations(root, "operations");
    QHash<int, qsizetype> operationAt;
    for (qsizetype i = 0; i < document.operations.size(); ++i) {
        const int id = document.operations[i]->id;
        const JsonPlace operation(operations, i);
        if (operationAt.contains(id))
            FailAt(JsonPlace(operation, "id"),
                   QStringLiteral("the id %1 is already used by operations[%2]").arg(id).arg(operationAt[id]));
        operationAt.insert(id, i);
    }
    const JsonPlace syncs(root, "syncs");
    for (qsizetype i = 0; i < document.syncs.size(); ++i) {
        const JsonPlace sync(syncs, i);
        const JsonPlace nodes(sync, "nodes");
        for (qsizetype j = 0; j < qsizetype(document.syncs[i]->nodes.size()); ++j) {
            const int id = document.syncs[i]->nodes[std::size_t(j)].operationId;
            const JsonPlace node(nodes, j);
            if (id != 0 && !operationAt.contains(id))
                FailAt(JsonPlace(node, "operationId"),
                       QStringLiteral("no operation has the id %1").arg(id));
        }
    }
}

} // namespace

bool IsTemplateFile(const QString& path)
{
    return QFileInfo(path).suffix().compare(QLatin1String("fdt"), Qt::CaseInsensitive) == 0;
}

DocumentData ReadDocument(const QByteArray& text, const QString& fileName)
{
    const JsonFile file(QStringLiteral("LoadDocument"), fileName, kDocumentFormat);
    DocumentData document;
    file.Parse(text, document);
    file.Check([&] { checkReferences(document); });
    return document;
}

DocumentData LoadDocument(const QString& path)
{
    const JsonFile file(QStringLiteral("LoadDocument"), path, kDocumentFormat);
    return ReadDocument(file.Read(), path);
}

QByteArray WriteDocument(const DocumentData& document)
{
    const JsonFile file(QStringLiteral("SaveDocument"), QString(), kDocumentFormat);
    return file.Text(document);
}

void SaveDocument(const QString& path, const DocumentData& document)
{
    const JsonFile file(QStringLiteral("SaveDocument"), path, kDocumentFormat);
    file.Check([&] { checkReferences(document); });
    file.Write(file.Text(document));
}

} // namespace feldra
