#include "tooldata/frmEditHolder.h"

#include "addin/UnitConversion.h"
#include "addin/ui/UiServices.h"
#include "numeric/NumberText.h"
#include "addin/ui/ControlHandler.h"
#include "ui_frmEditHolder.h"

namespace marelon {

frmEditHolder::frmEditHolder(std::shared_ptr<host::Application> application, const UserDataFile& holderFile,
                             const QString& holderName, QWidget* parent)
    : HolderDialog(std::move(application), holderFile, parent), ui_(std::make_unique<Ui::frmEditHolder>())
{
    ui_->setupUi(this);
    Attach(HolderControls::Of(*ui_));
    ConnectHandler(this, ui_->cmdOK, &QPushButton::clicked, &frmEditHolder::cmdOK_Click);
    Form_Load(holderName);
}

frmEditHolder::~frmEditHolder() = default;

void frmEditHolder::Form_Load(const QString& holderName)
{
    SetCaptions(QStringLiteral("Edit Holder"));
    holders_ = ReadHolderFile(HolderFile());
    for (int i = 0; i < holders_.size() && edited_ < 0; ++i) {
        if (holders_[i].name == holderName)
            edited_ = i;
    }
    if (edited_ < 0)
        return;

    const HolderRecord& holder = holders_[edited_];
    const int units = DocumentUnits();
    ui_->txtHolderName->setText(holder.name);
    ui_->txtHolderDesc->setText(holder.description);
    ui_->txtGear1->setText(numeric::NumberToText(holder.gearRatio1));
    ui_->txtGear2->setText(numeric::NumberToText(holder.gearRatio2));
    ShowShift(*ui_->txtXShift, HolderShiftText(holder.xShift, units));
    ShowShift(*ui_->txtZShift, HolderShiftText(holder.zShift, units));
    ShowShift(*ui_->txtYShift, HolderShiftText(holder.yShift, units));
    (holder.spindleRotation == -1 ? ui_->opForward : ui_->opReverse)->setChecked(true);
}

void frmEditHolder::cmdOK_Click()
{
    if (edited_ < 0) {
        MsgBox(Tr(QStringLiteral("The holder is no longer in the holder file. Nothing has been changed.")));
        return;
    }
    const auto holder = CheckedHolder();
    if (!holder)
        return;
    holders_[edited_] = *holder;
    WriteHolderFile(HolderFileForChange(), holders_);
    accept();
}

} // namespace marelon
