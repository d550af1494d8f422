// Changes to folders that only the system's own calls can make, or make fast.
#pragma once

#include "base/UniqueFd.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <chrono>
#include <fcntl.h>
#include <stdexcept>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {

inline void check(bool done, const char *what)
{
    if (!done) {
        throw std::runtime_error(what);
    }
}

/// Makes an empty file of any name. path: of the folder, native. name: native bytes.
inline void makeFile(const QString &path, const QByteArray &name)
{
    const UniqueFd folder(::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY));
    check(::mknodat(folder.get(), name.constData(), S_IFREG | 0644, 0) == 0, "no file was made");
}

/// Removes a file whose name is not text, which the temporary folder could not remove itself.
inline void removeFile(const QString &path, const QByteArray &name)
{
    const UniqueFd folder(::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY));
    check(::unlinkat(folder.get(), name.constData(), 0) == 0, "no file was removed");
}

/// Name of one of the images below.
inline QByteArray imageOfMinute(int minute)
{
    const int hours = minute / 60;
    const int days = hours / 24;
    const auto padded = [](int number, qsizetype width) {
        return QByteArray::number(number).rightJustified(width, '0');
    };
    return "2006" + padded(days / 28 + 1, 2) + padded(days % 28 + 1, 2) + '_' +
           padded(hours % 24, 2) + padded(minute % 60, 2) + "000101.jpg";
}

/// Makes images, one a minute from 1 January 2006 on, in months of 28 days; below half a million.
/// They are links to a few files, which file systems create faster than files.
inline void makeImages(const QString &path, int count)
{
    constexpr int kLinksOfAFile = 50'000;
    const UniqueFd folder(::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY));
    QByteArray file;
    for (int i = 0; i < count; ++i) {
        const QByteArray name = imageOfMinute(i);
        if (i % kLinksOfAFile == 0) {
            makeFile(path, name);
            file = name;
            continue;
        }
        check(::linkat(folder.get(), file.constData(), folder.get(), name.constData(), 0) == 0,
              "no image was made");
    }
}

/// Sets a file's modification time, since 1970. path: native.
inline void setModified(const QString &path, std::chrono::seconds time)
{
    const timespec times[2] = {{0, UTIME_OMIT}, {time.count(), 0}};
    check(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0) == 0,
          "no time was set");
}

/// While the object lives, files are accessed with the rights of a user who owns nothing, even
/// where the tests run as root.
class RightsOfNobody
{
public:
    RightsOfNobody()
        : before_(static_cast<uid_t>(::setfsuid(::geteuid() == 0 ? kNobody : ::geteuid())))
    {
    }

    Q_DISABLE_COPY_MOVE(RightsOfNobody)

    ~RightsOfNobody() { ::setfsuid(before_); }

private:
    static constexpr uid_t kNobody = 65534;

    uid_t before_;
};

inline void setRights(const QString &path, mode_t mode)
{
    check(::chmod(QFile::encodeName(path).constData(), mode) == 0, "no rights were set");
}

} // namespace velmora::test
