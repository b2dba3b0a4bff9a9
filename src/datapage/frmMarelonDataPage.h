#pragma once

#include <QDialog>

#include <memory>

namespace host {
class Application;
}
namespace Ui {
class frmMarelonDataPage;
}

namespace marelon {

// The Data Page: the machine's settings for the active document, shown
// modeless beside the host. The connection creates and loads it once; closing
// it (Cancel, the close box) only hides it, so that the next opening prepares
// the same dialog again with InitOp.
class frmMarelonDataPage : public QDialog {
public:
    // How the dialog is being unloaded: by the user from its title bar, or by code.
    enum UnloadMode { vbFormControlMenu = 0, vbFormCode = 1 };

    explicit frmMarelonDataPage(std::shared_ptr<host::Application> application, QWidget* parent = nullptr);
    ~frmMarelonDataPage() override;

    // Prepares the dialog for the active document before it is shown.
    void InitOp();
    // The unload by code, before the dialog is deleted: the Data Page is closed.
    void Unload();

    void cmdCancel_Click();
    void cmdHelp_Click();
    // Escape: the same as Cancel.
    void reject() override { cmdCancel_Click(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Form_Load();
    void Form_QueryUnload(bool& cancel, UnloadMode unloadMode);
    void FillHeadList();
    void FillFixedLists();

    std::unique_ptr<Ui::frmMarelonDataPage> ui_;
    std::shared_ptr<host::Application> application_;
};

} // namespace marelon
