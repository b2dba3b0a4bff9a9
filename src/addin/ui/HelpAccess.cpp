#include "addin/ui/HelpAccess.h"

#include "addin/host/Application.h"
#include "addin/host/HelpLocale.h"
#include "addin/ui/UiServices.h"

#include <QFileInfo>

namespace marelon {
namespace {

QString helpFolder(int number)
{
    return QStringLiteral("Help/") + QString::number(number) + QLatin1Char('/');
}

} // namespace

bool OpenHelpTopic(host::Application& application, const QString& file, const QString& topic)
{
    const QString installFolder = application.InstallFolder();
    const int languageFolder = application.CreateHelpLocale()->HelpLanguageNumber(UiLanguageCode());

    for (const QString& folder : {helpFolder(languageFolder), helpFolder(1033)}) {
        const QString path = installFolder + folder + file;
        if (QFileInfo::exists(path)) {
            application.ShowHelpTopic(path, topic);
            return true;
        }
    }
    return false;
}

} // namespace marelon
