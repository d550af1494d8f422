// Tells whether anything has happened in a folder since it was looked at, without looking again.
#pragma once

#include "base/UniqueFd.h"

#include <QHash>
#include <QString>

namespace velmora {

/// Only answers when asked. Folders are native paths. Changes made to a file through another name,
/// in another folder, are not seen.
class FolderWatch
{
public:
    /// Identifies one watch from its start, never the same twice; 0 for none.
    using Ticket = quint64;

    FolderWatch();

    /// Watches the folder from now on; earlier tickets for it are void. 0 when it cannot be
    /// watched, or is on a file system that others change without this system's knowledge.
    Ticket begin(const QString &folder);

    /// Takes in what the system has reported: true when the ticket is valid and nothing has been
    /// added, removed or changed in the folder since.
    [[nodiscard]] bool confirmQuiet(const QString &folder, Ticket ticket);

private:
    struct Watched
    {
        int number = 0; // assigned by the system
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
