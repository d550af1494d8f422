#include "base/OwnFile.h"

#include "base/NewName.h"
#include "base/SystemCalls.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

constexpr mode_t kOwnerAlone = 0600;

void shutOthersOut(int file)
{
    struct stat info = {};
    if (::fstat(file, &info) == 0 && (info.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        static_cast<void>(::fchmod(file, kOwnerAlone));
    }
}

// Opened without any rights to it, so that what is changed is certain to be what was examined; the
// system has no other way to change the rights of a file so opened.
bool takeBackRights(const QByteArray &path)
{
    const UniqueFd file(::open(path.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    const QByteArray handle = descriptorPath(file.get());
    return file && isOwnFile(file.get(), path) && ::chmod(handle.constData(), kOwnerAlone) == 0;
}

// A file of this user may shut even him out: another program's mask may have been so strange.
UniqueFd openExisting(const QByteArray &path)
{
    constexpr int kFlags = O_RDWR | kOwnFileFlags;
    UniqueFd file(::open(path.constData(), kFlags));
    const int error = errno;
    if (!file && error == EACCES && takeBackRights(path)) {
        return UniqueFd(::open(path.constData(), kFlags));
    }
    errno = error;
    return file;
}

} // namespace

void giveToFolderOwner(int file, const QByteArray &path)
{
    struct stat folder = {};
    if (::geteuid() == 0 && ::stat(folderOf(path).constData(), &folder) == 0) {
        static_cast<void>(::fchown(file, folder.st_uid, folder.st_gid));
    }
}

bool isOwnFile(int file, const QByteArray &path)
{
    struct stat info = {};
    struct stat folder = {};
    if (::fstat(file, &info) != 0 || !S_ISREG(info.st_mode) || info.st_nlink > 1) {
        return false;
    }
    return info.st_uid == ::geteuid() ||
           (::stat(folderOf(path).constData(), &folder) == 0 && folder.st_uid == info.st_uid);
}

// A file just made is this process's own, whatever owner its file system gives it. Usually it
// exists, so that is tried first.
OwnFile openOwnFile(const QByteArray &path)
{
    UniqueFd found = openExisting(path);
    if (!found && errno == ENOENT) {
        UniqueFd made(
            ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | kOwnFileFlags, kOwnerAlone));
        if (made) {
            static_cast<void>(::fchmod(made.get(), kOwnerAlone)); // whatever the mask
            giveToFolderOwner(made.get(), path);
            return {std::move(made), true};
        }
        found = errno == EEXIST ? openExisting(path) : std::move(made);
    }
    const int error = errno;
    const bool trusted = found && isOwnFile(found.get(), path);
    if (trusted) {
        shutOthersOut(found.get());
    }
    errno = error;
    return {std::move(found), trusted};
}

} // namespace velmora
