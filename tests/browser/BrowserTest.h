// A browser over small camera folders, with a slideshow that only records calls.
#pragma once

#include "browser/BrowserLists.h"
#include "support/BrowserHouse.h"
#include "support/FilmDouble.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {

class BrowserTest : public testing::Test
{
protected:
    /// A house whose slideshow the test can inspect.
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

    /// The lists alone, over the same data, for a step that is not reached through the queue of
    /// actions.
    struct Steps
    {
        explicit Steps(BrowserHouse &house)
            : folders(house.capture.storage, house.capture.scheduler, house.clock, house.data.state)
            , selection(house.data)
            , slice(
                  {house.capture.storage, house.conformity, house.capture.log, house.capture.scope},
                  house.data.files, house.data.sheet, selection)
            , lists(
                  {house.capture.settings, house.capture.log, house.capture.problems, *house.film},
                  house.data, folders, selection, slice)
        {
        }

        CameraFolders folders;
        Selection selection;
        SliceView slice;
        BrowserLists lists;
    };

    [[nodiscard]] BrowserState &state() { return house_.data.state; }

    [[nodiscard]] int selected() { return house_.data.files.ListIndex(); }

    /// Runs a step to its end.
    void run(QCoro::Task<> task)
    {
        house_.capture.scope.launch(std::move(task));
        house_.finish();
    }

    /// The storage box is being typed into: timers are to stay stopped.
    void focusStorageBox() { house_.capture.storage.beginEdit(); }

    /// The storage folder is gone, and a check has noticed.
    void loseStorage()
    {
        house_.pullStorage();
        house_.capture.storage.testSA();
    }

    Rooms rooms_;
    BrowserHouse &house_ = rooms_.house;
    FilmDouble &film_ = rooms_.film;
    ImageBrowser &browser_ = house_.browser;
    Steps steps_{house_};
};

inline const CameraAddress kCamera{0, 0};

} // namespace velmora::test
