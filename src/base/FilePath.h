// The path of a file, from its folder's and its name.
#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

/// Both native, as text or as the system's bytes.
[[nodiscard]] inline QString filePath(const QString &folder, const QString &name)
{
    return folder + u'/' + name;
}

[[nodiscard]] inline QByteArray filePath(const QByteArray &folder, const QByteArray &name)
{
    return folder + '/' + name;
}

} // namespace velmora
