// What the parts of the capture share.
#pragma once

#include "base/Clock.h"
#include "cameras/CameraPage.h"
#include "cameras/CameraTable.h"
#include "cameras/StorageFolder.h"
#include "capture/CaptureOptions.h"
#include "capture/CaptureStatus.h"
#include "settings/EventLog.h"
#include "settings/Problems.h"

namespace velmora {

/// References to services that outlive the capture.
struct CaptureServices
{
    const CameraTable &table;
    StorageFolder &storage;
    CameraPage &page;
    CaptureOptions &options;
    CaptureStatus &status;
    EventLog &log;
    Problems &problems;
    Clock &clock;
};

} // namespace velmora
