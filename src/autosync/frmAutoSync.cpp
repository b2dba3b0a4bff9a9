#include "autosync/frmAutoSync.h"

#include "addin/host/Application.h"
#include "addin/host/Document.h"
#include "addin/host/HostError.h"
#include "addin/host/Operation.h"
#include "addin/host/Operations.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/UiServices.h"
#include "autosync/modAutoSync.h"
#include "numeric/NumberText.h"
#include "ui_frmAutoSync.h"

#include <QItemSelectionModel>
#include <QLocale>

namespace marelon {

namespace {

// The stored machine position; the first machine when none is stored or the
// stored text is no position of the list.
int SavedMachinePosition()
{
    const QString stored = GetSetting(kAppName, kAutoSyncSection, kMachineNameKey, QStringLiteral("0"));
    if (!numeric::IsNumeric(stored, QLocale::c()))
        return 0;
    const double position = numeric::ToDouble(stored, QLocale::c());
    return position >= 0 && position < AutoSyncMachines().size() && position == int(position) ? int(position) : 0;
}

std::shared_ptr<host::Document> ActiveDocumentOf(host::Application& application)
{
    auto document = application.ActiveDocument();
    if (!document)
        throw host::HostError(QStringLiteral("Application.ActiveDocument"),
                              QStringLiteral("Auto Sync needs an open document."));
    return document;
}

QString MissingCutoffOrPickupText(const CutoffAndPickup& found)
{
    if (!found.cutoff && !found.pickup)
        return Tr(QStringLiteral("The document has neither a cut-off nor a pick-up operation, so no cut-off "
                                 "and pick-up synchronisations were made."));
    if (!found.cutoff)
        return Tr(QStringLiteral(
            "The document has no cut-off operation, so no cut-off and pick-up synchronisations were made."));
    return Tr(QStringLiteral(
        "The document has no pick-up operation, so no cut-off and pick-up synchronisations were made."));
}

} // namespace

frmAutoSync::frmAutoSync(std::shared_ptr<host::Application> application, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmAutoSync>()), application_(std::move(application))
{
    ui_->setupUi(this);
    connect(ui_->cmdUp, &QPushButton::clicked, this, &frmAutoSync::cmdUp_Click);
    connect(ui_->cmdDown, &QPushButton::clicked, this, &frmAutoSync::cmdDown_Click);
    connect(ui_->cmdOK, &QPushButton::clicked, this, &frmAutoSync::cmdOK_Click);
    connect(ui_->cmdCancel, &QPushButton::clicked, this, &frmAutoSync::cmdCancel_Click);
    Form_Load();
}

frmAutoSync::~frmAutoSync() = default;

void frmAutoSync::Form_Load()
{
    TranslateForm(this);
    ui_->fraMachineName->setTitle(Tr(QStringLiteral("Machine Name")));
    ui_->cmbMachineName->addItems(AutoSyncMachines());
    // The machine list has no click behaviour of its own: its position is read on OK.
    ui_->cmbMachineName->setCurrentIndex(SavedMachinePosition());

    const auto operations = ActiveDocumentOf(*application_)->Operations();
    const int count = operations->Count();
    for (int j = 1; j <= count; ++j)
        ui_->lstOperations->addItem(operations->Item(j)->Name());
}

QStringList frmAutoSync::ListTexts() const
{
    QStringList texts;
    texts.reserve(ui_->lstOperations->count());
    for (int i = 0; i < ui_->lstOperations->count(); ++i)
        texts.append(ui_->lstOperations->item(i)->text());
    return texts;
}

void frmAutoSync::exchangeTexts(int first, int second)
{
    QListWidgetItem* a = ui_->lstOperations->item(first);
    QListWidgetItem* b = ui_->lstOperations->item(second);
    const QString text = a->text();
    a->setText(b->text());
    b->setText(text);
}

QList<bool> frmAutoSync::selectedRows() const
{
    QList<bool> selected;
    for (int i = 0; i < ui_->lstOperations->count(); ++i)
        selected.append(ui_->lstOperations->item(i)->isSelected());
    return selected;
}

// The selection after a move, set and settled in one step: the user's next
// click (Shift-click included) starts from it and never brings back an entry
// that the move took out of the selection.
void frmAutoSync::selectRows(const QList<bool>& selected)
{
    QListWidget& list = *ui_->lstOperations;
    QItemSelection selection;
    for (int i = 0; i < selected.size(); ++i) {
        if (selected[i])
            selection.select(list.model()->index(i, 0), list.model()->index(i, 0));
    }
    list.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    list.selectionModel()->select(QItemSelection(), QItemSelectionModel::Select); // settles it
}

// Each selected entry moves one place up; a selected first entry stays.
void frmAutoSync::cmdUp_Click()
{
    QList<bool> selected = selectedRows();
    for (int i = 1; i < selected.size(); ++i) {
        if (selected[i]) {
            selected[i - 1] = true;
            exchangeTexts(i - 1, i);
            selected[i] = false;
        }
    }
    selectRows(selected);
}

// Each selected entry moves one place down; a selected last entry stays.
void frmAutoSync::cmdDown_Click()
{
    QList<bool> selected = selectedRows();
    for (int i = int(selected.size()) - 2; i >= 0; --i) {
        if (selected[i]) {
            selected[i] = false;
            exchangeTexts(i, i + 1);
            selected[i + 1] = true;
        }
    }
    selectRows(selected);
}

void frmAutoSync::cmdOK_Click()
{
    hide();
    if (!IsAutoSyncSupported(ui_->cmbMachineName->currentText())) {
        MsgBox(Tr(QStringLiteral("Auto Sync is only supported for L series machines at this time.")));
        reject();
        return;
    }

    AutoSync autoSync(ActiveDocumentOf(*application_), ListTexts());
    QString repeated;
    switch (autoSync.CheckList(&repeated)) {
    case ListCheck::Fits:
        break;
    case ListCheck::Outdated:
        MsgBox(Tr(QStringLiteral("The document's operations have changed since Auto Sync was opened. "
                                 "Open Auto Sync again to put them in order.")),
               host::MsgButtons::OK, host::MsgIcon::Exclamation);
        reject();
        return;
    case ListCheck::NameRepeated:
        MsgBox(Tr(QStringLiteral("Auto Sync tells operations apart by their names, and more than one "
                                 "operation is named \"%1\". Give each operation a name of its own and "
                                 "open Auto Sync again."))
                   .arg(repeated),
               host::MsgButtons::OK, host::MsgIcon::Exclamation);
        reject();
        return;
    }

    const CutoffAndPickup found = autoSync.Run();
    SaveSetting(kAppName, kAutoSyncSection, kMachineNameKey,
                numeric::NumberToInvariantText(ui_->cmbMachineName->currentIndex()));
    accept();
    if (!found.Created())
        MsgBox(MissingCutoffOrPickupText(found), host::MsgButtons::OK, host::MsgIcon::Information);
}

void frmAutoSync::cmdCancel_Click()
{
    reject();
}

std::shared_ptr<host::Operation> frmAutoSync::GetNextSubSpindleOP(const std::shared_ptr<host::Operation>& MainSpindleOP)
{
    return AutoSync(ActiveDocumentOf(*application_), ListTexts()).GetNextSubSpindleOP(MainSpindleOP);
}

double frmAutoSync::GetNextElementIndex(const std::shared_ptr<host::Operation>& OPToBeSynced)
{
    return AutoSync(ActiveDocumentOf(*application_), ListTexts()).GetNextElementIndex(OPToBeSynced);
}

} // namespace marelon
