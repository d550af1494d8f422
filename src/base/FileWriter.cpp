#include "base/FileWriter.h"

#include "base/Folders.h"
#include "base/SystemCalls.h"
#include "base/UniqueFd.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr mode_t kNewFileMode = 0644;

// Writes a working file; on failure nothing of it stays.
std::error_code writeWorkFile(const QByteArray &path, QByteArrayView bytes, mode_t mode)
{
    const UniqueFd file(::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file) {
        return lastError();
    }
    ::fchmod(file.get(), mode); // what open() was given is cut by the process's mask
    const std::error_code error = writeAll(file.get(), bytes);
    if (error) {
        ::unlink(path.constData());
    }
    return error;
}

// A file that another running program is about to name must stay; one of this process is left over.
bool isInUse(const QString &workFile)
{
    const pid_t owner = workFile.section(u'-', 1, 1).toInt();
    return owner > 0 && owner != ::getpid() && (::kill(owner, 0) == 0 || errno == EPERM);
}

QByteArray folderOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.first(std::max<qsizetype>(slash, 1));
}

} // namespace

QByteArray workFileName(const QByteArray &folder)
{
    static unsigned count = 0;
    return folder + "/.velmora-" + QByteArray::number(::getpid()) + '-' +
           QByteArray::number(++count) + ".part";
}

// Where the file system cannot rename without replacing, a hard link never replaces either.
std::error_code renameToNew(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    const std::error_code error = lastError();
    if (error != std::errc::invalid_argument) {
        return error;
    }
    if (::link(from.constData(), to.constData()) != 0) {
        return lastError();
    }
    ::unlink(from.constData());
    return {};
}

StoreResult storeNewFile(const QString &workFolder, const QString &target, QByteArrayView bytes)
{
    const QByteArray path = QFile::encodeName(target);
    const QByteArray work = workFileName(QFile::encodeName(workFolder));
    std::error_code error = writeWorkFile(work, bytes, kNewFileMode);
    if (error == std::errc::no_such_file_or_directory && !makeFolder(workFolder)) {
        error = writeWorkFile(work, bytes, kNewFileMode);
    }
    if (!error) {
        error = renameToNew(work, path);
        if (error) {
            ::unlink(work.constData());
        }
    }
    if (error == std::errc::file_exists) {
        return {StoreOutcome::AlreadyThere, {}};
    }
    return {error ? StoreOutcome::Failed : StoreOutcome::Stored, error};
}

std::error_code replaceFile(const QString &path, QByteArrayView bytes)
{
    const QString followed = QFileInfo(path).canonicalFilePath();
    const QByteArray target = QFile::encodeName(followed.isEmpty() ? path : followed);
    struct stat old = {};
    const mode_t mode = ::stat(target.constData(), &old) == 0 ? old.st_mode & 07777 : kNewFileMode;
    const QByteArray work = workFileName(folderOf(target));
    if (const std::error_code error = writeWorkFile(work, bytes, mode)) {
        return error;
    }
    if (::rename(work.constData(), target.constData()) != 0) {
        const std::error_code error = lastError();
        ::unlink(work.constData());
        return error;
    }
    return {};
}

void clearWorkFiles(const QString &folder)
{
    QDir work(folder);
    const QStringList left = work.entryList({QStringLiteral(".velmora-*.part")},
                                            QDir::Files | QDir::Hidden | QDir::System);
    for (const QString &name : left) {
        if (!isInUse(name)) {
            work.remove(name);
        }
    }
}

} // namespace velmora
