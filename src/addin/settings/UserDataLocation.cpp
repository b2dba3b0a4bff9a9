#include "addin/settings/UserDataLocation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace marelon {
namespace {

constexpr QFileDevice::Permissions kAnyoneWrites =
    QFileDevice::WriteOwner | QFileDevice::WriteGroup | QFileDevice::WriteOther;

// The user may write it, and its permissions let someone write it.
bool writable(const QFileInfo& info)
{
    return info.isWritable() && info.permissions().testAnyFlags(kAnyoneWrites);
}

// The user's copy of a shipped file, writable by the user whatever the
// shipped file's permissions were.
bool copyForUser(const QString& shipped, const QString& user)
{
    if (!QDir().mkpath(QFileInfo(user).absolutePath()))
        return false;
    if (!QFileInfo(shipped).isFile())
        return true; // a fresh file is started
    if (!QFile::copy(shipped, user))
        return false;
    return QFile::setPermissions(user, QFile::permissions(user) | QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

} // namespace

QString UserDataFolder()
{
    const QString relocated = qEnvironmentVariable("MARELON_USER_DATA_DIR");
    if (!relocated.isEmpty())
        return relocated;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Marelon");
}

bool IsWritableFolder(const QString& folder)
{
    const QFileInfo info(folder);
    return info.isDir() && writable(info);
}

UserDataFile::UserDataFile(const QString& addInFolder, const QString& relativePath)
    : shipped_(QDir(addInFolder).filePath(relativePath)), user_(QDir(UserDataFolder()).filePath(relativePath))
{
}

UserDataFile::UserDataFile(const QString& path) : shipped_(path) {}

bool UserDataFile::HasUserCopy() const
{
    return !user_.isEmpty() && QFileInfo(user_).isFile();
}

QString UserDataFile::ReadPath() const
{
    return HasUserCopy() ? user_ : shipped_;
}

QString UserDataFile::PathForChange() const
{
    if (user_.isEmpty())
        return shipped_;
    if (HasUserCopy())
        return user_;
    const QFileInfo shipped(shipped_);
    if (IsWritableFolder(shipped.absolutePath()) && (!shipped.exists() || writable(shipped)))
        return shipped_;
    return copyForUser(shipped_, user_) ? user_ : QString();
}

QStringList DataFolders(const QString& addInFolder, const QString& relativeFolder)
{
    const QString user = QDir(UserDataFolder()).filePath(relativeFolder);
    const QString shipped = QDir(addInFolder).filePath(relativeFolder);
    QStringList folders;
    if (QFileInfo(user).isDir())
        folders.append(user);
    if (QFileInfo::exists(shipped) || IsWritableFolder(QFileInfo(shipped).absolutePath()))
        folders.append(shipped);
    else if (folders.isEmpty() && QDir().mkpath(user))
        folders.append(user);
    return folders;
}

} // namespace marelon
