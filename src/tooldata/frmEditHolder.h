#pragma once

#include "tooldata/HolderDialog.h"

#include <QList>

namespace Ui {
class frmEditHolder;
}

namespace marelon {

// Changes a holder of a holder library file: the first record with the given
// name. The file is read when the dialog opens and written back whole on OK.
// When no record has that name (the file changed meanwhile), OK refuses and
// nothing is written.
class frmEditHolder : public HolderDialog {
public:
    frmEditHolder(std::shared_ptr<host::Application> application, const UserDataFile& holderFile,
                  const QString& holderName, QWidget* parent = nullptr);
    ~frmEditHolder() override;

    void cmdOK_Click();

    // The position in the file of the holder edited; -1 when none has its name.
    int EditedIndex() const { return edited_; }

private:
    void Form_Load(const QString& holderName);

    std::unique_ptr<Ui::frmEditHolder> ui_;
    QList<HolderRecord> holders_;
    int edited_ = -1;
};

} // namespace marelon
