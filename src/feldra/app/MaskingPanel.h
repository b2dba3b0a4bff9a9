#pragma once

#include <QDockWidget>
#include <QSet>

class QListWidget;

namespace feldra {

class QtLocalizer;
struct DocumentData;
struct OperationData;

// The host's masking panel: the document's operations, each with a check box
// that masks it (takes it out of the document view). Ctrl+M shows and hides it.
class MaskingPanel : public QDockWidget {
    Q_OBJECT
public:
    explicit MaskingPanel(QWidget* parent = nullptr);

    // Lists the operations of the document (none when there is none); masks of
    // operations the document no longer has are dropped.
    void Show(const DocumentData* document, const QtLocalizer& localizer);
    const QSet<const OperationData*>& Masked() const { return masked_; }

signals:
    void MaskChanged();

private:
    QListWidget* list_;
    QSet<const OperationData*> masked_;
};

} // namespace feldra
