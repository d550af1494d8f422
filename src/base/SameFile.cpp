#include "base/SameFile.h"

namespace velmora {

bool isSameFile(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

bool isFileAt(int file, const QByteArray &path)
{
    struct stat open = {};
    struct stat there = {};
    return ::fstat(file, &open) == 0 && ::lstat(path.constData(), &there) == 0 &&
           isSameFile(open, there);
}

} // namespace velmora
