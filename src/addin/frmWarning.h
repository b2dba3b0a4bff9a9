#pragma once

#include <QDialog>

#include <memory>

namespace host {
class Application;
}
namespace Ui {
class frmWarning;
}

namespace marelon {

inline const QString kNcCodeDialogSection = QStringLiteral("NC Code Dialog");
inline const QString kDontShowKey = QStringLiteral("Don't Show");

// The reminder before NC code is generated: run Tool Data and the Data Page
// first. Its answer is the NC warning cancel flag; its check box is stored as
// the "Don't Show" setting on every close.
class frmWarning : public QDialog {
public:
    // Loads the form: translated texts and the stored check box. Throws when
    // the stored setting is not a number.
    explicit frmWarning(std::shared_ptr<host::Application> application, QWidget* parent = nullptr);
    ~frmWarning() override;

    void cmdYes_Click();
    void cmdNo_Click();
    void cmdHelp_Click();

protected:
    // Every way of closing ends here: Yes, No, the window's close box and
    // Escape. Closing without Yes cancels the NC code; the check box is stored.
    void done(int result) override;

private:
    void Form_Load();
    void Form_Unload();
    void closeWith(bool cancel);

    std::unique_ptr<Ui::frmWarning> ui_;
    std::shared_ptr<host::Application> application_;
    bool answered_ = false;
};

} // namespace marelon
