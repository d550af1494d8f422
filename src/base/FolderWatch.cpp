#include "base/FolderWatch.h"

#include "base/LocalDisk.h"

#include <QFile>

#include <cstring>
#include <sys/inotify.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr qsizetype kMost = 128; // folders; the system bounds them for each user
// Every change to a name, to a file's contents or to its times; one report ends a watch.
constexpr quint32 kChanges = IN_CREATE | IN_DELETE | IN_MOVE | IN_MODIFY | IN_CLOSE_WRITE |
                             IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONESHOT | IN_ONLYDIR;
constexpr std::size_t kReportBytes = 4096; // several reports, including one with the longest name

} // namespace

FolderWatch::FolderWatch()
    : reports_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
}

FolderWatch::Ticket FolderWatch::begin(const QString &folder)
{
    const QByteArray path = QFile::encodeName(folder);
    if (!reports_ || !isOnLocalDisk(path)) {
        return 0;
    }
    if (folders_.size() >= kMost && !folders_.contains(folder)) {
        endAll();
    }
    const int number = ::inotify_add_watch(reports_.get(), path.constData(), kChanges);
    if (number < 0) {
        folders_.remove(folder);
        return 0;
    }
    folders_.insert(folder, {number, ++tickets_});
    return tickets_;
}

bool FolderWatch::confirmQuiet(const QString &folder, Ticket ticket)
{
    takeReports();
    const auto watched = folders_.constFind(folder);
    return ticket != 0 && watched != folders_.constEnd() && watched->ticket == ticket;
}

void FolderWatch::takeReports()
{
    alignas(inotify_event) std::array<char, kReportBytes> buffer = {};
    ssize_t filled = 0;
    while ((filled = ::read(reports_.get(), buffer.data(), buffer.size())) > 0) {
        inotify_event report = {};
        for (ssize_t at = 0; at < filled; at += static_cast<ssize_t>(sizeof(report) + report.len)) {
            std::memcpy(&report, buffer.data() + at, sizeof(report));
            if ((report.mask & IN_Q_OVERFLOW) != 0) {
                endAll();
            } else {
                end(report.wd);
            }
        }
    }
}

// Two paths may lead to the same folder.
void FolderWatch::end(int number)
{
    folders_.removeIf([number](auto entry) { return entry.value().number == number; });
}

void FolderWatch::endAll()
{
    for (const Watched &watched : std::as_const(folders_)) {
        ::inotify_rm_watch(reports_.get(), watched.number);
    }
    folders_.clear();
}

} // namespace velmora
