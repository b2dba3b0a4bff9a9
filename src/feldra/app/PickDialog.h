#pragma once

#include <QDialog>

class QListWidget;

namespace feldra {

struct DocumentData;

// Lets the user pick a graphic object of the document: its features and
// operations by key. The answer is the chosen key, empty when cancelled.
class PickDialog : public QDialog {
public:
    PickDialog(const DocumentData& document, const QString& prompt, QWidget* parent = nullptr);

    QString PickedKey() const;

    static QString Pick(const DocumentData& document, const QString& prompt, QWidget* parent);

private:
    QListWidget* objects_;
};

} // namespace feldra
