#include "RefusedCalls.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace {

int renameError = 0;
int unlinkError = 0;

int refuse(int error)
{
    errno = error;
    return -1;
}

} // namespace

// The program under test finds these before those of the C library.
extern "C" int renameat2(int oldFolder, const char *oldPath, int newFolder, const char *newPath,
                         unsigned flags) noexcept
{
    return renameError != 0 ? refuse(renameError)
                            : static_cast<int>(::syscall(SYS_renameat2, oldFolder, oldPath,
                                                         newFolder, newPath, flags));
}

extern "C" int unlink(const char *path) noexcept
{
    const int error = std::exchange(unlinkError, 0);
    return error != 0 ? refuse(error) : ::unlinkat(AT_FDCWD, path, 0);
}

namespace velmora::test {

RefusedRename::RefusedRename(int error)
{
    renameError = error;
}

RefusedRename::~RefusedRename()
{
    renameError = 0;
}

RefusedUnlink::RefusedUnlink(int error)
{
    unlinkError = error;
}

RefusedUnlink::~RefusedUnlink()
{
    unlinkError = 0;
}

} // namespace velmora::test
