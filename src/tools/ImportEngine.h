// Everything that imports images, put together without its window.
#pragma once

#include "tools/BrowserEngine.h"
#include "tools/Import.h"

namespace velmora {

/// The engines given outlive this one, and the capture has been closed before this one goes.
class ImportEngine
{
public:
    ImportEngine(CaptureEngine &capture, BrowserEngine &images);

    [[nodiscard]] Import &import() { return import_; }

    [[nodiscard]] PictureLoader &loader() { return loader_; }

private:
    Import import_;
    PictureLoader loader_;
};

} // namespace velmora
