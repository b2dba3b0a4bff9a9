#include "addin/modGlobals.h"

#include "addin/ui/ModelessForm.h"
#include "datapage/frmMarelonDataPage.h"

#include <stdexcept>

namespace marelon {

ProcessFlags& Flags()
{
    static ProcessFlags flags;
    return flags;
}

QString& HostInstallFolder()
{
    static QString folder;
    return folder;
}

QPointer<frmMarelonDataPage>& DataPageInstance()
{
    static QPointer<frmMarelonDataPage> instance;
    return instance;
}

void ShowDataPage()
{
    frmMarelonDataPage* page = DataPageInstance();
    if (!page)
        throw std::logic_error("The Data Page is not loaded.");
    // Still open (a machine setup that could not be loaded enables the command
    // again): shown as it is, keeping what the user typed.
    if (!page->isVisible())
        page->InitOp();
    ShowForm(page, false);
    Flags().dataPageAvailable = false;
}

} // namespace marelon
