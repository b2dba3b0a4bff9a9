#include "tooldata/frmNewHolder.h"

#include "addin/ui/ControlHandler.h"
#include "ui_frmNewHolder.h"

namespace marelon {

frmNewHolder::frmNewHolder(std::shared_ptr<host::Application> application, const UserDataFile& holderFile,
                           QWidget* parent)
    : HolderDialog(std::move(application), holderFile, parent), ui_(std::make_unique<Ui::frmNewHolder>())
{
    ui_->setupUi(this);
    Attach(HolderControls::Of(*ui_));
    ConnectHandler(this, ui_->cmdOK, &QPushButton::clicked, &frmNewHolder::cmdOK_Click);
    Form_Load();
}

frmNewHolder::~frmNewHolder() = default;

void frmNewHolder::Form_Load()
{
    SetCaptions(QStringLiteral("New Holder"));
    ui_->txtHolderName->clear();
    ui_->txtHolderDesc->clear();
    for (QLineEdit* shift : {ui_->txtXShift, ui_->txtZShift, ui_->txtYShift})
        ShowShift(*shift, QStringLiteral("0"));
    ui_->txtGear1->setText(QStringLiteral("1"));
    ui_->txtGear2->setText(QStringLiteral("1"));
    ui_->opForward->setChecked(true);
}

void frmNewHolder::cmdOK_Click()
{
    const auto holder = CheckedHolder();
    if (!holder)
        return;
    AppendHolder(HolderFileForChange(), *holder);
    accept();
}

} // namespace marelon
