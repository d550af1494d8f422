#include "base/LogRotation.h"

#include <QFile>

#include <cstdio>
#include <sys/stat.h>

namespace velmora {

void rotateLog(const QString &path, const QString &oldPath, qint64 limitBytes)
{
    struct stat info = {};
    const QByteArray native = QFile::encodeName(path);
    if (::stat(native.constData(), &info) == 0 && info.st_size > limitBytes) {
        static_cast<void>(std::rename(native.constData(), QFile::encodeName(oldPath).constData()));
    }
}

} // namespace velmora
