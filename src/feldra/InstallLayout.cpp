#include "feldra/InstallLayout.h"

#include <QDir>
#include <QFileInfo>

#ifndef FELDRA_DATA_FROM_BIN
#define FELDRA_DATA_FROM_BIN "../share/feldra"
#endif

namespace feldra {

QString HostInstallFolder(const QString& executableFolder)
{
    const QString installed = QDir::cleanPath(QDir(executableFolder).filePath(QStringLiteral(FELDRA_DATA_FROM_BIN)));
    const QString folder = QFileInfo(installed).isDir() ? installed : QDir::cleanPath(executableFolder);
    return QDir::toNativeSeparators(folder + QLatin1Char('/'));
}

QString MachineRegistryFolder(const QString& executableFolder)
{
    return QDir::fromNativeSeparators(HostInstallFolder(executableFolder)) + QStringLiteral("registry");
}

} // namespace feldra
