#include "base/HiddenFile.h"

#include "base/NewName.h"
#include "base/SystemCalls.h"

#include <QFile>

#include <sys/stat.h>

namespace velmora {

HiddenFile::HiddenFile(const QString &target)
    : place_(placeToReplace(target))
    , file_(folderOf(place_.path))
{
}

QByteArray HiddenFile::pathForHeir() const
{
    return descriptorPath(descriptor());
}

qint64 HiddenFile::bytes() const
{
    struct stat info = {};
    return ::fstat(descriptor(), &info) == 0 ? info.st_size : 0;
}

// An existing file is replaced in one step, so that the old or the new one is there at every
// instant. What is there may have come since this file was made.
std::error_code HiddenFile::finish()
{
    const std::error_code error = file_.appearAs(place_.path);
    if (error != std::errc::file_exists) {
        return error;
    }
    const auto [path, refusal] = placeToReplace(QFile::decodeName(place_.path));
    return refusal ? refusal : file_.replace(path);
}

} // namespace velmora
