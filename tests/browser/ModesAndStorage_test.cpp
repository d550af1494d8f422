// The walk and the slideshow stand still while the storage folder cannot be used.
#include "browser/BrowserTest.h"

#include <QProperty>

namespace velmora::test {
namespace {

using ModesAndStorage = BrowserTest;

TEST_F(ModesAndStorage, StopTheWalkWhileTheStorageFolderIsGone)
{
    browser_.setMode(Mode::Scan, true);
    loseStorage();
    EXPECT_FALSE(browser_.scanTimer().isActive());
    house_.plugStorage();
    house_.capture.storage.testSA();
    EXPECT_TRUE(browser_.scanTimer().isActive());
}

TEST_F(ModesAndStorage, LeaveTheWalkOffWhenTheStorageFolderComesBackWithoutScan)
{
    loseStorage();
    house_.plugStorage();
    house_.capture.storage.testSA();
    EXPECT_FALSE(browser_.scanTimer().isActive());
}

TEST_F(ModesAndStorage, StopTheWalkWhileTheStorageBoxIsTypedInto)
{
    browser_.setMode(Mode::Scan, true);
    focusStorageBox();
    EXPECT_FALSE(browser_.scanTimer().isActive());
    house_.capture.storage.putInForce();
    EXPECT_TRUE(browser_.scanTimer().isActive());
}

TEST_F(ModesAndStorage, LetTheWalksPeriodRunOnWhenTheStorageFolderIsChecked)
{
    browser_.setMode(Mode::Scan, true);
    int changes = 0; // two for a timer that is started again
    const auto watch = browser_.scanTimer().bindableActive().onValueChanged([&] { ++changes; });
    house_.capture.storage.testSA();
    EXPECT_TRUE(browser_.scanTimer().isActive());
    EXPECT_EQ(changes, 0);
}

TEST_F(ModesAndStorage, StopTheFilmWhileTheStorageFolderIsGone)
{
    film_.play();
    loseStorage();
    EXPECT_FALSE(film_.running);
    house_.plugStorage();
    house_.capture.storage.testSA();
    EXPECT_TRUE(film_.running);
}

TEST_F(ModesAndStorage, LeaveAPausedFilmWhenTheStorageFolderComesBack)
{
    film_.pause();
    loseStorage();
    house_.plugStorage();
    house_.capture.storage.testSA();
    EXPECT_FALSE(film_.running);
}

TEST_F(ModesAndStorage, LeaveARunningFilmAloneWhenTheStorageFolderIsChecked)
{
    film_.play();
    house_.capture.storage.testSA();
    EXPECT_EQ(film_.calls, QStringList());
}

TEST_F(ModesAndStorage, StopTheFilmWhileTheStorageBoxIsTypedInto)
{
    film_.play();
    focusStorageBox();
    EXPECT_FALSE(film_.running);
    house_.capture.storage.putInForce();
    EXPECT_TRUE(film_.running);
}

TEST_F(ModesAndStorage, ShowTheCameraThatWasChosenWhileTheStorageBoxWasTypedInto)
{
    house_.addImages({0, 0}, 3);
    house_.addImages({0, 1}, 5);
    house_.show({0, 0});
    focusStorageBox();
    browser_.chooseCamera(1);
    house_.finish();
    house_.capture.storage.putInForce();
    QCoreApplication::processEvents(); // the browser hears of it from the event loop
    house_.finish();
    EXPECT_EQ(house_.NbI(), QStringLiteral("5 / 5"));
}

TEST_F(ModesAndStorage, StartNoRenamingWhileTheStorageBoxIsTypedInto)
{
    house_.addCamera(kCamera, {QStringLiteral("20060307_140509.jpg")});
    int began = 0;
    QObject::connect(&house_.conformity, &Conformity::began, &house_, [&began] { ++began; });
    browser_.begin();
    for (int turn = 0; turn < 50 && began == 0; ++turn) {
        QCoreApplication::processEvents();
    }
    focusStorageBox();
    house_.clock.advance(std::chrono::seconds{10});
    EXPECT_EQ(began, 1);
    house_.capture.storage.putInForce();
    house_.finish();
    EXPECT_EQ(began, 1);
    EXPECT_TRUE(house_.cells().first().startsWith(QStringLiteral("20060307_140509")));
    EXPECT_NE(house_.cells().first(), QStringLiteral("20060307_140509.jpg"));
}

} // namespace
} // namespace velmora::test
