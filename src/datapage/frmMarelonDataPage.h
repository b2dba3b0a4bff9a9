#pragma once

#include "datapage/GangToolPatterns.h"

#include <QDialog>
#include <QHash>
#include <QStringList>

#include <memory>
#include <optional>
#include <stdexcept>

class QComboBox;
class QLineEdit;
class QRadioButton;

namespace host {
class Application;
class Document;
}
namespace Ui {
class frmMarelonDataPage;
}

namespace marelon {

// The Data Page: the machine's settings for the active document, shown
// modeless beside the host. The connection creates and loads it once; closing
// it (Cancel, the close box) only hides it, so that the next opening prepares
// the same dialog again with InitOp. The form wires its controls to their
// handlers; the rules live in the Data Page's modules (the field table, the
// machine catalogue, persistence, output, stock, bar loader, updates).
class frmMarelonDataPage : public QDialog {
public:
    // How the dialog is being unloaded: by the user from its title bar, or by code.
    enum UnloadMode { vbFormControlMenu = 0, vbFormCode = 1 };
    enum Tab { kPartData = 0, kMachineData = 1, kMiscellaneous = 2 };

    explicit frmMarelonDataPage(std::shared_ptr<host::Application> application, QWidget* parent = nullptr);
    ~frmMarelonDataPage() override;

    // Prepares the dialog for the active document before it is shown.
    void InitOp();
    // The part changed under the open dialog (an undo or redo, another part
    // opened): shows the part's values again on the same tab, and says so
    // when what it showed was different.
    void ShowPartAgain();
    // The unload by code, before the dialog is deleted: the Data Page is closed.
    void Unload();

    // Buttons.
    void cmdOK_Click();
    void cmdCancel_Click();
    void cmdHelp_Click();
    void cmdRefresh_Click();
    void CmdUpd816_Click();
    void CmdUpd818_Click();
    void CmdUpd821_Click();
    void CmdUpdColletExt_Click();
    void SelectButton_Click();

    // Lists and options: each runs when the user picks and when code selects.
    void cmbMachineName_Click();
    void cmbGangHolder_Click();
    void cmbFrontDrillHolder_Click();
    void cmbBackDrillHolder_Click();
    void cmbBarLoaderProgType_Click();
    void optMagazine_Click();
    void optHydrostatic_Click();
    void cmbHeadComment_Click();
    void Comments_Change();
    void StockTypeC_Click();
    void ODCircle_Click();
    void IDCircle_Click();
    void MyTabs_Click(int previousTab);

    // Leaving a field.
    void StockDiameter_LostFocus();
    void InsideDiameter_LostFocus();
    void CircleDiameter_LostFocus();
    void Sides_LostFocus();
    void BaseAngle_LostFocus();
    void ProgramNumber_LostFocus();
    void txtColletExt_LostFocus();
    // Evaluates an expression in a field and writes its value back ("####0.0000");
    // an invalid expression keeps the text, says so and keeps the focus there.
    void CheckNumericEntry(QLineEdit& box);

    // The machine setup list of the chosen model, and loading its entry.
    void AddMachineSetups();
    void LoadMachineSetup();
    // Enables the bar loader fields for the loader kind and program type.
    void ApplyBarLoaderEnabling();

    // For the Data Page's modules: a control by name, selecting a list entry as
    // a user does (running the list's click handler), the gang tool pattern
    // table, the document and the head comments.
    template <class W>
    W& Control(const QString& name) const
    {
        W* control = findChild<W*>(name);
        if (!control)
            throw std::logic_error("The Data Page has no control " + name.toStdString());
        return *control;
    }
    void SelectList(QComboBox& list, int position);
    // A Machine Data slot's value now belongs to the model chosen.
    void TakeSlotValue(QLineEdit& slot);
    GangToolPatternTable& PatternTable() { return patterns_; }
    host::Application& Application() const { return *application_; }
    std::shared_ptr<host::Document> ActiveDocument() const;
    // One comment per NC output head of the document, by head position.
    QStringList& HeadComments() { return headComments_; }
    // The stock type the document had when the Data Page was opened.
    int OpenedStockType() const { return openedStockType_; }
    QString MachineName() const;
    // The polar mode of a part's Param819 (its thousands): selected in the
    // list, or, for a mode the list does not have, kept as it is and shown.
    void ShowPolarMode(int mode);
    // The polar mode OK writes: the list's position, else the part's mode
    // kept, else -1 (none).
    int PolarModeCode() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    // Escape: the same as Cancel.
    void reject() override { cmdCancel_Click(); }

private:
    void Form_Load();
    void ShowAgain();
    QStringList ShownValues() const;
    void ShowFieldToCorrect(QWidget& field);
    void MarkBarCapacity();
    void Form_QueryUnload(bool& cancel, UnloadMode unloadMode);
    void ConnectHandlers();
    void ConnectOptionChange(QRadioButton& option, void (frmMarelonDataPage::*handler)());
    void LeaveField(const QString& name);
    void SetCaptions();
    void FillFixedLists();
    void FillMachineList();
    void ShowMachineSetupName();
    void SetPolygonDiameter();
    void EnableSubProgramNumber(bool enabled);
    void EnableLineFields(bool enabled);
    void SetCirclePicture(bool insideCircle);
    void SetStockFieldsVisible(bool outside, bool inside, bool polygon, bool profile);
    void MarkCarriedOverSlots();

    std::unique_ptr<Ui::frmMarelonDataPage> ui_;
    std::shared_ptr<host::Application> application_;
    GangToolPatternTable patterns_;
    QStringList headComments_;
    int openedStockType_ = 0;
    // The model under which each Machine Data slot got its value.
    QHash<const QLineEdit*, QString> slotModels_;
    // A polar mode of the part that the list has no entry for.
    std::optional<int> keptPolarMode_;
};

} // namespace marelon
