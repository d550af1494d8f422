#include "app/ProgramWindows.h"

#include "health/HealthEngine.h"
#include "tools/BrowserEngine.h"
#include "tools/ImportEngine.h"
#include "view/CaptureView.h"

namespace velmora {

ProgramWindows::ProgramWindows(const Uses &uses)
    : interface({uses.engine.timer(), uses.engine.table(), uses.engine.storage(),
                 uses.engine.options(), uses.engine.debugSwitch(), uses.engine.log(), uses.view,
                 uses.opener})
    , sheet([uses] {
        return std::make_unique<CameraSheet>(uses.engine.settings(), uses.view.trial());
    })
    , list([uses] { return std::make_unique<CameraListWindow>(uses.engine.settings()); })
    , browser({uses.images.browser(), uses.engine.table(), uses.engine.storage(), uses.engine.log(),
               uses.view, uses.images.loader()})
    , film(uses.images.film(), uses.engine.settings(), uses.engine.storage())
    , import(uses.imports.import(), uses.imports.loader())
    , alarm(uses.images.alarm(), uses.images.mail())
    , calendar([uses] { return std::make_unique<CalendarWindow>(uses.images.calendar()); })
    , health([uses] {
        return std::make_unique<HealthWindow>(uses.health.book(), uses.health.watch(),
                                              uses.engine.settings());
    })
    , filmKeep([uses] {
        return std::make_unique<FilmKeep>(uses.images.filmMaker(), uses.images.film());
    })
{
    film.standAbove(browser);
}

} // namespace velmora
