// A browser over small camera folders, with a slideshow that only remembers.
#pragma once

#include "support/BrowserHouse.h"
#include "support/FilmDouble.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {

class BrowserTest : public testing::Test
{
protected:
    /// A house whose slideshow the test can look at.
    struct Rooms
    {
        explicit Rooms(FirstCheck storageCheck = FirstCheck::Done)
            : house([](BrowserHouse &) { return std::make_unique<FilmDouble>(); }, storageCheck)
            , film(static_cast<FilmDouble &>(*house.film))
        {
        }

        BrowserHouse house;
        FilmDouble &film;
    };

    [[nodiscard]] BrowserState &state() { return house_.data.state; }

    [[nodiscard]] int selected() { return house_.data.files.ListIndex(); }

    /// Runs a step of the browser's parts to its end.
    void run(QCoro::Task<> task)
    {
        house_.capture.scope.launch(std::move(task));
        house_.finish();
    }

    /// The storage box is being typed into: timers are to stay stopped.
    void focusStorageBox() { house_.capture.storage.beginEdit(); }

    /// The storage folder is gone, and a check has seen it.
    void loseStorage()
    {
        house_.pullStorage();
        house_.capture.storage.testSA();
    }

    Rooms rooms_;
    BrowserHouse &house_ = rooms_.house;
    FilmDouble &film_ = rooms_.film;
    ImageBrowser &browser_ = house_.browser;
    BrowserLists &lists_ = browser_.lists();
    BrowserModes &modes_ = browser_.modes();
    GridActions &grid_ = browser_.grid();
    FileActions &files_ = browser_.files();
};

inline const CameraAddress kCamera{0, 0};

} // namespace velmora::test
