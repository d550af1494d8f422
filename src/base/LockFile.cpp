#include "base/LockFile.h"

#include "base/BootId.h"
#include "base/OwnFile.h"
#include "base/SameFile.h"
#include "base/SystemCalls.h"
#include "base/WholeFileLock.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr int kAttempts = 100; // holders may come and go at the same moment
constexpr qsizetype kMostBytes = 4096;
constexpr std::size_t kMostNameBytes = 64;
constexpr int kLooks = 20; // a holder writes the note just after taking the lock
constexpr int kLookAgainMs = 10;

// Where this process counts: the numbers of a container, or of another machine that sees the same
// folder, name other processes here. Empty where the system does not say.
QByteArray countingPlace()
{
    std::array<char, kMostNameBytes> names = {};
    const ssize_t count = ::readlink("/proc/self/ns/pid", names.data(), names.size());
    return count > 0 ? bootId() + ' ' + QByteArray(names.data(), count) : QByteArray();
}

LockHolder readHolder(int file)
{
    QByteArray text(kMostBytes, Qt::Uninitialized);
    const ssize_t count = ::pread(file, text.data(), static_cast<std::size_t>(kMostBytes), 0);
    const QList<QByteArray> lines = text.first(qMax<ssize_t>(count, 0)).split('\n');
    const bool countsHere = lines.value(2).isEmpty() || lines.value(2) == countingPlace();
    return {countsHere ? lines.first().toInt() : 0, lines.value(1)};
}

// A killed holder leaves its number behind, and the next one writes its own just after taking the
// lock; a process of another container is not waited for longer than one that is gone.
LockHolder awaitHolder(int file)
{
    LockHolder holder = readHolder(file);
    for (int look = 1; look < kLooks; ++look) {
        if (holder.process > 0 && (::kill(holder.process, 0) == 0 || errno == EPERM)) {
            break;
        }
        ::poll(nullptr, 0, kLookAgainMs);
        holder = readHolder(file);
    }
    return holder;
}

// If this cannot be written, others do not learn this process's number, but the lock holds.
void tellOthers(int file, const QByteArray &note)
{
    const QByteArray text =
        QByteArray::number(::getpid()) + '\n' + note + '\n' + countingPlace() + '\n';
    static_cast<void>(::ftruncate(file, 0));
    static_cast<void>(::pwrite(file, text.constData(), static_cast<std::size_t>(text.size()), 0));
}

bool isHeld(std::error_code error)
{
    return error == std::errc::resource_unavailable_try_again ||
           error == std::errc::permission_denied;
}

} // namespace

LockFile::LockFile(const QString &path)
    : path_(QFile::encodeName(path))
{
}

LockFile::~LockFile()
{
    if (file_ && isFileAt(file_->get(), path_)) {
        ::unlink(path_.constData()); // while locked: others who opened it check again
    }
}

LockAttempt LockFile::take(const QByteArray &note)
{
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        OwnFile opened = openOwnFile(path_);
        if (!opened.file && errno == ENOENT && attempt + 1 < kAttempts) {
            continue; // removed between the two ways of opening it, or its folder is missing
        }
        if (!opened.file) {
            return {LockOutcome::Impossible, {}, lastError()};
        }
        if (!opened.isTrusted) {
            return {LockOutcome::Impossible, {}, std::make_error_code(std::errc::file_exists)};
        }
        if (!lockWholeFile(opened.file.get())) {
            const std::error_code error = lastError();
            return isHeld(error)
                       ? LockAttempt{LockOutcome::HeldByAnother, awaitHolder(opened.file.get()), {}}
                       : LockAttempt{LockOutcome::Impossible, {}, error};
        }
        // Its last holder may have removed the file between its opening and its locking.
        if (isFileAt(opened.file.get(), path_)) {
            tellOthers(opened.file.get(), note);
            file_.emplace(std::move(opened.file));
            return {LockOutcome::Taken, {}, {}};
        }
    }
    return {LockOutcome::Impossible, {}, std::make_error_code(std::errc::device_or_resource_busy)};
}

std::optional<LockHolder> lockHolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const UniqueFd file(::open(name.constData(), O_RDONLY | kOwnFileFlags));
    const bool isLocked = file && isOwnFile(file.get(), name) && isLockedByAnother(file.get());
    return isLocked ? std::optional(awaitHolder(file.get())) : std::nullopt;
}

} // namespace velmora
