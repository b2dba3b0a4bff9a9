#pragma once

#include <QString>
#include <QStringList>

// Where the add-in's data files are read and where a user's changes go.
//
// The files shipped with the add-in (the holder libraries in ToolHolders/, the
// machine setups in MachineSetups/<model>/) lie in the add-in's own folder.
// Installed, that folder belongs to the system and a normal user cannot write
// it: a change then goes to a copy in the user's own data folder, and that copy
// is read first from then on. Where the add-in's folder can be written (a
// developer's build), changes are made in place, as they always were.
namespace marelon {

// The add-in's per-user data folder: $MARELON_USER_DATA_DIR when set, else
// "Marelon" in the platform's per-user data location (~/.local/share/Marelon,
// %LOCALAPPDATA%\Marelon on Windows).
QString UserDataFolder();

// True when a change may be written into the folder: it exists, the user may
// write into it, and its permissions grant writing to someone. A folder made
// read-only for everybody (chmod a-w) counts as read-only even for the
// super-user, whom the system would let write anywhere.
bool IsWritableFolder(const QString& folder);

// One data file of the add-in, named by its path below the add-in's folder
// ("ToolHolders/L5-16-20 ToolHolders.txt").
class UserDataFile {
public:
    UserDataFile() = default;
    UserDataFile(const QString& addInFolder, const QString& relativePath);
    // A file that is read and changed where it is, whoever may write it.
    UserDataFile(const QString& path); // NOLINT: a plain path is such a file

    // The file shipped with the add-in, and the user's copy of it (empty for
    // a file without one).
    const QString& ShippedPath() const { return shipped_; }
    const QString& UserPath() const { return user_; }

    // True when the user has a copy of their own: it is read in place of the
    // shipped file.
    bool HasUserCopy() const;
    // The file to read: the user's copy when there is one, else the shipped file.
    QString ReadPath() const;

    // The file a change is written to: the user's copy when there is one; the
    // shipped file when it (and its folder) can be written; otherwise the
    // user's copy, made now from the shipped file when that exists (a fresh
    // file is started otherwise). Empty when the copy cannot be made: nothing
    // is changed then.
    QString PathForChange() const;

private:
    QString shipped_;
    QString user_;
};

// The folders that hold a kind of data file ("MachineSetups/L5 16-20"), in the
// order they are read: the user's folder when it exists, then the add-in's
// own. When the add-in's folder is missing and cannot be made (its parent is
// read-only), the user's folder takes its place.
QStringList DataFolders(const QString& addInFolder, const QString& relativeFolder);

} // namespace marelon
