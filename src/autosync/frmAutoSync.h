#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>

namespace host {
class Application;
class Operation;
} // namespace host
namespace Ui {
class frmAutoSync;
}

namespace marelon {

// "Auto Sync - Operation Order": the user puts the active document's operations
// into the order in which they run; OK rearranges the document and rebuilds its
// synchronisations between main-spindle and back-spindle work. The list is a
// working copy until OK; Cancel leaves the document as it was.
class frmAutoSync : public QDialog {
public:
    // Loads the form: the machine list at its saved position and the active
    // document's operations in document order.
    explicit frmAutoSync(std::shared_ptr<host::Application> application, QWidget* parent = nullptr);
    ~frmAutoSync() override;

    void cmdUp_Click();
    void cmdDown_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    // The look-ups of the synchronisations, for the list as it stands and the active document.
    std::shared_ptr<host::Operation> GetNextSubSpindleOP(const std::shared_ptr<host::Operation>& MainSpindleOP);
    double GetNextElementIndex(const std::shared_ptr<host::Operation>& OPToBeSynced);

private:
    void Form_Load();
    QStringList ListTexts() const;
    QList<bool> selectedRows() const;
    void selectRows(const QList<bool>& selected);
    void exchangeTexts(int first, int second);

    std::unique_ptr<Ui::frmAutoSync> ui_;
    std::shared_ptr<host::Application> application_;
};

} // namespace marelon
