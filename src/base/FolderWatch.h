// Tells whether anything has happened in a folder since it was looked at, without looking again.
#pragma once

#include "base/UniqueFd.h"

#include <QHash>
#include <QString>

namespace velmora {

/// Asked, and never tells by itself. Folders are native paths. What happens to a file by another
/// name of it, in another folder, is not seen.
class FolderWatch
{
public:
    /// One beginning of a watch, never the same twice; 0 is none.
    using Ticket = quint64;

    FolderWatch();

    /// Watches the folder from now on; the tickets given for it before are void. 0 when it cannot
    /// be watched, or stands on a file system that others change without this system's knowledge.
    Ticket begin(const QString &folder);

    /// True when the ticket holds and nothing has come, gone or changed in the folder since.
    [[nodiscard]] bool isQuiet(const QString &folder, Ticket ticket);

private:
    struct Watched
    {
        int number = 0; // the system's
        Ticket ticket = 0;
    };

    void takeReports();
    void end(int number);
    void endAll();

    UniqueFd reports_;
    QHash<QString, Watched> folders_;
    Ticket tickets_ = 0;
};

} // namespace velmora
