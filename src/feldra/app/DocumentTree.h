#pragma once

#include <QSet>
#include <QTreeWidget>

namespace feldra {

struct OperationData;

struct DocumentData;
class QtLocalizer;

// The active document as a tree: the machine setup with its values under the
// captions the NC listing gives them, the tools with their shifts, spindle
// direction and gear ratio, the operations by their number in document order
// with their technology parameters, the synchronisations by type with the
// operations they tie, the work planes, and the simulation's stocks with a
// drawing of each stock's cross-section. Showing the document again keeps
// what the user expanded, the current item and the scroll position.
class DocumentTree : public QTreeWidget {
public:
    // Each item's key among its siblings; an item's path is its keys from the top.
    static constexpr int kKeyRole = Qt::UserRole;
    // An operation's item: its position in the document, from 1.
    static constexpr int kOperationRole = Qt::UserRole + 1;

    explicit DocumentTree(QWidget* parent = nullptr);

    // Shows the document (nothing when none) without its masked operations;
    // headings through the localiser.
    void Show(const DocumentData* document, const QtLocalizer& localizer,
              const QSet<const OperationData*>& masked = {});

    // The item at a path of keys ("document/tools/T21"), or none.
    QTreeWidgetItem* ItemAt(const QString& path) const;
    static QString PathOf(const QTreeWidgetItem* item);

private:
    struct ViewState {
        QSet<QString> expanded;
        QString current;
        int scroll = 0;
        bool any = false; // a document was shown before
    };
    ViewState state() const;
    void restore(const ViewState& state);
};

// A stock's kind as the views show it: "1 (swept profile)".
QString StockKindText(int kind, const QtLocalizer& localizer);

} // namespace feldra
