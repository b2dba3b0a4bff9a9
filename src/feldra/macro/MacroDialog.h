#pragma once

#include <QJSValue>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>

namespace feldra {

// A visible dialog (or any top-level form) as a macro sees it, found by its
// form name; its controls by their control names.
class MacroDialog : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString title READ title)
    Q_PROPERTY(bool visible READ visible)
    Q_PROPERTY(QStringList controls READ controls)
public:
    explicit MacroDialog(QWidget* form);

    QString name() const { return name_; }
    QString title() const;
    bool visible() const;
    // The names of the form's named controls, in creation order.
    QStringList controls() const;

    // The control with this name; a script error when the form has none.
    Q_INVOKABLE QJSValue control(const QString& controlName);
    // Shorthands: control(name).click(), .text, .text = value.
    Q_INVOKABLE void click(const QString& controlName);
    Q_INVOKABLE QString text(const QString& controlName);
    Q_INVOKABLE void setText(const QString& controlName, const QString& text);
    // Writes the form as shown to a PNG file; returns the file's absolute path.
    Q_INVOKABLE QString screenshot(const QString& path);
    // Closes the form as its window's close box does (a dialog is rejected).
    Q_INVOKABLE void close();

private:
    QWidget* find(const QString& controlName);

    QPointer<QWidget> form_;
    QString name_;
};

// Writes a widget as shown to a PNG file, creating the folder; the absolute
// path, or an empty text when it cannot be written.
QString GrabToPng(QWidget* widget, const QString& path);

} // namespace feldra
