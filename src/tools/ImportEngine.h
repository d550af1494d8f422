// All the parts that import images, put together without their window.
#pragma once

#include "tools/BrowserEngine.h"
#include "tools/Import.h"

namespace velmora {

/// The engines passed in outlive this object, and the capture is closed before it is destroyed.
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
