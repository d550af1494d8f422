// Preloaded before the C library (LD_PRELOAD), makes one of a program's system calls fail: the n-th
// of a kind that concerns a file under a folder. Controlled by the environment:
//   VELMORA_FAIL_UNDER   the folder; calls for other files are passed on and not counted
//   VELMORA_FAIL_CALL    the kind, as in kKinds
//   VELMORA_FAIL_AT      which of them, from 1 on; 0 for none
//   VELMORA_FAIL_AS      the error's number, or "short" for a part of what was asked for
//   VELMORA_FAIL_REPORT  a file that gets the number of calls of each kind at the end
#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

enum Kind {
    Open,
    Read,
    Write,
    Pwrite,
    Rename,
    Link,
    Mkdir,
    Unlink,
    Close,
    Stat,
    Getdents,
    Truncate
};

constexpr std::array kKinds = {"open",  "read",   "write", "pwrite", "rename",   "link",
                               "mkdir", "unlink", "close", "stat",   "getdents", "truncate"};

constexpr int kShort = -1;

struct Plan
{
    std::string_view under;
    int kind = -1;
    long at = 0;
    int error = 0; // or kShort
    std::array<long, kKinds.size()> counts = {};
};

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

// The system's own call, past the ones defined here.
template <typename... Arguments>
long raw(long number, Arguments... arguments)
{
    static const auto call = next<long (*)(long, ...)>("syscall");
    return call(number, arguments...);
}

std::string_view variable(const char *name)
{
    const char *const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

Plan readPlan()
{
    Plan plan;
    plan.under = variable("VELMORA_FAIL_UNDER");
    for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
        plan.kind =
            variable("VELMORA_FAIL_CALL") == kKinds[kind] ? static_cast<int>(kind) : plan.kind;
    }
    plan.at = std::strtol(variable("VELMORA_FAIL_AT").data(), nullptr, 10);
    const std::string_view error = variable("VELMORA_FAIL_AS");
    plan.error = error == "short" ? kShort : std::atoi(error.data());
    return plan;
}

Plan &plan()
{
    static Plan thePlan = readPlan();
    return thePlan;
}

bool isUnder(std::string_view path)
{
    const std::string_view folder = plan().under;
    return !folder.empty() && path.substr(0, folder.size()) == folder;
}

bool isUnder(int fd)
{
    char name[64];
    char path[PATH_MAX];
    std::snprintf(name, sizeof name, "/proc/self/fd/%d", fd);
    const long length = raw(SYS_readlinkat, AT_FDCWD, name, path, sizeof path);
    return length > 0 && isUnder(std::string_view(path, static_cast<std::size_t>(length)));
}

// A name is looked for from a folder that is open, or else by itself.
bool isUnder(int folder, const char *path)
{
    return path != nullptr && path[0] == '/' ? isUnder(std::string_view(path))
                                             : folder != AT_FDCWD && isUnder(folder);
}

// Whether this call is the one. Sets errno then, unless only a part of it is to be done.
bool fails(Kind kind)
{
    Plan &now = plan();
    const bool isTurn = ++now.counts[kind] == now.at && now.kind == kind;
    if (isTurn && now.error != kShort) {
        errno = now.error;
    }
    return isTurn;
}

bool isShort()
{
    return plan().error == kShort;
}

std::size_t part(std::size_t count)
{
    return count > 1 ? count / 2 : count;
}

struct Reporter
{
    ~Reporter()
    {
        const char *const path = std::getenv("VELMORA_FAIL_REPORT");
        if (path == nullptr) {
            return;
        }
        const int file = static_cast<int>(
            raw(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
        for (std::size_t kind = 0; kind < kKinds.size(); ++kind) {
            char line[64];
            const int length =
                std::snprintf(line, sizeof line, "%s %ld\n", kKinds[kind], plan().counts[kind]);
            static_cast<void>(raw(SYS_write, file, line, length));
        }
        raw(SYS_close, file);
    }
} reporter;

int openAs(int folder, const char *path, int flags, mode_t mode)
{
    if (isUnder(folder, path) && fails(Open) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_openat, folder, path, flags, mode));
}

int statAs(int folder, const char *path, struct stat *info, int flags)
{
    const bool counts = path[0] == '\0' ? isUnder(folder) : isUnder(folder, path);
    if (counts && fails(Stat) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_newfstatat, folder, path, info, flags));
}

mode_t modeOf(int flags, va_list list)
{
    const bool given = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return given ? va_arg(list, mode_t) : 0;
}

} // namespace

// Names, parameters and attributes are the C library's.
extern "C" {

#define VELMORA_OPEN(NAME)                                                                         \
    int NAME(const char *path, int flags, ...)                                                     \
    {                                                                                              \
        va_list list;                                                                              \
        va_start(list, flags);                                                                     \
        const mode_t mode = modeOf(flags, list);                                                   \
        va_end(list);                                                                              \
        return openAs(AT_FDCWD, path, flags, mode);                                                \
    }

#define VELMORA_OPENAT(NAME)                                                                       \
    int NAME(int folder, const char *path, int flags, ...)                                         \
    {                                                                                              \
        va_list list;                                                                              \
        va_start(list, flags);                                                                     \
        const mode_t mode = modeOf(flags, list);                                                   \
        va_end(list);                                                                              \
        return openAs(folder, path, flags, mode);                                                  \
    }

VELMORA_OPEN(open)
VELMORA_OPEN(open64)
VELMORA_OPENAT(openat)
VELMORA_OPENAT(openat64)

ssize_t read(int fd, void *to, size_t count)
{
    if (isUnder(fd) && fails(Read)) {
        return isShort() ? raw(SYS_read, fd, to, part(count)) : -1;
    }
    return raw(SYS_read, fd, to, count);
}

ssize_t pread(int fd, void *to, size_t count, off_t offset)
{
    if (isUnder(fd) && fails(Read)) {
        return isShort() ? raw(SYS_pread64, fd, to, part(count), offset) : -1;
    }
    return raw(SYS_pread64, fd, to, count, offset);
}

ssize_t pread64(int fd, void *to, size_t count, off64_t offset)
{
    return pread(fd, to, count, offset);
}

ssize_t write(int fd, const void *from, size_t count)
{
    if (isUnder(fd) && fails(Write)) {
        return isShort() ? raw(SYS_write, fd, from, part(count)) : -1;
    }
    return raw(SYS_write, fd, from, count);
}

ssize_t pwrite(int fd, const void *from, size_t count, off_t offset)
{
    if (isUnder(fd) && fails(Pwrite)) {
        return isShort() ? raw(SYS_pwrite64, fd, from, part(count), offset) : -1;
    }
    return raw(SYS_pwrite64, fd, from, count, offset);
}

ssize_t pwrite64(int fd, const void *from, size_t count, off64_t offset)
{
    return pwrite(fd, from, count, offset);
}

ssize_t copy_file_range(int in, off64_t *inAt, int out, off64_t *outAt, size_t count,
                        unsigned flags)
{
    if (isUnder(out) && fails(Write)) {
        return isShort() ? raw(SYS_copy_file_range, in, inAt, out, outAt, part(count), flags) : -1;
    }
    return raw(SYS_copy_file_range, in, inAt, out, outAt, count, flags);
}

int renameat2(int oldFolder, const char *oldPath, int newFolder, const char *newPath,
              unsigned flags) noexcept
{
    if ((isUnder(oldFolder, oldPath) || isUnder(newFolder, newPath)) && fails(Rename) &&
        !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_renameat2, oldFolder, oldPath, newFolder, newPath, flags));
}

int renameat(int oldFolder, const char *oldPath, int newFolder, const char *newPath) noexcept
{
    return renameat2(oldFolder, oldPath, newFolder, newPath, 0);
}

int rename(const char *oldPath, const char *newPath) noexcept
{
    return renameat2(AT_FDCWD, oldPath, AT_FDCWD, newPath, 0);
}

int linkat(int oldFolder, const char *oldPath, int newFolder, const char *newPath,
           int flags) noexcept
{
    if (isUnder(newFolder, newPath) && fails(Link) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_linkat, oldFolder, oldPath, newFolder, newPath, flags));
}

int link(const char *oldPath, const char *newPath) noexcept
{
    return linkat(AT_FDCWD, oldPath, AT_FDCWD, newPath, 0);
}

int mkdirat(int folder, const char *path, mode_t mode) noexcept
{
    if (isUnder(folder, path) && fails(Mkdir) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_mkdirat, folder, path, mode));
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return mkdirat(AT_FDCWD, path, mode);
}

int unlinkat(int folder, const char *path, int flags) noexcept
{
    if (isUnder(folder, path) && fails(Unlink) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_unlinkat, folder, path, flags));
}

int unlink(const char *path) noexcept
{
    return unlinkat(AT_FDCWD, path, 0);
}

int remove(const char *path) noexcept
{
    return unlinkat(AT_FDCWD, path, 0);
}

// The file is closed all the same, as the system does it.
int close(int fd)
{
    const bool failing = isUnder(fd) && fails(Close) && !isShort();
    const int error = errno;
    const int result = static_cast<int>(raw(SYS_close, fd));
    if (failing) {
        errno = error;
    }
    return failing ? -1 : result;
}

int statx(int folder, const char *__restrict path, int flags, unsigned mask,
          struct statx *__restrict info) noexcept
{
    const bool counts = path[0] == '\0' ? isUnder(folder) : isUnder(folder, path);
    if (counts && fails(Stat) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_statx, folder, path, flags, mask, info));
}

int stat(const char *__restrict path, struct stat *__restrict info) noexcept
{
    return statAs(AT_FDCWD, path, info, 0);
}

int stat64(const char *__restrict path, struct stat64 *__restrict info) noexcept
{
    return statAs(AT_FDCWD, path, reinterpret_cast<struct stat *>(info), 0);
}

int lstat(const char *__restrict path, struct stat *__restrict info) noexcept
{
    return statAs(AT_FDCWD, path, info, AT_SYMLINK_NOFOLLOW);
}

int lstat64(const char *__restrict path, struct stat64 *__restrict info) noexcept
{
    return statAs(AT_FDCWD, path, reinterpret_cast<struct stat *>(info), AT_SYMLINK_NOFOLLOW);
}

int fstat(int fd, struct stat *info) noexcept
{
    return statAs(fd, "", info, AT_EMPTY_PATH);
}

int fstat64(int fd, struct stat64 *info) noexcept
{
    return statAs(fd, "", reinterpret_cast<struct stat *>(info), AT_EMPTY_PATH);
}

int fstatat(int folder, const char *__restrict path, struct stat *__restrict info,
            int flags) noexcept
{
    return statAs(folder, path, info, flags);
}

int fstatat64(int folder, const char *__restrict path, struct stat64 *__restrict info,
              int flags) noexcept
{
    return statAs(folder, path, reinterpret_cast<struct stat *>(info), flags);
}

int ftruncate(int fd, off_t size) noexcept
{
    if (isUnder(fd) && fails(Truncate) && !isShort()) {
        return -1;
    }
    return static_cast<int>(raw(SYS_ftruncate, fd, size));
}

int ftruncate64(int fd, off64_t size) noexcept
{
    return ftruncate(fd, size);
}

struct dirent *readdir(DIR *folder)
{
    if (isUnder(::dirfd(folder)) && fails(Getdents) && !isShort()) {
        return nullptr;
    }
    static const auto call = next<struct dirent *(*)(DIR *)>("readdir");
    return call(folder);
}

struct dirent64 *readdir64(DIR *folder)
{
    return reinterpret_cast<struct dirent64 *>(readdir(folder));
}

DIR *opendir(const char *path)
{
    if (isUnder(AT_FDCWD, path) && fails(Open) && !isShort()) {
        return nullptr;
    }
    static const auto call = next<DIR *(*)(const char *)>("opendir");
    return call(path);
}

// The program reads long folders by this one.
long syscall(long number, ...) noexcept
{
    va_list list;
    va_start(list, number);
    std::array<long, 6> given = {};
    for (long &argument : given) {
        argument = va_arg(list, long);
    }
    va_end(list);
    if (number == SYS_getdents64 && isUnder(static_cast<int>(given[0])) && fails(Getdents)) {
        if (!isShort()) {
            return -1;
        }
    }
    return raw(number, given[0], given[1], given[2], given[3], given[4], given[5]);
}

} // extern "C"
