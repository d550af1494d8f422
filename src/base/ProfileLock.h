// One writer of a settings file at a time, across processes.
#pragma once

#include "base/UniqueFd.h"

#include <QString>

namespace velmora {

/// Held while a settings file is read, changed and written, so that two programs do not undo each
/// other's changes. It stands on a file beside the settings, ".NAME.lock", which its owner alone
/// can open and which stays: whoever may only read the folder cannot hold it. It ends with the
/// process. Not for use twice at a time in one thread.
class ProfileLock
{
public:
    /// path: native path of the settings file. Waits for another holder, but no longer than a
    /// moment: one that is stopped must not stop the rest. Where no lock can be had, the work goes
    /// on without.
    explicit ProfileLock(const QString &path);

    [[nodiscard]] bool isHeld() const { return isHeld_; }

private:
    UniqueFd file_;
    bool isHeld_ = false;
};

} // namespace velmora
