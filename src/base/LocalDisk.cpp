#include "base/LocalDisk.h"

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <linux/magic.h>
#include <sys/vfs.h>

namespace velmora {
namespace {

constexpr quint32 kXfs = 0x58465342;
constexpr std::array kLocal{quint32{EXT4_SUPER_MAGIC}, kXfs, quint32{BTRFS_SUPER_MAGIC},
                            quint32{F2FS_SUPER_MAGIC}, quint32{TMPFS_MAGIC}};

} // namespace

bool isOnLocalDisk(const QByteArray &path)
{
    struct statfs info = {};
    return ::statfs(path.constData(), &info) == 0 &&
           std::ranges::find(kLocal, static_cast<quint32>(info.f_type)) != kLocal.end();
}

} // namespace velmora
