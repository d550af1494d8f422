// What the parts of the image browser use from the layers below.
#pragma once

#include "base/Clock.h"
#include "cameras/StorageFolder.h"
#include "capture/Conformity.h"
#include "capture/Scheduler.h"

namespace velmora {

/// What the browser uses of the cameras and the system.
struct BrowserCapture
{
    const CameraTable &table;
    StorageFolder &storage;
    EventLog &log;
    Problems &problems;
    Clock &clock;
};

/// References to services that outlive the browser. Its coroutines run in the scope.
struct BrowserServices
{
    BrowserCapture capture;
    Scheduler &scheduler;
    Conformity &conformity;
    TaskScope &scope;
};

/// True when work in folders is allowed: makes a requested check of the storage folder, and stops
/// the timers while its box is being edited.
[[nodiscard]] bool isStorageReady(const BrowserServices &services);

} // namespace velmora
