#include "feldra/app/MaskingPanel.h"

#include "feldra/DocumentData.h"
#include "feldra/QtLocalizer.h"

#include <QListWidget>

namespace feldra {
namespace {

constexpr int kOperationRole = Qt::UserRole;

const OperationData* operationOf(const QListWidgetItem* item)
{
    return static_cast<const OperationData*>(item->data(kOperationRole).value<const void*>());
}

} // namespace

MaskingPanel::MaskingPanel(QWidget* parent) : QDockWidget(parent), list_(new QListWidget(this))
{
    setObjectName(QStringLiteral("maskingPanel"));
    list_->setObjectName(QStringLiteral("maskList"));
    setWidget(list_);
    connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        const OperationData* operation = operationOf(item);
        if (item->checkState() == Qt::Checked)
            masked_.insert(operation);
        else
            masked_.remove(operation);
        emit MaskChanged();
    });
}

void MaskingPanel::Show(const DocumentData* document, const QtLocalizer& localizer)
{
    setWindowTitle(localizer.Translate(QStringLiteral("Masks")));
    const QSignalBlocker quiet(list_);
    list_->clear();
    QSet<const OperationData*> kept;
    if (document) {
        for (const auto& operation : document->operations) {
            auto* item = new QListWidgetItem(operation->name, list_);
            item->setData(kOperationRole, QVariant::fromValue<const void*>(operation.get()));
            const bool masked = masked_.contains(operation.get());
            item->setCheckState(masked ? Qt::Checked : Qt::Unchecked);
            if (masked)
                kept.insert(operation.get());
        }
    }
    masked_ = kept;
}

} // namespace feldra
