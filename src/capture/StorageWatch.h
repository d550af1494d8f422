// Notices when the storage folder goes away or comes back while the program runs.
#pragma once

#include "base/Clock.h"
#include "cameras/StorageFolder.h"

#include <QCoro/QCoroTask>

namespace velmora {

/// A red lamp stops the capture timer, so the return of a disk would otherwise go unseen.
class StorageWatch
{
public:
    StorageWatch(StorageFolder &storage, Clock &clock);

    /// Checks every two seconds until a stop is requested.
    QCoro::Task<> run(std::stop_token stop);

private:
    StorageFolder &storage_;
    Clock &clock_;
};

} // namespace velmora
