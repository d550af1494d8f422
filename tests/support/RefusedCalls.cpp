#include "support/RefusedCalls.h"

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

using velmora::test::Call;

struct Refusal
{
    int error = 0;
    int times = 0;
    int passed = 0;
};

std::array<Refusal, 13> refusals; // indexed by the call

Refusal &of(Call call)
{
    return refusals.at(static_cast<std::size_t>(call));
}

bool isRefused(Call call)
{
    Refusal &refusal = of(call);
    if (refusal.error == 0 || refusal.times == 0) {
        return false;
    }
    if (refusal.passed > 0) {
        --refusal.passed;
        return false;
    }
    refusal.times -= refusal.times > 0 ? 1 : 0;
    errno = refusal.error;
    return true;
}

} // namespace

// The program under test finds these before the C library's.
extern "C" int renameat2(int oldFolder, const char *oldPath, int newFolder, const char *newPath,
                         unsigned flags) noexcept
{
    return isRefused(Call::RenameToNew)
               ? -1
               : static_cast<int>(
                     ::syscall(SYS_renameat2, oldFolder, oldPath, newFolder, newPath, flags));
}

extern "C" int linkat(int oldFolder, const char *oldPath, int newFolder, const char *newPath,
                      int flags) noexcept
{
    const bool byHandle = (flags & AT_EMPTY_PATH) != 0;
    const bool ofOpened = byHandle || (flags & AT_SYMLINK_FOLLOW) != 0;
    if ((byHandle && isRefused(Call::LinkHandle)) || (ofOpened && isRefused(Call::LinkOpened))) {
        return -1;
    }
    return static_cast<int>(::syscall(SYS_linkat, oldFolder, oldPath, newFolder, newPath, flags));
}

extern "C" int link(const char *from, const char *to) noexcept
{
    return isRefused(Call::Link)
               ? -1
               : static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}

extern "C" int unlink(const char *path) noexcept
{
    return isRefused(Call::Unlink) ? -1 : ::unlinkat(AT_FDCWD, path, 0);
}

extern "C" int mkdir(const char *path, mode_t mode) noexcept
{
    return isRefused(Call::MakeFolder)
               ? -1
               : static_cast<int>(::syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

extern "C" int flock(int file, int operation) noexcept
{
    return isRefused(Call::Lock) ? -1 : static_cast<int>(::syscall(SYS_flock, file, operation));
}

extern "C" int statfs(const char *path, struct statfs *info) noexcept
{
    return isRefused(Call::StatFileSystem) ? -1
                                           : static_cast<int>(::syscall(SYS_statfs, path, info));
}

extern "C" ssize_t read(int file, void *to, std::size_t bytes)
{
    return isRefused(Call::Read) ? -1 : ::syscall(SYS_read, file, to, bytes);
}

extern "C" ssize_t pread(int file, void *to, std::size_t bytes, off_t offset)
{
    return isRefused(Call::ReadAt) ? -1 : ::syscall(SYS_pread64, file, to, bytes, offset);
}

extern "C" long syscall(long number, ...) noexcept
{
    using SystemCall = long (*)(long, ...);
    static const auto real = reinterpret_cast<SystemCall>(::dlsym(RTLD_NEXT, "syscall"));
    va_list arguments;
    va_start(arguments, number);
    std::array<long, 6> given = {};
    for (long &argument : given) {
        argument = va_arg(arguments, long);
    }
    va_end(arguments);
    if (number == SYS_getdents64 && isRefused(Call::ReadFolder)) {
        return -1;
    }
    return real(number, given[0], given[1], given[2], given[3], given[4], given[5]);
}

extern "C" int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const bool toRead = (flags & O_ACCMODE) == O_RDONLY;
    if (((flags & O_TMPFILE) == O_TMPFILE && isRefused(Call::OpenNameless)) ||
        (toRead && isRefused(Call::OpenToRead))) {
        return -1;
    }
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

namespace velmora::test {

RefusedCall::RefusedCall(Call call, int error, int times, int passed)
    : call_(call)
    , toPass_(passed)
{
    of(call_) = {error, times, passed};
}

int RefusedCall::passed() const
{
    return toPass_ - of(call_).passed;
}

RefusedCall::~RefusedCall()
{
    of(call_) = {};
}

} // namespace velmora::test
