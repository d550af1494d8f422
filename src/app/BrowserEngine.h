// Everything that shows stored images, put together without its windows.
#pragma once

#include "app/CaptureEngine.h"
#include "browser/ImageBrowser.h"
#include "pictures/PictureLoader.h"
#include "tools/Slideshow.h"

namespace velmora {

/// The engine given outlives this one, and has been closed before this one goes.
class BrowserEngine
{
public:
    explicit BrowserEngine(CaptureEngine &capture);

    [[nodiscard]] ImageBrowser &browser() { return browser_; }

    [[nodiscard]] Slideshow &film() { return film_; }

    [[nodiscard]] PictureCache &pictures() { return pictures_; }

    [[nodiscard]] PictureLoader &loader() { return loader_; }

private:
    BrowserData data_;
    Slideshow film_;
    ImageBrowser browser_;
    PictureCache pictures_;
    PictureLoader loader_;
};

} // namespace velmora
