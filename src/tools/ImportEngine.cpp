#include "tools/ImportEngine.h"

namespace velmora {

// Imported images appear as if the browser's camera had been chosen again.
ImportEngine::ImportEngine(CaptureEngine &capture, BrowserEngine &images)
    : import_({capture.settings(), capture.storage(), capture.conformity(), capture.log(),
               capture.problems(), capture.clock(), capture.scope()})
    , loader_(images.pictures(), capture.clock(), capture.scope())
{
    QObject::connect(&import_, &Import::imagesAdded, &images.browser(),
                     &ImageBrowser::chooseCameraAgain);
}

} // namespace velmora
