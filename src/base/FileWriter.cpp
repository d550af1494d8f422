#include "base/FileWriter.h"

#include "base/NewName.h"
#include "base/OwnFile.h"
#include "base/SystemCalls.h"
#include "base/WorkFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr mode_t kPrivateMode = 0600;
constexpr mode_t kAllRights = 07777;

// A file stays its owner's, no matter who replaces it, as far as the system allows.
void keepOwner(int file, const struct stat &old)
{
    struct stat mine = {};
    const bool isSame =
        ::fstat(file, &mine) == 0 && mine.st_uid == old.st_uid && mine.st_gid == old.st_gid;
    if (!isSame && ::fchown(file, old.st_uid, old.st_gid) != 0) {
        static_cast<void>(::fchown(file, static_cast<uid_t>(-1), old.st_gid));
    }
}

struct Found
{
    bool exists = false;
    std::error_code refusal;
};

// What is not an ordinary file (a device, a pipe, a folder) is never replaced, nor is a link of
// which nothing is known: what it leads to may be on a disk that is away.
Found examine(const QByteArray &path, struct stat *info)
{
    if (::stat(path.constData(), info) == 0) {
        const auto error =
            S_ISDIR(info->st_mode) ? std::errc::is_a_directory : std::errc::invalid_argument;
        return {true, S_ISREG(info->st_mode) ? std::error_code() : std::make_error_code(error)};
    }
    const std::error_code error = lastError();
    struct stat link = {};
    const bool isNone = ::lstat(path.constData(), &link) != 0 && errno == ENOENT;
    return {false, isNone ? std::error_code() : error};
}

QByteArray placeOf(const QString &path, const Found &found)
{
    return QFile::encodeName(found.exists ? QFileInfo(path).canonicalFilePath() : path);
}

} // namespace

StoreResult storeResult(std::error_code error)
{
    if (error == std::errc::file_exists) {
        return {StoreOutcome::AlreadyThere, {}};
    }
    return {error ? StoreOutcome::Failed : StoreOutcome::Stored, error};
}

StoreResult storeNewFile(const QString &workFolder, const QString &target, QByteArrayView bytes)
{
    WorkFile file = WorkFile::inMadeFolder(QFile::encodeName(workFolder));
    if (file.error()) {
        return {StoreOutcome::Failed, file.error()};
    }
    if (const std::error_code error = file.write(bytes)) {
        return {StoreOutcome::Failed, error};
    }
    return storeResult(file.appearAs(QFile::encodeName(target)));
}

ReplacedPlace placeToReplace(const QString &path)
{
    struct stat old = {};
    const Found found = examine(QFile::encodeName(path), &old);
    return {placeOf(path, found), found.refusal};
}

std::error_code replaceFile(const QString &path, QByteArrayView bytes)
{
    return replaceFile(path, std::span(&bytes, 1));
}

std::error_code replaceFile(const QString &path, std::span<const QByteArrayView> pieces)
{
    struct stat old = {};
    const Found found = examine(QFile::encodeName(path), &old);
    if (found.refusal) {
        return found.refusal;
    }
    const QByteArray target = placeOf(path, found);
    WorkFile file(folderOf(target), kPrivateMode, WorkFile::Naming::AtOnce);
    if (file.error()) {
        return file.error();
    }
    if (found.exists) {
        keepOwner(file.fd(), old);
    } else {
        giveToFolderOwner(file.fd(), target);
    }
    ::fchmod(file.fd(),
             found.exists ? old.st_mode & kAllRights : kPrivateMode); // whatever the mask
    for (const QByteArrayView piece : pieces) {
        if (const std::error_code error = file.write(piece)) {
            return error;
        }
    }
    return file.replace(target);
}

} // namespace velmora
