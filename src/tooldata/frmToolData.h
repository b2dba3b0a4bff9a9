#pragma once

#include "addin/settings/UserDataLocation.h"
#include "tooldata/HolderLibrary.h"
#include "tooldata/modToolData.h"

#include <QDialog>
#include <QHash>

#include <memory>

class QMenu;
class QAction;
class QLineEdit;

namespace host {
class Application;
class Document;
} // namespace host
namespace Ui {
class frmToolData;
}

namespace marelon {

// Tool Data: the tools of the active document in a grid, editable in place;
// for the tool clicked, the holder it sits in on the chosen machine and its
// shifts; the set-data button writes holder plus tool shift, spindle
// direction and gear ratio into the tool. It also keeps the machine's holder
// library (New, Edit, Del) and renumbers and sorts the tools (context menu).
//
// Handlers called from code let a host failure (host::HostError) leave them;
// when a control runs them, a failure ends the handler and is shown.
class frmToolData : public QDialog {
public:
    // Loads the form for the application's active document.
    explicit frmToolData(std::shared_ptr<host::Application> application, QWidget* parent = nullptr);
    ~frmToolData() override;

    void cmbMachineName_Click();
    void cmbHolders_Click();
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdSetData_Click();
    void cmdExit_Click();
    void cmdHelp_Click();
    void Renumber_Click();
    void Sort_Click();
    // Grid events; rows and columns as the grid counts them (row 0 and column 0 are fixed).
    void ToolGrid_MouseUp(Qt::MouseButton button, int row, int column);
    void ToolGrid_DblClick();
    void ToolGrid_KeyDown(int key);
    void EditBox_KeyDown(int key);
    void EditBox_LostFocus();
    void txtToolXShift_GotFocus();
    void txtToolYShift_GotFocus();
    void txtToolZShift_GotFocus();
    // Enter in a Tool field, or typing in it, confirms its value for the current tool.
    void ConfirmToolField(QLineEdit& field);

    void ShowHolderInformation();
    void GetToolShift();
    void ToolListUpdate();
    void FillGrid(const QList<ToolPtr>& tools);

    // The holder library file of the chosen machine (the user's own copy when
    // there is one, else the one shipped with the add-in) and the holders read from it.
    const QString& ToolDataFile() const { return sToolDataFile_; }
    const UserDataFile& HolderLibraryFile() const { return holderFile_; }
    const QList<HolderRecord>& HolderTable() const { return holders_; }
    const QList<ToolPtr>& SortedTools() const { return sortedTools_; }
    const ToolPtr& CurrentTool() const { return currentTool_; }
    bool BackSpindleChoice() const { return backSpindleChoice_; }
    // The tool ("T07") whose value a Tool field still shows for another tool,
    // until the user confirms or edits it; empty when the field is the current
    // tool's own (or the dialog's first "0").
    QString CarriedOverFrom(const QLineEdit& field) const { return carriedFrom_.value(&field); }
    QMenu* MnuContext() const { return mnuContext_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void SetCaptions();
    void FillMachineList();
    int StoredMachinePosition(host::Document& document);
    void SelectMachine(int position);
    void SelectHolder(int position);
    // Reads the holder file into the table and the list; selects nothing.
    void ReadHolders();
    // The title names the library file shown and whether it is the shipped
    // one or the user's own copy.
    void ShowLibraryInTitle();
    // The holder file of the chosen machine: the missing-file message, or the
    // holders with the first one selected.
    void LoadHolderFile();
    // No holders: an empty list and table, and empty holder fields.
    void EmptyHolderList();
    void OpenEditBox();
    void CommitEditBox();
    void SetBoldRow(int row);
    void ChooseRow(int row, int column);
    void ShowToolShift(const ToolShiftFields& shift);
    // Shows a Tool field as carried over from the named tool, or (empty) as the current tool's own.
    void ShowCarriedOver(QLineEdit& field, const QString& fromTool);
    // Set Data's refusal while a Tool field still shows another tool's value.
    bool RefuseCarriedOverFields();
    void SizeSettingsColumns();
    void ShowHolderDescription(const QString& description);
    int DocumentUnits();
    QString MachineName() const;

    std::unique_ptr<Ui::frmToolData> ui_;
    std::shared_ptr<host::Application> application_;
    QMenu* mnuContext_ = nullptr;
    QAction* renumber_ = nullptr;
    QAction* sort_ = nullptr;
    QList<ToolPtr> sortedTools_;
    ToolPtr currentTool_;
    int clickedRow_ = 0;
    int clickedColumn_ = 0;
    bool filling_ = false; // the grid is being filled: its cell changes choose no tool
    QList<HolderRecord> holders_;
    UserDataFile holderFile_;
    QString sToolDataFile_; // holderFile_'s file as last read
    bool backSpindleChoice_ = false;
    QHash<const QLineEdit*, ToolPtr> toolFieldSource_; // the tool each Tool field's value belongs to
    QHash<const QLineEdit*, QString> carriedFrom_;
    int descriptionWidth_ = 0; // the description's width in the narrowest dialog
};

} // namespace marelon
