#pragma once

#include "tooldata/HolderDialog.h"

namespace Ui {
class frmNewHolder;
}

namespace marelon {

// Adds a holder to the end of a holder library file. Opens with "Forward"
// selected. Names are not checked against the file: a duplicate is possible,
// and Edit Holder then changes the first of them.
class frmNewHolder : public HolderDialog {
public:
    frmNewHolder(std::shared_ptr<host::Application> application, const UserDataFile& holderFile,
                 QWidget* parent = nullptr);
    ~frmNewHolder() override;

    void cmdOK_Click();

private:
    void Form_Load();

    std::unique_ptr<Ui::frmNewHolder> ui_;
};

} // namespace marelon
