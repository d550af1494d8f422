// Lets one writer at a time, across processes, change a settings file.
#pragma once

#include "base/UniqueFd.h"

#include <QString>

namespace velmora {

/// Held while a settings file is read, changed and written, so that two programs do not undo each
/// other's changes. The lock is on a file beside the settings, ".NAME.lock", which only its owner
/// can open and which is kept: a user who may only read the folder cannot hold it. It ends with the
/// process. Not to be used twice at a time in one thread.
class ProfileLock
{
public:
    /// path: native path of the settings file. Waits only briefly for another holder: a stopped
    /// process must not stop the rest. Where no lock can be had, the work goes on without one.
    explicit ProfileLock(const QString &path);

private:
    UniqueFd file_;
};

} // namespace velmora
