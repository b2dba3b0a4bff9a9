#include "datapage/MachineSetups.h"

#include "addin/host/MachineSetup.h"
#include "addin/ContinueOnError.h"
#include "addin/host/HostError.h"
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

// A name that could reach outside the setup folder: one with a path
// separator or a drive. Two dots inside a name ("Rev..2") stay in the folder.
bool LeavesFolder(const QString& name)
{
    return name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\')) || name.contains(QLatin1Char(':'));
}

// The file of the folder with this name, its case as the folder has it
// ("Pin_INCH.EMS" for "Pin_Inch.EMS"); the exact name first.
QString FileInFolder(const QString& folder, const QString& fileName)
{
    const QDir dir(folder);
    if (QFileInfo(dir.filePath(fileName)).isFile())
        return fileName;
    const QStringList files = dir.entryList(QDir::Files, QDir::Name);
    for (const QString& file : files)
        if (file.compare(fileName, Qt::CaseInsensitive) == 0)
            return file;
    return fileName;
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
    // The user's own folder first, then the add-in's; the suffix in any case.
    const QString fileName = name + SuffixFor(unitSystem);
    for (const QString& folder : MachineSetupFolders(addInFolder, modelName)) {
        const QString path = QDir(folder).filePath(FileInFolder(folder, fileName));
        if (QFileInfo(path).isFile())
            return path;
    }
    return QDir(MachineSetupFolder(addInFolder, modelName)).filePath(fileName);
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
    QList<std::shared_ptr<host::SetupEntry>> removed;
    try {
        for (int i = entries->Count(); i >= 1; --i) {
            removed.prepend(entries->Item(i));
            entries->Remove(i);
        }
        setup.LoadSetupFile(path);
    } catch (const host::HostError&) {
        for (const auto& entry : removed)
            ContinueOnError([&] { entries->Add(entry); });
        throw;
    }
    setup.setMachineSetupName(name);
}

} // namespace marelon
