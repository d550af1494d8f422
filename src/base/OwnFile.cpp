#include "base/OwnFile.h"

#include "base/NewName.h"

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

UniqueFd openExisting(const QByteArray &path)
{
    return UniqueFd(::open(path.constData(), O_RDWR | kOwnFileFlags));
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
