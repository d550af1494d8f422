#include "base/BootId.h"

#include <QFile>

namespace velmora {

QByteArray bootId()
{
    QFile file(QStringLiteral("/proc/sys/kernel/random/boot_id"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
}

} // namespace velmora
