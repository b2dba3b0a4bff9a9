#include "tooldata/HolderDialog.h"

#include "addin/UnitConversion.h"
#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/UiServices.h"
#include "numeric/Encode.h"
#include "numeric/NumberText.h"
#include "addin/ui/Validation.h"
#include "addin/ui/ControlHandler.h"
#include "tooldata/Windows1252.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

namespace marelon {
namespace {

const QChar kDoubleQuote = QLatin1Char('"');

QString quoteNotAllowed(const QString& what, const QString& ending)
{
    return Tr(what) + QStringLiteral("\r\n") + Tr(QStringLiteral("Quotation mark (")) + kDoubleQuote
        + Tr(ending);
}

bool refuse(const QString& message)
{
    MsgBox(message);
    return false;
}

} // namespace

HolderDialog::HolderDialog(std::shared_ptr<host::Application> application, UserDataFile holderFile,
                           QWidget* parent)
    : QDialog(parent), application_(std::move(application)), holderFile_(std::move(holderFile))
{
}

HolderDialog::~HolderDialog() = default;

void HolderDialog::Attach(const HolderControls& controls)
{
    c_ = controls;
    ConnectHandler(this, c_.cmdCancel, &QPushButton::clicked, &HolderDialog::cmdCancel_Click);
    ConnectHandler(this, c_.cmdHelp, &QPushButton::clicked, &HolderDialog::cmdHelp_Click);
    for (QLineEdit* field : {c_.txtHolderName, c_.txtXShift, c_.txtYShift, c_.txtZShift,
                             c_.txtGear1, c_.txtGear2, c_.txtHolderDesc})
        field->installEventFilter(this);
}

void HolderDialog::SetCaptions(const QString& title)
{
    TranslateForm(this);
    setWindowTitle(Tr(title));
    c_.lblHolderName->setText(Tr(QStringLiteral("Holder Name")));
    c_.lblXShift->setText(Tr(QStringLiteral("X Shift")));
    c_.lblYShift->setText(Tr(QStringLiteral("Y Shift")));
    c_.lblZShift->setText(Tr(QStringLiteral("Z Shift")));
    c_.lblSpdlRot->setText(Tr(QStringLiteral("Spindle Rotation")));
    c_.opForward->setText(Tr(QStringLiteral("Forward")));
    c_.opReverse->setText(Tr(QStringLiteral("Reverse")));
    c_.lblGear->setText(Tr(QStringLiteral("Gear Ratio")));
    c_.lblTo->setText(Tr(QStringLiteral("To")));
    c_.lblHolderDesc->setText(Tr(QStringLiteral("Holder Description")));
    c_.cmdOK->setText(Tr(QStringLiteral("OK")));
    c_.cmdCancel->setText(Tr(QStringLiteral("Cancel")));
    c_.cmdHelp->setText(Tr(QStringLiteral("Help")));
}

int HolderDialog::DocumentUnits()
{
    return application_->ActiveDocument()->UnitSystem();
}

std::optional<HolderRecord> HolderDialog::CheckedHolder()
{
    const QString name = c_.txtHolderName->text();
    if (name.contains(kDoubleQuote)) {
        refuse(quoteNotAllowed(QStringLiteral("Invalid Holder Name."), QStringLiteral(") is not allowed.")));
        return std::nullopt;
    }
    if (name.isEmpty()) {
        refuse(Tr(QStringLiteral("Please enter a Holder Name.")));
        return std::nullopt;
    }
    if (!FitsTheFile(name, QStringLiteral("Invalid Holder Name.")))
        return std::nullopt;
    if (!ValidateNumber(c_.lblXShift->text(), *c_.txtXShift)
        || !ValidateNumber(c_.lblZShift->text(), *c_.txtZShift)
        || !ValidateNumber(c_.lblYShift->text(), *c_.txtYShift)
        || !ValidateNumber(Tr(QStringLiteral("Gear Ratio 1")), *c_.txtGear1)
        || !ValidateNumber(Tr(QStringLiteral("Gear Ratio 2")), *c_.txtGear2))
        return std::nullopt;
    const QString description = c_.txtHolderDesc->text();
    if (description.contains(kDoubleQuote)) {
        refuse(quoteNotAllowed(QStringLiteral("Invalid Holder Description."), QStringLiteral(") is not allowed")));
        return std::nullopt;
    }
    if (description.isEmpty()) {
        refuse(Tr(QStringLiteral("Please enter a Holder Description.")));
        return std::nullopt;
    }
    if (!FitsTheFile(description, QStringLiteral("Invalid Holder Description.")))
        return std::nullopt;

    const int units = DocumentUnits();
    HolderRecord holder;
    holder.name = name;
    holder.description = description;
    holder.xShift = DocumentToInches(numeric::ToDouble(c_.txtXShift->text()), units);
    holder.zShift = DocumentToInches(numeric::ToDouble(c_.txtZShift->text()), units);
    holder.yShift = DocumentToInches(numeric::ToDouble(c_.txtYShift->text()), units);
    holder.spindleRotation = c_.opForward->isChecked() ? -1 : 1;
    holder.gearRatio1 = numeric::ToDouble(c_.txtGear1->text());
    holder.gearRatio2 = numeric::ToDouble(c_.txtGear2->text());
    return holder;
}

void HolderDialog::cmdCancel_Click()
{
    reject();
}

void HolderDialog::cmdHelp_Click()
{
    OpenHelpTopic(*application_, kAddInHelpFile, QStringLiteral("TooData.htm#Holder"));
}

bool HolderDialog::FitsTheFile(const QString& text, const QString& invalid)
{
    const QString outside = CharactersOutsideWindows1252(text);
    if (outside.isEmpty())
        return true;
    QStringList characters;
    for (const char32_t c : outside.toUcs4())
        characters.append(QString::fromUcs4(&c, 1));
    return refuse(Tr(invalid) + QStringLiteral("\r\n")
                  + Tr(QStringLiteral("The holder file cannot hold these characters: %1"))
                        .arg(characters.join(QLatin1Char(' '))));
}

void HolderDialog::ShowShift(QLineEdit& field, const QString& text)
{
    field.setText(text);
    shownShifts_.insert(&field, text);
}

void HolderDialog::ShiftField_LostFocus(QLineEdit& field)
{
    // Only what the user typed: a value this dialog wrote is in the user's
    // locale (decimal comma, grouping), which the evaluator does not read.
    if (field.text().isEmpty() || field.text() == shownShifts_.value(&field))
        return;
    double result = 0;
    if (numeric::Evaluate(field.text(), result) == numeric::kEvalOk) {
        ShowShift(field, numeric::Format(result, QStringLiteral("##,##0.000000")));
        return;
    }
    MsgBox(Tr(QStringLiteral("Invalid Expression")), host::MsgButtons::OK, host::MsgIcon::Information,
           Tr(QStringLiteral("Error")));
    field.selectAll();
    field.setFocus();
}

void HolderDialog::txtXShift_LostFocus()
{
    ShiftField_LostFocus(*c_.txtXShift);
}

void HolderDialog::txtYShift_LostFocus()
{
    ShiftField_LostFocus(*c_.txtYShift);
}

void HolderDialog::txtZShift_LostFocus()
{
    ShiftField_LostFocus(*c_.txtZShift);
}

bool HolderDialog::eventFilter(QObject* watched, QEvent* event)
{
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (field && event->type() == QEvent::FocusIn) {
        // After the click that gave the focus has placed the cursor.
        QTimer::singleShot(0, field, &QLineEdit::selectAll);
    } else if (field && event->type() == QEvent::FocusOut
               && (field == c_.txtXShift || field == c_.txtYShift || field == c_.txtZShift)) {
        // The focus leaving the dialog (Escape, the close box, another
        // window) or going to Cancel evaluates nothing: the user is not
        // moving on to the next field.
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        const bool leavingTheDialog = reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason
            || !isVisible() || QApplication::focusWidget() == c_.cmdCancel;
        if (!leavingTheDialog) {
            // The field has lost the focus before its handler runs, which may give it back.
            static_cast<QObject*>(field)->event(event);
            RunControlHandler([this, field] { ShiftField_LostFocus(*field); });
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace marelon
