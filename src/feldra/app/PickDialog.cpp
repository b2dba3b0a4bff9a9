#include "feldra/app/PickDialog.h"

#include "feldra/DocumentData.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

namespace feldra {

namespace {

void AddObject(QListWidget* list, const QString& key, const QString& description)
{
    auto* item = new QListWidgetItem(QStringLiteral("%1  %2").arg(key, description), list);
    item->setData(Qt::UserRole, key);
}

} // namespace

PickDialog::PickDialog(const DocumentData& document, const QString& prompt, QWidget* parent)
    : QDialog(parent), objects_(new QListWidget)
{
    setObjectName("feldraPickDialog");
    setWindowTitle(QStringLiteral("Pick an Object"));
    objects_->setObjectName("lstObjects");
    for (const auto& feature : document.features)
        AddObject(objects_, feature->key, QStringLiteral("feature on layer %1").arg(feature->layer));
    for (const auto& operation : document.operations)
        AddObject(objects_, operation->key, operation->name);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(objects_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(prompt));
    layout->addWidget(objects_);
    layout->addWidget(buttons);
}

QString PickDialog::PickedKey() const
{
    const QListWidgetItem* item = objects_->currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

QString PickDialog::Pick(const DocumentData& document, const QString& prompt, QWidget* parent)
{
    PickDialog dialog(document, prompt, parent);
    return dialog.exec() == QDialog::Accepted ? dialog.PickedKey() : QString();
}

} // namespace feldra
