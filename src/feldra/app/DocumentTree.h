#pragma once

#include <QSet>
#include <QTreeWidget>

namespace feldra {

struct OperationData;

struct DocumentData;
class QtLocalizer;

// The active document as a tree: machine setup, tools, operations with their
// technology parameters, synchronisations and work planes.
class DocumentTree : public QTreeWidget {
public:
    explicit DocumentTree(QWidget* parent = nullptr);

    // Shows the document (nothing when none) without its masked operations;
    // headings through the localiser.
    void Show(const DocumentData* document, const QtLocalizer& localizer,
              const QSet<const OperationData*>& masked = {});
};

} // namespace feldra
