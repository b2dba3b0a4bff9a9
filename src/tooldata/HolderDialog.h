#pragma once

#include "addin/settings/UserDataLocation.h"
#include "tooldata/HolderLibrary.h"

#include <QDialog>
#include <QHash>

#include <memory>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace host {
class Application;
}

namespace marelon {

// The controls that New Holder and Edit Holder share, by their names.
struct HolderControls {
    QLabel* lblHolderName;
    QLineEdit* txtHolderName;
    QLabel* lblXShift;
    QLineEdit* txtXShift;
    QLabel* lblYShift;
    QLineEdit* txtYShift;
    QLabel* lblZShift;
    QLineEdit* txtZShift;
    QLabel* lblSpdlRot;
    QRadioButton* opForward;
    QRadioButton* opReverse;
    QLabel* lblGear;
    QLineEdit* txtGear1;
    QLabel* lblTo;
    QLineEdit* txtGear2;
    QLabel* lblHolderDesc;
    QLineEdit* txtHolderDesc;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
    QPushButton* cmdHelp;

    template <class Ui>
    static HolderControls Of(Ui& ui)
    {
        return {ui.lblHolderName, ui.txtHolderName, ui.lblXShift, ui.txtXShift, ui.lblYShift,
                ui.txtYShift,     ui.lblZShift,     ui.txtZShift, ui.lblSpdlRot, ui.opForward,
                ui.opReverse,     ui.lblGear,       ui.txtGear1,  ui.lblTo,      ui.txtGear2,
                ui.lblHolderDesc, ui.txtHolderDesc, ui.cmdOK,     ui.cmdCancel,  ui.cmdHelp};
    }
};

// What New Holder and Edit Holder have in common: the holder file they
// change, the captions, the OK checks and the buttons. Every text field
// selects its whole text when it gets the focus; a shift field that the user
// has typed in is evaluated as an expression when the focus leaves it for
// another control of the dialog. Cancel, the close box and Escape close the
// dialog without writing and without evaluating a field.
class HolderDialog : public QDialog {
public:
    ~HolderDialog() override;

    // The holder file the dialog reads (the user's copy when there is one).
    QString HolderFile() const { return holderFile_.ReadPath(); }

    void cmdCancel_Click();
    void cmdHelp_Click();
    void txtXShift_LostFocus();
    void txtYShift_LostFocus();
    void txtZShift_LostFocus();

protected:
    HolderDialog(std::shared_ptr<host::Application> application, UserDataFile holderFile, QWidget* parent);

    // The holder file a change is written to (see UserDataFile::PathForChange).
    QString HolderFileForChange() const { return holderFile_.PathForChange(); }

    // Connects the buttons and the fields; called once the form is set up.
    void Attach(const HolderControls& controls);
    // The window title and every caption, translated.
    void SetCaptions(const QString& title);

    // The holder the fields describe, in inches, after the OK checks in their
    // order; none, with the first failure shown, when a check fails.
    std::optional<HolderRecord> CheckedHolder();

    // The document's unit code (70 inches, 71 millimetres).
    int DocumentUnits();

    // Shows a value in a shift field; the dialog's own text is not evaluated.
    void ShowShift(QLineEdit& field, const QString& text);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A shift field has lost the focus: what the user typed there is evaluated.
    void ShiftField_LostFocus(QLineEdit& field);
    // The name or the description as the holder file can hold it; a message
    // naming the characters it cannot hold when it cannot.
    bool FitsTheFile(const QString& text, const QString& invalid);

    std::shared_ptr<host::Application> application_;
    UserDataFile holderFile_;
    HolderControls c_{};
    QHash<const QLineEdit*, QString> shownShifts_; // the text the dialog put into each shift field
};

} // namespace marelon
