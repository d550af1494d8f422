#include "base/WorkFile.h"

#include "base/BootId.h"
#include "base/FilePath.h"
#include "base/FolderScan.h"
#include "base/Folders.h"
#include "base/LocalDisk.h"
#include "base/NewName.h"
#include "base/SameFile.h"
#include "base/SystemCalls.h"

#include <QByteArrayList>
#include <QFile>

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace velmora {
namespace {

constexpr int kNamesTried = 16;
constexpr qsizetype kTagLength = 8;
const QByteArray kPrefix = QByteArrayLiteral(".velmora-");
const QByteArray kSuffix = QByteArrayLiteral(".part");
constexpr qsizetype kBufferBytes = qsizetype{256} * 1024;
constexpr time_t kOldSeconds = time_t{24} * 60 * 60;

enum class Lock { Mine, Others, Unknown };

const QByteArray &machineTag()
{
    static const QByteArray tag = bootId().left(kTagLength).leftJustified(kTagLength, '0');
    return tag;
}

// A number that no other program hits on, whatever its process number.
QByteArray newNumber()
{
    std::array<char, 12> random{};
    if (::getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) {
        timespec now = {};
        ::clock_gettime(CLOCK_REALTIME, &now);
        std::snprintf(random.data(), random.size(), "%lx", static_cast<unsigned long>(now.tv_nsec));
    }
    return QByteArray(random.data(), random.size()).toHex();
}

QByteArray workName(const QByteArray &end)
{
    return kPrefix + machineTag() + '-' + end + kSuffix;
}

bool isWorkName(QByteArrayView name)
{
    return name.startsWith(kPrefix) && name.endsWith(kSuffix);
}

bool isOfAnotherMachine(QByteArrayView name)
{
    const QByteArrayView tag = name.sliced(kPrefix.size());
    return tag.size() > kTagLength && tag[kTagLength] == '-' && !tag.startsWith(machineTag());
}

Lock tryLock(int file)
{
    if (::flock(file, LOCK_EX | LOCK_NB) == 0) {
        return Lock::Mine;
    }
    return errno == EWOULDBLOCK ? Lock::Others : Lock::Unknown;
}

// Where locks tell nothing, only a file's age shows that no one is writing it any more.
bool isOld(int file)
{
    struct stat info = {};
    return ::fstat(file, &info) == 0 && info.st_mtime < std::time(nullptr) - kOldSeconds;
}

// A file system shared over a network may keep the locks of each machine apart.
bool isConclusive(Lock lock, const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return lock != Lock::Unknown &&
           (!isOfAnotherMachine(QByteArrayView(path).sliced(slash + 1)) || isOnLocalDisk(path));
}

void clearWorkFile(const QByteArray &path)
{
    constexpr int kFlags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    UniqueFd file(::open(path.constData(), O_RDWR | kFlags));
    if (!file) {
        file = UniqueFd(::open(path.constData(), O_RDONLY | kFlags));
    }
    struct stat info = {};
    if (!file || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return;
    }
    const Lock lock = tryLock(file.get());
    const bool isHeld = lock == Lock::Others || (!isConclusive(lock, path) && !isOld(file.get()));
    if (!isHeld && isFileAt(file.get(), path)) {
        ::unlink(path.constData());
    }
}

// A machine's first working file in a folder always has the same name, so that one left by a killed
// run goes when the next is made: nothing else clears the folders of films and of cameras on
// another disk.
QByteArray workPath(const QByteArray &folder, int attempt)
{
    if (attempt > 0) {
        return filePath(folder, workName(newNumber()));
    }
    const QByteArray path = filePath(folder, workName("work"));
    clearWorkFile(path);
    return path;
}

std::error_code copyBytes(int from, int to)
{
    std::vector<char> buffer(kBufferBytes);
    off_t at = 0;
    for (;;) {
        const ssize_t count = readSomeAt(from, buffer.data(), kBufferBytes, at);
        if (count <= 0) {
            return count == 0 ? std::error_code() : lastError();
        }
        if (const std::error_code error = writeAll(to, {buffer.data(), count})) {
            return error;
        }
        at += count;
    }
}

} // namespace

bool meansNoNamelessFiles(std::error_code error)
{
    return error == std::errc::operation_not_supported || error == std::errc::is_a_directory ||
           error == std::errc::invalid_argument || error == std::errc::function_not_supported;
}

WorkFile::WorkFile(const QByteArray &folder, mode_t rights, Naming naming)
    : folder_(folder)
    , rights_(rights)
{
    if (naming != Naming::AtOnce) {
        file_ = UniqueFd(::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, rights));
        error_ = file_ ? std::error_code() : lastError();
    }
    if (naming == Naming::AtOnce || (naming == Naming::WhenWhole && meansNoNamelessFiles(error_))) {
        openNamed();
    }
}

WorkFile WorkFile::inMadeFolder(const QByteArray &folder, mode_t rights, Naming naming)
{
    WorkFile file(folder, rights, naming);
    const bool isMissing = file.error() == std::errc::no_such_file_or_directory;
    return isMissing && !makeFolder(QFile::decodeName(folder)) ? WorkFile(folder, rights, naming)
                                                               : std::move(file);
}

WorkFile::~WorkFile()
{
    dropName();
}

void WorkFile::dropName()
{
    if (hasName() && isFileAt(file_.get(), path_)) {
        ::unlink(path_.constData());
    }
    path_.clear();
}

// A folder that cannot be examined is a failure of its own, which shows when the file is to appear.
bool WorkFile::isOnDiskOf(const QByteArray &folder) const
{
    struct stat mine = {};
    struct stat there = {};
    return ::fstat(file_.get(), &mine) != 0 || ::stat(folder.constData(), &there) != 0 ||
           mine.st_dev == there.st_dev;
}

UniqueFd WorkFile::takeFile()
{
    dropName();
    return std::move(file_);
}

// Between its creation and its locking a file may be taken for one that a killed run left behind:
// then another is made.
void WorkFile::openNamed()
{
    error_ = std::make_error_code(std::errc::file_exists);
    for (int i = 0; i < kNamesTried && error_ == std::errc::file_exists; ++i) {
        const QByteArray path = workPath(folder_, i);
        file_ = UniqueFd(::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, rights_));
        error_ = file_ ? std::error_code() : lastError();
        if (file_ && (tryLock(file_.get()) == Lock::Others || !isFileAt(file_.get(), path))) {
            error_ = std::make_error_code(std::errc::file_exists);
        } else if (file_) {
            path_ = path;
        }
    }
    if (error_ == std::errc::file_exists) { // never to be mistaken for the target file
        error_ = std::make_error_code(std::errc::resource_unavailable_try_again);
    }
}

std::error_code WorkFile::write(QByteArrayView bytes) const
{
    return writeAll(file_.get(), bytes);
}

std::error_code WorkFile::appearAs(const QByteArray &target)
{
    if (error_) {
        return error_;
    }
    const std::error_code error = giveName(target);
    if (error == std::errc::cross_device_link) {
        return appearAsCopy(folderOf(target), target, Naming::WhenWhole);
    }
    const bool isRemoved = hasName() && error && !isFileAt(file_.get(), path_);
    if (isRemoved || (!hasName() && meansNoSuchCall(error))) {
        return appearAsCopy(folder_, target, Naming::AtOnce);
    }
    return error;
}

// A network file system may report only on closing a file that its disk is full.
std::error_code WorkFile::giveName(const QByteArray &target)
{
    if (!hasName()) {
        return linkToNew(file_.get(), target);
    }
    if (::close(::dup(file_.get())) != 0) {
        return lastError();
    }
    if (!isFileAt(file_.get(), path_)) { // another machine may have taken it for a killed run's
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }
    const std::error_code error = renameToNew(path_, target);
    if (!error) {
        path_.clear();
    }
    return error;
}

std::error_code WorkFile::copyTo(const WorkFile &copy) const
{
    return copy.error() ? copy.error() : copyBytes(file_.get(), copy.fd());
}

std::error_code WorkFile::appearAsCopy(const QByteArray &folder, const QByteArray &target,
                                       Naming naming) const
{
    WorkFile copy(folder, rights_, naming);
    const std::error_code failure = copyTo(copy);
    const std::error_code error = failure ? failure : copy.giveName(target);
    const bool needsName = naming == Naming::WhenWhole && !copy.hasName() && !failure;
    return needsName && meansNoSuchCall(error) ? appearAsCopy(folder, target, Naming::AtOnce)
                                               : error;
}

std::error_code WorkFile::replace(const QByteArray &target)
{
    const std::error_code unnamed = error_ || hasName() ? error_ : nameAsWorkFile();
    if (!error_ && meansNoSuchCall(unnamed)) {
        WorkFile copy(folder_, rights_, Naming::AtOnce);
        const std::error_code failure = copyTo(copy);
        return failure ? failure : copy.replace(target);
    }
    if (unnamed || ::close(::dup(file_.get())) != 0 ||
        ::rename(path_.constData(), target.constData()) != 0) {
        return unnamed ? unnamed : lastError();
    }
    path_.clear();
    return {};
}

std::error_code WorkFile::nameAsWorkFile()
{
    static_cast<void>(tryLock(file_.get())); // no one else has it open
    std::error_code error = std::make_error_code(std::errc::file_exists);
    for (int i = 0; i < kNamesTried && error == std::errc::file_exists; ++i) {
        const QByteArray path = workPath(folder_, i);
        error = linkToNew(file_.get(), path);
        path_ = error ? QByteArray() : path;
    }
    return error;
}

void clearWorkFiles(const QString &folder)
{
    QByteArrayList names;
    FolderScan scan(folder);
    const auto collect = [&names](QByteArrayView name) {
        if (isWorkName(name)) {
            names.append(name.toByteArray());
        }
    };
    while (scan.readSome(collect)) {
    }
    for (const QByteArray &name : std::as_const(names)) {
        clearWorkFile(filePath(QFile::encodeName(folder), name));
    }
}

} // namespace velmora
