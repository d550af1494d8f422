#include "base/Folders.h"

#include "base/UniqueFd.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr mode_t kNewFolderMode = 0755;

// What getdents64 fills in: fixed fields, then the name.
struct DirectoryRecord
{
    ino64_t inode;
    off64_t next;
    unsigned short length;
    unsigned char type;
    char name[1];
};

bool isFile(int folder, const DirectoryRecord &entry)
{
    if (entry.type != DT_LNK && entry.type != DT_UNKNOWN) {
        return entry.type == DT_REG;
    }
    struct stat info = {};
    return ::fstatat(folder, entry.name, &info, 0) == 0 && S_ISREG(info.st_mode);
}

// The C library reads 32 KB of entries at once; one file is all that is asked for here.
bool anyFile(int folder)
{
    alignas(DirectoryRecord) std::array<std::byte, 1024> buffer{};
    for (;;) {
        const long filled = ::syscall(SYS_getdents64, folder, buffer.data(), buffer.size());
        if (filled <= 0) {
            return false;
        }
        for (long at = 0; at < filled;) {
            const auto *entry = reinterpret_cast<const DirectoryRecord *>(buffer.data() + at);
            if (isFile(folder, *entry)) {
                return true;
            }
            at += entry->length;
        }
    }
}

} // namespace

bool folderExists(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::error_code makeFolder(const QString &path)
{
    if (::mkdir(QFile::encodeName(path).constData(), kNewFolderMode) == 0) {
        return {};
    }
    const int error = errno;
    return error == EEXIST && folderExists(path) ? std::error_code()
                                                 : std::error_code(error, std::generic_category());
}

bool folderHoldsFile(const QString &path)
{
    const UniqueFd folder(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder && anyFile(folder.get());
}

} // namespace velmora
