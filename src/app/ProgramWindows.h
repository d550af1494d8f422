// All windows of the program.
#pragma once

#include "app/WindowOnDemand.h"
#include "ui/Alarm.h"
#include "ui/CalendarWindow.h"
#include "ui/CameraListWindow.h"
#include "ui/CameraSheet.h"
#include "ui/FilmKeep.h"
#include "ui/HealthWindow.h"
#include "ui/Interface.h"
#include "ui/KeyboardFocus.h"
#include "ui/TitleBox.h"
#include "ui/Zoom.h"
#include "ui/fCine.h"
#include "ui/frmImport.h"
#include "ui/planche.h"

namespace velmora {

class BrowserEngine;
class HealthEngine;
class ImportEngine;

/// A member for each window, all hidden at first. Those of the program's own additions are made on
/// demand.
struct ProgramWindows
{
    /// Outlives the windows.
    struct Uses
    {
        CaptureEngine &engine;
        CaptureView &view;
        BrowserEngine &images;
        HealthEngine &health;
        ImportEngine &imports;
        DesktopOpener &opener;
    };

    explicit ProgramWindows(const Uses &uses);

    Interface interface;
    WindowOnDemand<CameraSheet> sheet;
    WindowOnDemand<CameraListWindow> list;
    planche browser;
    fCine film;
    frmImport import;
    Alarm alarm;
    WindowOnDemand<CalendarWindow> calendar;
    WindowOnDemand<HealthWindow> health;
    WindowOnDemand<FilmKeep> filmKeep;
    Zoom zoom;
    frmSplash splash;
    frmQuitte closing;
    KeyboardFocus keyboard;
};

} // namespace velmora
