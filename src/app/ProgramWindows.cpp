#include "app/ProgramWindows.h"

#include "health/HealthEngine.h"
#include "tools/BrowserEngine.h"
#include "tools/ImportEngine.h"
#include "view/CaptureView.h"

namespace velmora {

ProgramWindows::ProgramWindows(CaptureEngine &engine, CaptureView &view, BrowserEngine &images,
                               HealthEngine &watched, ImportEngine &imports, DesktopOpener &opener)
    : interface(engine, view, opener)
    , sheet(engine.settings(), view.trial())
    , list(engine.settings())
    , browser(images.browser(), engine, view, images.loader())
    , film(images.film(), engine.settings(), engine.storage())
    , import(imports.import(), imports.loader())
    , alarm(images.alarm(), images.mail())
    , calendar(images.calendar())
    , health(watched.book(), watched.watch(), engine.settings())
    , filmKeep(images.filmMaker(), images.film())
{
    film.standAbove(browser);
}

} // namespace velmora
