// One writer of a settings file at a time, across processes.
#pragma once

#include "base/UniqueFd.h"

#include <QString>

namespace velmora {

/// Held while a settings file is read, changed and written, so that two programs do not undo each
/// other's changes. It stands on the file's folder, needs no file of its own, and ends with the
/// process. Not for use twice at a time in one thread.
class ProfileLock
{
public:
    /// path: native path of the settings file. Waits for another holder, but no longer than a
    /// moment: one that is stopped must not stop the rest. Where the file system has no locks, the
    /// work goes on without.
    explicit ProfileLock(const QString &path);

private:
    UniqueFd folder_;
};

} // namespace velmora
