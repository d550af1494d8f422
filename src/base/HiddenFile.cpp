#include "base/HiddenFile.h"

#include "base/SystemCalls.h"

#include <QFile>

#include <sys/stat.h>

namespace velmora {

HiddenFile::HiddenFile(const QString &folder)
    : file_(QFile::encodeName(folder))
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
// instant.
std::error_code HiddenFile::finish(const QByteArray &target)
{
    const std::error_code error = file_.appearAs(target);
    return error == std::errc::file_exists ? file_.replace(target) : error;
}

} // namespace velmora
