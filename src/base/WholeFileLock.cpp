#include "base/WholeFileLock.h"

#include <fcntl.h>

namespace velmora {
namespace {

struct flock wholeFile()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

bool lockWholeFile(int file)
{
    struct flock lock = wholeFile();
    return ::fcntl(file, F_OFD_SETLK, &lock) == 0;
}

bool isLockedByAnother(int file)
{
    struct flock lock = wholeFile();
    return ::fcntl(file, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

} // namespace velmora
