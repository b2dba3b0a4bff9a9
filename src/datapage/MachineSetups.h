#pragma once

#include "addin/host/Fwd.h"

#include <QString>
#include <QStringList>

#include <stdexcept>

// The machine setup files of the Data Page: one folder per machine model below
// the add-in's folder, "<name>_Inch.EMS" and "<name>_Metric.EMS" in it.
namespace marelon {

// The list entry that stands for no machine setup.
inline const QString kNoMachineSetup = QStringLiteral("??????????");

// A setup folder that cannot be created or read. what() names the folder and
// why in English; Reason() is the same sentence with "%1" in place of the
// folder, for translation.
class MachineSetupFolderError : public std::runtime_error {
public:
    MachineSetupFolderError(const QString& folder, const QString& reason);

    const QString& Folder() const { return folder_; }
    const QString& Reason() const { return reason_; }

private:
    QString folder_;
    QString reason_;
};

// <addInFolder>/MachineSetups/<modelName>
QString MachineSetupFolder(const QString& addInFolder, const QString& modelName);

// The model's setup folders in the order they are read: the user's own
// (MachineSetups/<modelName> in the user's data folder) when it exists, then
// the add-in's; see DataFolders.
QStringList MachineSetupFolders(const QString& addInFolder, const QString& modelName);

// The setup names of the unit system (71 millimetres: files ending
// "_Metric.EMS", any other code: "_Inch.EMS", either case-insensitive), the
// suffix cut, in the order the file system lists them. A missing folder is
// created (one level: its parent must exist) and lists nothing. Throws
// MachineSetupFolderError when the folder cannot be created or read.
QStringList MachineSetupNames(const QString& folder, int unitSystem);

// <folder>/MachineSetups/<modelName>/<name>_Metric.EMS for unit 71,
// ..._Inch.EMS for any other unit; the folder is the user's data folder when
// the user has a setup of that name, else the add-in's. A file whose name
// differs only in case ("<name>_INCH.EMS", as the list shows it too) is that file.
QString MachineSetupPath(const QString& addInFolder, const QString& modelName, const QString& name, int unitSystem);

// True when the setup's file exists. An empty name, or one holding a path
// separator ('/' or '\\') or ':', is never a setup: no file outside the
// model's setup folder is ever used.
bool MachineSetupExists(const QString& addInFolder, const QString& modelName, const QString& name, int unitSystem);

// Empties the setup's entries (last to first), loads the file into the
// setup and names the setup after it. Host errors propagate; when the file
// cannot be loaded the removed entries are put back as they were, so a
// failed load leaves the setup unchanged.
void LoadMachineSetup(host::MachineSetup& setup, const QString& path, const QString& name);

} // namespace marelon
