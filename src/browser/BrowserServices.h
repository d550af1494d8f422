// What the parts of the image browser use of the layers below.
#pragma once

#include "base/Clock.h"
#include "cameras/StorageFolder.h"
#include "capture/Conformity.h"
#include "capture/Scheduler.h"

namespace velmora {

/// What the browser uses of the cameras and of the system.
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

/// True when folders may be worked in: makes a check of the storage folder that was asked for, and
/// stops the timers while its box is being edited.
[[nodiscard]] bool isStorageReady(const BrowserServices &services);

} // namespace velmora
