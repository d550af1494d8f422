// Tells which files of a folder are opened.
#pragma once

#include "support/FolderChanges.h"

#include <QStringList>

#include <array>
#include <sys/inotify.h>

namespace velmora::test {

/// From when it is made, for the files in one folder, a native path, not in those below.
class ReadWatch
{
public:
    explicit ReadWatch(const QString &folder)
    {
        check(::inotify_add_watch(reports_.get(), QFile::encodeName(folder).constData(), IN_OPEN) >=
                  0,
              "the folder cannot be watched");
    }

    /// Names of the files opened since it was asked last, a name for each time.
    QStringList opened()
    {
        QStringList names;
        alignas(inotify_event) std::array<char, 4096> reports{};
        for (ssize_t size = 0;
             (size = ::read(reports_.get(), reports.data(), reports.size())) > 0;) {
            for (ssize_t at = 0; at < size;) {
                const auto *const report =
                    reinterpret_cast<const inotify_event *>(reports.data() + at);
                if ((report->mask & IN_ISDIR) == 0) {
                    names.append(QFile::decodeName(report->name));
                }
                at += static_cast<ssize_t>(sizeof(inotify_event) + report->len);
            }
        }
        return names;
    }

private:
    UniqueFd reports_{::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
};

} // namespace velmora::test
