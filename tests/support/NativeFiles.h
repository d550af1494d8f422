// Files by their native names, which need not be text, and a process's rights to them.
#pragma once

#include "support/WithoutRootRights.h"

#include <QByteArray>
#include <QByteArrayList>

#include <algorithm>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {

inline void requireSystem(bool ok, const QByteArray &path)
{
    if (!ok) {
        throw std::runtime_error("the test cannot prepare " + path.toStdString());
    }
}

inline void setModified(const QByteArray &path, std::time_t when)
{
    const timespec times[] = {{when, 0}, {when, 0}};
    requireSystem(::utimensat(AT_FDCWD, path.constData(), times, AT_SYMLINK_NOFOLLOW) == 0, path);
}

inline void writeNative(const QByteArray &path, const QByteArray &bytes, std::time_t when)
{
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    requireSystem(file >= 0, path);
    const bool written =
        ::write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size();
    ::close(file);
    requireSystem(written, path);
    setModified(path, when);
}

/// Another name for a file: many are made much faster than as many files.
inline void addName(const QByteArray &file, const QByteArray &path)
{
    requireSystem(::link(file.constData(), path.constData()) == 0, path);
}

/// Names of everything in a folder, sorted.
inline QByteArrayList nativeNames(const QByteArray &folder)
{
    QByteArrayList names;
    DIR *const open = ::opendir(folder.constData());
    requireSystem(open != nullptr, folder);
    while (const dirent *const entry = ::readdir(open)) {
        names.append(entry->d_name);
    }
    ::closedir(open);
    names.removeAll(".");
    names.removeAll("..");
    std::sort(names.begin(), names.end());
    return names;
}

/// A folder on another disk than this one: of those in memory, as far as they are.
inline QByteArray folderOnAnotherDisk(const QByteArray &folder)
{
    const QByteArray memory = "/dev/shm";
    struct stat there = {};
    struct stat here = {};
    const bool isKnown =
        ::stat(memory.constData(), &there) == 0 && ::stat(folder.constData(), &here) == 0;
    return isKnown && there.st_dev != here.st_dev ? memory : QByteArray("/run");
}

} // namespace velmora::test
