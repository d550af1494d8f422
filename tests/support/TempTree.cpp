#include "support/TempTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace velmora::test {
namespace {

void require(bool ok, const QString &path)
{
    if (!ok) {
        throw std::runtime_error("the temporary tree cannot hold or read " + path.toStdString());
    }
}

} // namespace

TempTree::TempTree()
{
    require(folder_.isValid(), folder_.path());
}

QString TempTree::path(QStringView relative) const
{
    return relative.isEmpty() ? folder_.path() : folder_.filePath(relative.toString());
}

void TempTree::write(QStringView relative, QByteArrayView bytes) const
{
    const QString target = path(relative);
    require(QDir().mkpath(QFileInfo(target).path()), target);
    QFile file(target);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate), target);
    require(file.write(bytes.data(), bytes.size()) == bytes.size() && file.flush(), target);
}

QByteArray TempTree::read(QStringView relative) const
{
    QFile file(path(relative));
    require(file.open(QIODevice::ReadOnly), file.fileName());
    return file.readAll();
}

bool TempTree::exists(QStringView relative) const
{
    const QFileInfo info(path(relative));
    return info.exists() || info.isSymLink();
}

QStringList TempTree::names(QStringView relative, bool wantFolders) const
{
    const QDir folder(path(relative));
    require(folder.exists(), folder.path());
    const QDir::Filters kind = wantFolders ? QDir::Dirs : QDir::Files | QDir::System;
    return folder.entryList(kind | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

QStringList TempTree::files(QStringView relative) const
{
    return names(relative, false);
}

QStringList TempTree::folders(QStringView relative) const
{
    return names(relative, true);
}

void TempTree::makeFolder(QStringView relative) const
{
    require(QDir().mkpath(path(relative)), path(relative));
}

} // namespace velmora::test
