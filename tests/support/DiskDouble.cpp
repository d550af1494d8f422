#include "support/DiskDouble.h"

#include <dlfcn.h>
#include <sys/statvfs.h>

namespace {

struct Room
{
    qint64 allBytes = 0;
    velmora::test::DiskDouble::Free free;
};

Room &room()
{
    static Room room;
    return room;
}

} // namespace

// The program under test finds it before the C library's.
extern "C" int statvfs(const char *path, struct statvfs *info) noexcept
{
    using Real = int (*)(const char *, struct statvfs *);
    static const auto real = reinterpret_cast<Real>(::dlsym(RTLD_NEXT, "statvfs"));
    const int result = real(path, info);
    if (result == 0 && room().free) {
        info->f_frsize = 1;
        info->f_blocks = static_cast<fsblkcnt_t>(room().allBytes);
        info->f_bfree = info->f_bavail = static_cast<fsblkcnt_t>(room().free());
    }
    return result;
}

namespace velmora::test {

DiskDouble::DiskDouble(qint64 allBytes, Free free)
{
    room() = {allBytes, std::move(free)};
}

DiskDouble::~DiskDouble()
{
    room() = {};
}

} // namespace velmora::test
