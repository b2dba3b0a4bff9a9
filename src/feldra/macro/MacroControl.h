#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>

class QTableWidget;

namespace feldra {

// A control of a dialog as a macro sees it, acted on as a user would: setting
// a text types it, setting a list position chooses the entry (the list's
// activation runs), setting a check box clicks it, leave() moves the focus
// away so that the control's lost-focus handling runs. Misuse (a list
// position out of range, clicking a disabled button, a property the control
// does not have) throws a script error naming the form and the control.
class MacroControl : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString type READ type CONSTANT)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(int listIndex READ listIndex WRITE setListIndex)
    Q_PROPERTY(QStringList entries READ entries)
    Q_PROPERTY(bool checked READ checked WRITE setChecked)
    Q_PROPERTY(bool enabled READ enabled)
    Q_PROPERTY(bool visible READ visible)
    Q_PROPERTY(int rowCount READ rowCount)
    Q_PROPERTY(QList<int> selection READ selection)
    Q_PROPERTY(QStringList selectedEntries READ selectedEntries)
public:
    MacroControl(QWidget* control, const QString& formName);

    QString name() const;
    QString type() const;
    QString text() const;
    void setText(const QString& text);
    int listIndex() const;
    void setListIndex(int index);
    QStringList entries() const;
    bool checked() const;
    void setChecked(bool checked);
    bool enabled() const;
    bool visible() const;
    int rowCount() const;
    // The positions and the texts of a list's selected entries, in list order.
    QList<int> selection() const;
    QStringList selectedEntries() const;

    Q_INVOKABLE void click();
    Q_INVOKABLE void leave();
    // Chooses the list entry with this text.
    Q_INVOKABLE void select(const QString& entry);
    // The text of a grid cell, rows and columns from 0.
    Q_INVOKABLE QString cell(int row, int column) const;
    // Clicks a grid cell with the left mouse button, as a user does.
    Q_INVOKABLE void clickCell(int row, int column);
    // Clicks a list entry with Ctrl held (the entry joins or leaves the
    // selection) or with Shift held (the entries from the last click's on).
    Q_INVOKABLE void ctrlClick(int index);
    Q_INVOKABLE void shiftClick(int index);

private:
    QWidget* widget() const;
    void fail(const QString& problem) const;
    QTableWidget* gridOf(int row, int column) const;
    // A left click on a list entry, with the keys held that the user holds.
    void clickEntry(int index, Qt::KeyboardModifiers modifiers);

    QPointer<QWidget> control_;
    QString formName_;
    QString name_;
};

} // namespace feldra
