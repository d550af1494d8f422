#include "base/Folders.h"

#include "base/FolderScan.h"
#include "base/NewName.h"
#include "base/SameFile.h"

#include <QFile>

#include <cerrno>
#include <cstddef>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr mode_t kNewFolderMode = 0755;
constexpr std::size_t kFewRecords = 1024; // only one file is wanted

// By exactly this name: a disk may also find a folder by a name with other capital letters.
bool isListed(const QByteArray &path)
{
    const QByteArray name = path.sliced(path.lastIndexOf('/') + 1);
    FolderScan scan(QFile::decodeName(folderOf(path)));
    bool found = false;
    while (!found && scan.readSomeEntries([&](QByteArrayView n) { found = found || n == name; })) {
    }
    return found;
}

} // namespace

bool folderExists(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

// A disk that is mounted by a program may number one folder anew for each name that finds it.
bool isSameFolder(const QString &one, const QString &other)
{
    if (one == other) {
        return true;
    }
    const QByteArray paths[] = {QFile::encodeName(one), QFile::encodeName(other)};
    struct stat first = {};
    struct stat second = {};
    if (::stat(paths[0].constData(), &first) != 0 || ::stat(paths[1].constData(), &second) != 0) {
        return false;
    }
    return isSameFile(first, second) || (paths[0].compare(paths[1], Qt::CaseInsensitive) == 0 &&
                                         !(isListed(paths[0]) && isListed(paths[1])));
}

std::error_code makeFolder(const QString &path)
{
    if (::mkdir(QFile::encodeName(path).constData(), kNewFolderMode) == 0) {
        return {};
    }
    const int error = errno;
    return error == EEXIST && folderExists(path) ? std::error_code()
                                                 : std::error_code(error, std::generic_category());
}

bool isNameRefused(std::error_code error)
{
    return error == std::errc::filename_too_long || error == std::errc::invalid_argument ||
           error == std::errc::illegal_byte_sequence;
}

QString folderRefusal(const QString &path, std::error_code error)
{
    const QByteArray native = QFile::encodeName(path);
    const QByteArray name = native.sliced(native.lastIndexOf('/') + 1);
    if (error == std::errc::filename_too_long) {
        const long most = ::pathconf(folderOf(native).constData(), _PC_NAME_MAX);
        return QStringLiteral("the name of the camera's folder has %1 characters, and the disk "
                              "takes %2 at most. A shorter address gives a shorter name.")
            .arg(name.size())
            .arg(most);
    }
    return isNameRefused(error)
               ? QStringLiteral("the disk does not take the name of the camera's folder")
               : QString::fromStdString(error.message());
}

QString unreadFolderText(std::error_code error)
{
    return QStringLiteral("the folder could not be read to its end: %1")
        .arg(QString::fromStdString(error.message()));
}

bool folderMayHoldFile(const QString &path)
{
    FolderScan scan(path, kFewRecords);
    bool found = false;
    while (!found && scan.readSome([&found](QByteArrayView) { found = true; })) {
    }
    return found || scan.hasFailed();
}

} // namespace velmora
