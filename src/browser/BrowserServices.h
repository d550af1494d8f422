// What the parts of the image browser use of the layers below.
#pragma once

#include "capture/CaptureServices.h"
#include "capture/Conformity.h"
#include "capture/Scheduler.h"

namespace velmora {

/// References to services that outlive the browser. Its coroutines run in the scope.
struct BrowserServices
{
    CaptureServices capture;
    Scheduler &scheduler;
    Conformity &conformity;
    TaskScope &scope;
};

} // namespace velmora
