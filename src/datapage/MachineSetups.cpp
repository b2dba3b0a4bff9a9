#include "datapage/MachineSetups.h"

#include "addin/host/MachineSetup.h"
#include "addin/host/SetupEntries.h"
#include "addin/settings/UserDataLocation.h"

#include <QDir>
#include <QFileInfo>

namespace marelon {
namespace {

constexpr int kMillimetres = 71;

QString SuffixFor(int unitSystem)
{
    return unitSystem == kMillimetres ? QStringLiteral("_Metric.EMS") : QStringLiteral("_Inch.EMS");
}

// A name that could reach outside the setup folder.
bool LeavesFolder(const QString& name)
{
    return name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')) || name.contains(QLatin1Char(':'))
           || name.contains(QLatin1String(".."));
}

// The folder, created when missing (its parent must exist).
void EnsureFolder(const QString& folder)
{
    const QFileInfo info(folder);
    if (!info.exists() && !QDir().mkdir(folder))
        throw MachineSetupFolderError(folder, QStringLiteral("The machine setup folder \"%1\" cannot be created."));
    if (!QFileInfo(folder).isDir())
        throw MachineSetupFolderError(folder, QStringLiteral("\"%1\" is not a folder."));
    if (!QFileInfo(folder).isReadable())
        throw MachineSetupFolderError(folder, QStringLiteral("The machine setup folder \"%1\" cannot be read."));
}

} // namespace

MachineSetupFolderError::MachineSetupFolderError(const QString& folder, const QString& reason)
    : std::runtime_error(reason.arg(folder).toStdString()), folder_(folder), reason_(reason)
{
}

QString MachineSetupFolder(const QString& addInFolder, const QString& modelName)
{
    return QDir(addInFolder).filePath(QStringLiteral("MachineSetups/") + modelName);
}

QStringList MachineSetupFolders(const QString& addInFolder, const QString& modelName)
{
    return DataFolders(addInFolder, QStringLiteral("MachineSetups/") + modelName);
}

QStringList MachineSetupNames(const QString& folder, int unitSystem)
{
    EnsureFolder(folder);
    const QString suffix = SuffixFor(unitSystem);
    QStringList names;
    const QStringList files = QDir(folder).entryList(QDir::Files, QDir::Unsorted);
    for (const QString& file : files) {
        if (file.size() > suffix.size() && file.endsWith(suffix, Qt::CaseInsensitive))
            names.append(file.chopped(suffix.size()));
    }
    return names;
}

QString MachineSetupPath(const QString& addInFolder, const QString& modelName, const QString& name, int unitSystem)
{
    const QString relative = QStringLiteral("MachineSetups/%1/%2").arg(modelName, name + SuffixFor(unitSystem));
    return UserDataFile(addInFolder, relative).ReadPath();
}

bool MachineSetupExists(const QString& addInFolder, const QString& modelName, const QString& name, int unitSystem)
{
    if (name.isEmpty() || LeavesFolder(name))
        return false;
    return QFileInfo(MachineSetupPath(addInFolder, modelName, name, unitSystem)).isFile();
}

void LoadMachineSetup(host::MachineSetup& setup, const QString& path, const QString& name)
{
    const auto entries = setup.SetupEntries();
    for (int i = entries->Count(); i >= 1; --i)
        entries->Remove(i);
    setup.LoadSetupFile(path);
    setup.setMachineSetupName(name);
}

} // namespace marelon
