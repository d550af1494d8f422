#include "base/LinkTarget.h"

#include "base/Folders.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace velmora {
namespace {

// A single letter before the colon is a drive.
bool isAddress(const QString &link)
{
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]+:"));
    return scheme.match(link).hasMatch();
}

// Nothing when there is no such drive.
std::optional<QString> pathOf(const QString &link, const NativePaths &paths)
{
    if (link.startsWith(u'/')) {
        return link;
    }
    const bool isWhole = link.startsWith(u'\\') || (link.size() > 1 && link.at(1) == u':');
    return paths.native(isWhole ? link : QStringLiteral("C:\\") + link);
}

TargetState missing(const QString &path, const QString &link)
{
    const bool isFolder = link.endsWith(u'/') || link.endsWith(u'\\');
    return isFolder || !folderExists(QFileInfo(path).path()) ? TargetState::FolderMissing
                                                             : TargetState::FileMissing;
}

TargetState stateOf(const QString &path, const QString &link)
{
    if (::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), R_OK, AT_EACCESS) == 0) {
        return TargetState::Reachable;
    }
    return errno == EACCES ? TargetState::NoPermission : missing(path, link);
}

} // namespace

LinkTarget linkTarget(const QString &link, const NativePaths &paths)
{
    if (link.trimmed().isEmpty()) {
        return {{}, TargetState::FileMissing};
    }
    const QUrl address(link);
    if (isAddress(link) && !address.isLocalFile()) {
        return {link, TargetState::Reachable};
    }
    const std::optional<QString> path =
        address.isLocalFile() ? address.toLocalFile() : pathOf(link, paths);
    return path ? LinkTarget{*path, stateOf(*path, link)}
                : LinkTarget{{}, TargetState::FolderMissing};
}

} // namespace velmora
