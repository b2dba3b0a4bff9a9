#include "feldra/macro/MacroControl.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QJSEngine>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QTextEdit>

namespace feldra {

MacroControl::MacroControl(QWidget* control, const QString& formName)
    : control_(control), formName_(formName), name_(control->objectName())
{
}

void MacroControl::fail(const QString& problem) const
{
    if (QJSEngine* engine = qjsEngine(this))
        engine->throwError(QStringLiteral("%1.%2: %3").arg(formName_, name_, problem));
}

QWidget* MacroControl::widget() const
{
    if (!control_)
        fail(QStringLiteral("the control no longer exists"));
    return control_;
}

QString MacroControl::name() const { return name_; }
QString MacroControl::type() const { return control_ ? control_->metaObject()->className() : QString(); }

QString MacroControl::text() const
{
    QWidget* w = widget();
    if (auto* edit = qobject_cast<QLineEdit*>(w))
        return edit->text();
    if (auto* label = qobject_cast<QLabel*>(w))
        return label->text();
    if (auto* button = qobject_cast<QAbstractButton*>(w))
        return button->text();
    if (auto* combo = qobject_cast<QComboBox*>(w))
        return combo->currentText();
    if (auto* list = qobject_cast<QListWidget*>(w))
        return list->currentItem() ? list->currentItem()->text() : QString();
    if (auto* text = qobject_cast<QPlainTextEdit*>(w))
        return text->toPlainText();
    if (auto* text = qobject_cast<QTextEdit*>(w))
        return text->toPlainText();
    if (w)
        fail(QStringLiteral("a %1 has no text").arg(type()));
    return {};
}

void MacroControl::setText(const QString& text)
{
    QWidget* w = widget();
    if (auto* edit = qobject_cast<QLineEdit*>(w)) {
        if (edit->isReadOnly() || !edit->isEnabled())
            return fail(QStringLiteral("the field cannot be typed in"));
        edit->setText(text);
        emit edit->textEdited(text);
    } else if (auto* combo = qobject_cast<QComboBox*>(w); combo && combo->isEditable()) {
        combo->setEditText(text);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(w)) {
        plain->setPlainText(text);
    } else if (auto* rich = qobject_cast<QTextEdit*>(w)) {
        rich->setPlainText(text);
    } else if (w) {
        fail(QStringLiteral("a %1 cannot be typed in").arg(type()));
    }
}

int MacroControl::listIndex() const
{
    QWidget* w = widget();
    if (auto* combo = qobject_cast<QComboBox*>(w))
        return combo->currentIndex();
    if (auto* list = qobject_cast<QListWidget*>(w))
        return list->currentRow();
    if (auto* tabs = qobject_cast<QTabWidget*>(w))
        return tabs->currentIndex();
    if (w)
        fail(QStringLiteral("a %1 is not a list").arg(type()));
    return -1;
}

void MacroControl::setListIndex(int index)
{
    QWidget* w = widget();
    if (!w)
        return;
    if (!w->isEnabled())
        return fail(QStringLiteral("the list is disabled"));
    if (auto* combo = qobject_cast<QComboBox*>(w)) {
        if (index < 0 || index >= combo->count())
            return fail(QStringLiteral("no entry %1 (the list has %2)").arg(index).arg(combo->count()));
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    } else if (qobject_cast<QListWidget*>(w)) {
        clickEntry(index, Qt::NoModifier);
    } else if (auto* tabs = qobject_cast<QTabWidget*>(w)) {
        if (index < 0 || index >= tabs->count())
            return fail(QStringLiteral("no tab %1 (there are %2)").arg(index).arg(tabs->count()));
        tabs->setCurrentIndex(index);
    } else {
        fail(QStringLiteral("a %1 is not a list").arg(type()));
    }
}

QStringList MacroControl::entries() const
{
    QStringList result;
    QWidget* w = widget();
    if (auto* combo = qobject_cast<QComboBox*>(w)) {
        for (int i = 0; i < combo->count(); ++i)
            result << combo->itemText(i);
    } else if (auto* list = qobject_cast<QListWidget*>(w)) {
        for (int i = 0; i < list->count(); ++i)
            result << list->item(i)->text();
    } else if (w) {
        fail(QStringLiteral("a %1 is not a list").arg(type()));
    }
    return result;
}

void MacroControl::select(const QString& entry)
{
    const int index = int(entries().indexOf(entry));
    if (index < 0)
        return fail(QStringLiteral("no entry \"%1\"").arg(entry));
    setListIndex(index);
}

bool MacroControl::checked() const
{
    auto* button = qobject_cast<QAbstractButton*>(widget());
    if (!button || !button->isCheckable())
        fail(QStringLiteral("the control cannot be checked"));
    return button && button->isChecked();
}

void MacroControl::setChecked(bool checked)
{
    auto* button = qobject_cast<QAbstractButton*>(widget());
    if (!button || !button->isCheckable())
        return fail(QStringLiteral("the control cannot be checked"));
    if (button->isChecked() != checked)
        click();
}

bool MacroControl::enabled() const { return widget() && control_->isEnabled(); }
bool MacroControl::visible() const { return widget() && control_->isVisible(); }

int MacroControl::rowCount() const
{
    QWidget* w = widget();
    if (auto* table = qobject_cast<QTableWidget*>(w))
        return table->rowCount();
    if (w)
        fail(QStringLiteral("a %1 is not a grid").arg(type()));
    return 0;
}

// The grid of a cell; a script error (and null) when the control is no grid
// or the grid has no such cell.
QTableWidget* MacroControl::gridOf(int row, int column) const
{
    auto* table = qobject_cast<QTableWidget*>(widget());
    if (!table)
        fail(QStringLiteral("the control is not a grid"));
    else if (row < 0 || row >= table->rowCount() || column < 0 || column >= table->columnCount())
        fail(QStringLiteral("no cell %1, %2").arg(row).arg(column));
    else
        return table;
    return nullptr;
}

QString MacroControl::cell(int row, int column) const
{
    const QTableWidget* table = gridOf(row, column);
    const QTableWidgetItem* item = table ? table->item(row, column) : nullptr;
    return item ? item->text() : QString();
}

void MacroControl::clickCell(int row, int column)
{
    QTableWidget* table = gridOf(row, column);
    if (!table)
        return;
    if (!table->isEnabled())
        return fail(QStringLiteral("the grid is disabled"));
    const QModelIndex index = table->model()->index(row, column);
    table->scrollTo(index);
    const QPointF at = table->visualRect(index).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, at, table->viewport()->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(table->viewport(), &event);
    }
}

QList<int> MacroControl::selection() const
{
    QList<int> rows;
    auto* list = qobject_cast<QListWidget*>(widget());
    if (!list) {
        if (control_)
            fail(QStringLiteral("a %1 is not a list of entries").arg(type()));
        return rows;
    }
    for (int row = 0; row < list->count(); ++row)
        if (list->item(row)->isSelected())
            rows.append(row);
    return rows;
}

QStringList MacroControl::selectedEntries() const
{
    QStringList texts;
    const QList<int> rows = selection();
    if (auto* list = qobject_cast<QListWidget*>(control_.data()))
        for (const int row : rows)
            texts.append(list->item(row)->text());
    return texts;
}

void MacroControl::ctrlClick(int index) { clickEntry(index, Qt::ControlModifier); }
void MacroControl::shiftClick(int index) { clickEntry(index, Qt::ShiftModifier); }

void MacroControl::clickEntry(int index, Qt::KeyboardModifiers modifiers)
{
    auto* list = qobject_cast<QListWidget*>(widget());
    if (!list)
        return fail(QStringLiteral("a %1 is not a list of entries").arg(type()));
    if (!list->isEnabled())
        return fail(QStringLiteral("the list is disabled"));
    if (index < 0 || index >= list->count())
        return fail(QStringLiteral("no entry %1 (the list has %2)").arg(index).arg(list->count()));
    QListWidgetItem* item = list->item(index);
    list->scrollToItem(item);
    const QPointF at = list->visualItemRect(item).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons buttons = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, at, list->viewport()->mapToGlobal(at), Qt::LeftButton, buttons, modifiers);
        QCoreApplication::sendEvent(list->viewport(), &event);
    }
}

void MacroControl::click()
{
    auto* button = qobject_cast<QAbstractButton*>(widget());
    if (!button)
        return fail(QStringLiteral("a %1 cannot be clicked").arg(type()));
    if (!button->isEnabled())
        return fail(QStringLiteral("the button is disabled"));
    button->click();
}

void MacroControl::leave()
{
    if (QWidget* w = widget()) {
        QFocusEvent focusOut(QEvent::FocusOut, Qt::TabFocusReason);
        QCoreApplication::sendEvent(w, &focusOut);
    }
}

} // namespace feldra
