#include "base/NewName.h"

#include "base/SameFile.h"
#include "base/SystemCalls.h"
#include "base/UniqueFd.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kStep = 1ms; // another run of the program holds the lock for much less
constexpr int kMostSteps = 5;

std::error_code result(int returned)
{
    return returned == 0 ? std::error_code() : lastError();
}

// A network file system may lose the answer, ask again, and be told that the name is taken: by the
// file itself.
bool isTakenByItself(const struct stat &file, const QByteArray &to)
{
    struct stat there = {};
    return ::lstat(to.constData(), &there) == 0 && isSameFile(file, there);
}

std::error_code secondName(const QByteArray &from, const QByteArray &to)
{
    struct stat file = {};
    if (::lstat(from.constData(), &file) != 0) {
        return lastError();
    }
    if (isTakenByItself(file, to)) { // before anything was tried: a killed run's two names, or more
        return file.st_nlink == 2 ? std::error_code()
                                  : std::make_error_code(std::errc::file_exists);
    }
    const std::error_code error = result(::link(from.constData(), to.constData()));
    return error == std::errc::file_exists && isTakenByItself(file, to) ? std::error_code() : error;
}

// If the old name cannot be removed, the file stays as it was.
std::error_code renameByLink(const QByteArray &from, const QByteArray &to)
{
    if (const std::error_code error = secondName(from, to)) {
        return error;
    }
    const std::error_code error = result(::unlink(from.constData()));
    if (error) {
        ::unlink(to.constData());
    }
    return error;
}

// Any program may hold a folder's lock, for as long as it likes: then, as where there are no locks,
// the check must do.
void lockBriefly(int folder)
{
    for (int step = 0; step < kMostSteps; ++step) {
        if (::flock(folder, LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR)) {
            return;
        }
        std::this_thread::sleep_for(kStep);
    }
}

std::error_code renameAfterALook(const QByteArray &from, const QByteArray &to)
{
    const UniqueFd folder(
        ::open(folderOf(to).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK));
    if (folder) {
        lockBriefly(folder.get());
    }
    struct stat there = {};
    if (::lstat(to.constData(), &there) == 0) {
        return std::make_error_code(std::errc::file_exists);
    }
    return errno == ENOENT ? result(::rename(from.constData(), to.constData())) : lastError();
}

} // namespace

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(std::max<qsizetype>(slash, 1));
}

bool meansNoSuchCall(std::error_code error)
{
    return error == std::errc::invalid_argument || error == std::errc::function_not_supported ||
           error == std::errc::operation_not_supported ||
           error == std::errc::operation_not_permitted || error == std::errc::too_many_links;
}

std::error_code renameToNew(const QByteArray &from, const QByteArray &to)
{
    std::error_code error =
        result(::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE));
    if (meansNoSuchCall(error)) {
        error = renameByLink(from, to);
    }
    return meansNoSuchCall(error) ? renameAfterALook(from, to) : error;
}

// Older systems let only administrators name a file by its handle; the other way needs /proc.
std::error_code linkToNew(int file, const QByteArray &to)
{
    if (::linkat(file, "", AT_FDCWD, to.constData(), AT_EMPTY_PATH) == 0) {
        return {};
    }
    if (errno != ENOENT && errno != EPERM) {
        return lastError();
    }
    const QByteArray handle = descriptorPath(file);
    const std::error_code error =
        result(::linkat(AT_FDCWD, handle.constData(), AT_FDCWD, to.constData(), AT_SYMLINK_FOLLOW));
    const bool hasNoHandle = error == std::errc::no_such_file_or_directory &&
                             ::access(handle.constData(), F_OK) != 0 && errno == ENOENT;
    return hasNoHandle ? std::make_error_code(std::errc::function_not_supported) : error;
}

} // namespace velmora
