#include "base/HiddenFile.h"

#include "base/SystemCalls.h"

#include <QFile>
#include <QUuid>

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

HiddenFile::HiddenFile(const QString &folder)
    : folder_(QFile::encodeName(folder))
    , file_(folder_)
{
}

QByteArray HiddenFile::pathForHeir() const
{
    return "/proc/self/fd/" + QByteArray::number(descriptor());
}

qint64 HiddenFile::bytes() const
{
    struct stat info = {};
    return ::fstat(descriptor(), &info) == 0 ? info.st_size : 0;
}

// An existing file is replaced in one step, so that the old or the new one is there at every
// instant; a file without a name needs one for that first.
std::error_code HiddenFile::finish(const QByteArray &target)
{
    const std::error_code error = file_.appearAs(target);
    if (error != std::errc::file_exists) {
        return error;
    }
    const QByteArray named =
        folder_ + "/.velmora-" + QUuid::createUuid().toByteArray(QUuid::Id128) + ".part";
    if (const std::error_code failure = file_.appearAs(named)) {
        return failure;
    }
    if (::rename(named.constData(), target.constData()) != 0) {
        const std::error_code failure = lastError();
        ::unlink(named.constData());
        return failure;
    }
    return {};
}

} // namespace velmora
