// The film button while the folders of the group view are being read.
#include "SelectionTest.h"

#include <functional>

namespace velmora::test {
namespace {

class FilmReading : public SelectionTest
{
protected:
    // Two cameras in the group view, whose folders take several turns to read and get another image
    // in each of them.
    FilmReading()
    {
        house_.house.settings.write(u"Control", u"Camera", 1);
        house_.house.settings.write(u"Control", u"Vitesse", 1000);
        house_.addImages({0, 0}, 3);
        house_.addImages({0, 3}, 3);
        house_.open();
        house_.busy.setCost(std::chrono::milliseconds{10});
        house_.busy.setOnYield([this](int yield) {
            storeImages();
            if (yield == turn_) {
                act_();
            }
        });
        storeImages();
    }

    ~FilmReading() override { house_.busy.setOnYield({}); }

    static constexpr int kMostTurns = 100;

    void storeImages()
    {
        ++stored_;
        for (const CameraAddress camera : {CameraAddress{0, 0}, CameraAddress{0, 3}}) {
            house_.house.putImage(camera, storedName(100 + stored_), "x");
        }
    }

    void mouseOn(const QString &button)
    {
        QTest::mouseClick(&house_.find<QWidget>(button), Qt::LeftButton);
    }

    void pressFilm()
    {
        storeImages();
        mouseOn(QStringLiteral("bFilm"));
        ASSERT_GT(house_.house.scope.running(), 0);
    }

    // Selects that row in each turn in which the list of the first is read for a film.
    void selectDuringReading(CameraAddress other)
    {
        act_ = [this, other] { house_.clickRow(kRowsOfGroup, other.row); };
        for (int turn = 1; turn <= kMostTurns; ++turn) {
            house_.clickRow(kRowsOfGroup, 0);
            turn_ = turn;
            house_.busy.takeYields();
            pressFilm();
            house_.settle();
            if (house_.busy.yields() < turn) {
                return; // it was selected in each turn of the reading
            }
            EXPECT_TRUE(house_.filmWindow.isVisible()) << "selected in turn " << turn;
            EXPECT_EQ(house_.data.files.camera(), other);
            turn_ = 0;
            house_.filmWindow.close();
            house_.settle();
        }
        FAIL() << "the reading takes more turns";
    }

    int stored_ = 0;
    int turn_ = 0;              // of the reading, in which
    std::function<void()> act_; // the user does this
};

TEST_F(FilmReading, SetupOpensNoFilmThatWasStillToBeOpened)
{
    act_ = [this] { mouseOn(QStringLiteral("cSetUp")); };
    for (int turn = 1; turn <= kMostTurns; ++turn) {
        turn_ = turn;
        house_.busy.takeYields();
        pressFilm();
        house_.settle();
        if (house_.busy.yields() < turn) {
            EXPECT_TRUE(
                house_.filmWindow.isVisible()); // it was pressed in each turn of the reading
            return;
        }
        EXPECT_FALSE(house_.filmWindow.isVisible()) << "pressed in turn " << turn;
    }
    FAIL() << "the reading takes more turns";
}

TEST_F(FilmReading, AFilmThatWasClosedIsNotOpenedByAPressBeforeThat)
{
    pressFilm();
    house_.settle();
    ASSERT_TRUE(house_.filmWindow.isVisible());
    pressFilm(); // which is to close it
    house_.filmWindow.close();
    house_.settle();
    EXPECT_FALSE(house_.filmWindow.isVisible());
}

TEST_F(FilmReading, NoFilmOpensOverABrowserThatWasClosedMeanwhile)
{
    pressFilm();
    house_.window.unload();
    house_.settle();
    EXPECT_FALSE(house_.filmWindow.isVisible());
}

TEST_F(FilmReading, EveryPressOfTheFilmButtonCounts)
{
    for (int press = 0; press < 3; ++press) {
        pressFilm();
    }
    house_.settle();
    EXPECT_TRUE(house_.filmWindow.isVisible());
}

TEST_F(FilmReading, AFilmThatIsClosedWhileAClickedCameraIsReadStaysClosed)
{
    act_ = [this] { house_.filmWindow.close(); };
    for (int turn = 1; turn <= kMostTurns; ++turn) {
        turn_ = 0;
        pressFilm();
        house_.settle();
        ASSERT_TRUE(house_.filmWindow.isVisible());
        turn_ = turn;
        storeImages();
        house_.busy.takeYields();
        QTest::mouseClick(&house_.cell(turn % 2 == 0 ? 0 : 3), Qt::LeftButton);
        house_.settle();
        if (house_.busy.yields() < turn) {
            return; // it was closed in each turn of the reading
        }
        EXPECT_FALSE(house_.filmWindow.isVisible()) << "closed in turn " << turn;
    }
    FAIL() << "the reading takes more turns";
}

TEST_F(FilmReading, APressCountsThoughAnotherRowIsSelectedWhileTheFirstIsRead)
{
    selectDuringReading({0, 3});
}

TEST_F(FilmReading, APressCountsThoughARowWithTheSameFolderIsSelectedWhileTheFirstIsRead)
{
    house_.house.addCamera({0, 5}, cameraUrl({0, 0}));
    selectDuringReading({0, 5});
}

} // namespace
} // namespace velmora::test
