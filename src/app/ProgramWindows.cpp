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
    , sheet(uses.engine.settings(), uses.view.trial())
    , list(uses.engine.settings())
    , browser({uses.images.browser(), uses.engine.table(), uses.engine.storage(), uses.engine.log(),
               uses.view, uses.images.loader()})
    , film(uses.images.film(), uses.engine.settings(), uses.engine.storage())
    , import(uses.imports.import(), uses.imports.loader())
    , alarm(uses.images.alarm(), uses.images.mail())
    , calendar(uses.images.calendar())
    , health(uses.health.book(), uses.health.watch(), uses.engine.settings())
    , filmKeep(uses.images.filmMaker(), uses.images.film())
{
    film.standAbove(browser);
}

} // namespace velmora
