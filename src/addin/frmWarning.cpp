#include "addin/frmWarning.h"

#include "addin/modGlobals.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/HelpAccess.h"
#include "addin/ui/UiServices.h"
#include "numeric/NumberText.h"
#include "ui_frmWarning.h"


namespace marelon {

frmWarning::frmWarning(std::shared_ptr<host::Application> application, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmWarning>()), application_(std::move(application))
{
    ui_->setupUi(this);
    connect(ui_->cmdYes, &QPushButton::clicked, this, &frmWarning::cmdYes_Click);
    connect(ui_->cmdNo, &QPushButton::clicked, this, &frmWarning::cmdNo_Click);
    connect(ui_->cmdHelp, &QPushButton::clicked, this, &frmWarning::cmdHelp_Click);
    Form_Load();
}

frmWarning::~frmWarning() = default;

void frmWarning::Form_Load()
{
    TranslateForm(this);
    setWindowTitle(Tr(QStringLiteral("Warning")));
    ui_->lblWarning1->setText(Tr(QStringLiteral(
        "Marelon users should run the Tool Data Settings and Data Page functions prior to creating NC code.")));
    ui_->lblWarning3->setText(Tr(QStringLiteral("DO YOU WISH TO CONTINUE?")));
    ui_->chkDontShow->setText(Tr(QStringLiteral("Don't show me this again.")));
    ui_->cmdYes->setText(Tr(QStringLiteral("Yes")));
    ui_->cmdNo->setText(Tr(QStringLiteral("No")));
    ui_->cmdHelp->setText(Tr(QStringLiteral("Help")));

    const QString stored = GetSetting(kAppName, kNcCodeDialogSection, kDontShowKey, QStringLiteral("0"));
    ui_->chkDontShow->setChecked(numeric::RoundToInt16(numeric::ToDouble(stored)) != 0);
}

void frmWarning::Form_Unload()
{
    SaveSetting(kAppName, kNcCodeDialogSection, kDontShowKey,
                ui_->chkDontShow->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
}

void frmWarning::closeWith(bool cancel)
{
    Flags().ncWarningCancel = cancel;
    answered_ = true;
    if (cancel)
        reject();
    else
        accept();
}

void frmWarning::cmdYes_Click()
{
    closeWith(false);
}

void frmWarning::cmdNo_Click()
{
    closeWith(true);
}

void frmWarning::cmdHelp_Click()
{
    OpenHelpTopic(*application_, kAddInHelpFile, QStringLiteral("posting.htm#Warning"));
}

void frmWarning::done(int result)
{
    // Closed from the window frame or with Escape: the same as No.
    if (!answered_)
        Flags().ncWarningCancel = true;
    Form_Unload();
    QDialog::done(result);
}

} // namespace marelon
