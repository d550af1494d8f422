#include "base/Folders.h"

#include "base/FolderScan.h"

#include <QFile>

#include <cerrno>
#include <cstddef>
#include <sys/stat.h>

namespace velmora {
namespace {

constexpr mode_t kNewFolderMode = 0755;
constexpr std::size_t kFewRecords = 1024; // one file is all that is asked for

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
    FolderScan scan(path, kFewRecords);
    bool found = false;
    while (!found && scan.readSome([&found](QByteArrayView) { found = true; })) {
    }
    return found;
}

} // namespace velmora
