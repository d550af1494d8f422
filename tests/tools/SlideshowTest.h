// A slideshow over the browser's list, ticked by hand.
#pragma once

#include "support/BrowserHouse.h"
#include "tools/Slideshow.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {

class SlideshowTest : public testing::Test
{
protected:
    /// Shows a camera with this many images and opens the slideshow on it with its button. Its own
    /// timer does not interfere: it would wait for a second.
    void open(int count)
    {
        house_.store(u"Vitesse", u"1000");
        house_.addImages(kCamera, count);
        house_.show(kCamera);
        pressFilm();
    }

    void pressFilm()
    {
        browser_.toggleFilm();
        house_.finish();
    }

    void tick(int times = 1)
    {
        for (int i = 0; i < times; ++i) {
            film_.cine_Timer();
        }
    }

    /// The same, playing only part of the images.
    void openAt(int count, int start, int end)
    {
        open(count);
        film_.sFin_Change(end);
        film_.sDebut_Change(start);
    }

    [[nodiscard]] const FilmFace &face() const { return film_.face(); }

    [[nodiscard]] bool isRunning() const { return film_.isRunning(); }

    inline static const CameraAddress kCamera{0, 0};

    BrowserHouse house_{[](BrowserHouse &house) {
        return std::make_unique<Slideshow>(house.capture.settings, house.capture.log, house.data);
    }};
    Slideshow &film_ = static_cast<Slideshow &>(*house_.film);
    ImageBrowser &browser_ = house_.browser;
};

} // namespace velmora::test
