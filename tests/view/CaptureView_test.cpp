// What windows show of the capture, and the capture with nothing to show it.
#include "view/CaptureView.h"

#include "support/CaptureHouse.h"
#include "support/CaptureHouseSource.h"
#include "support/LoopbackCameraAnswers.h"
#include "support/RunTask.h"

#include <gtest/gtest.h>

#include <memory>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};

ScriptedReply good()
{
    return {jpeg(2000),
            QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"),
            QStringLiteral("image/jpeg"),
            {},
            {}};
}

class CaptureViewTest : public testing::Test
{
protected:
    CaptureViewTest()
    {
        house_.addCamera(kCamera, cameraUrl(kCamera));
        house_.showGroup(0);
        source_.answer(cameraUrl(kCamera), good());
    }

    [[nodiscard]] LampColour lamp() const { return house_.page.row(kCamera.row).lamp; }

    FakeClock clock_;
    ScriptedSource source_{clock_};
    CaptureHouse house_{source_, clock_};
};

TEST_F(CaptureViewTest, ShowsWhatTheStoreTells)
{
    house_.tick();
    EXPECT_EQ(lamp(), LampColour::Green);
    EXPECT_EQ(house_.page.row(kCamera.row).newImages, 1);
    EXPECT_EQ(house_.status.text(Caption::Activity),
              QStringLiteral("Ajout de 20060307_1405090714.jpg"));
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Wait"));
}

// Between storing an image and recording it, events are let through when the settings are large.
TEST_F(CaptureViewTest, ACameraAnsweringWhileTheStorageBoxIsEditedLeavesThePauseOnShow)
{
    house_.storage.beginEdit();
    Q_EMIT house_.store.cameraAnswered(kCamera, QString());
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Pause"));
}

TEST_F(CaptureViewTest, SaysPauseWhileTheCaptureIsHeldForAReason)
{
    const QString why = QStringLiteral("the disk");
    const Suspension held = house_.scheduler.suspend(why);
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Pause"));
    EXPECT_EQ(house_.status.text(Caption::Standstill), why);
    house_.load(kCamera); // under way when it was held
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Pause"));
    // For renaming, which tells itself what it does.
    house_.scheduler.resume(house_.scheduler.suspend());
    EXPECT_EQ(house_.status.text(Caption::Standstill), why);
    house_.scheduler.resume(held);
    EXPECT_EQ(house_.status.text(Caption::Step), QStringLiteral("Wait"));
    EXPECT_EQ(house_.status.text(Caption::Standstill), QString());
}

TEST_F(CaptureViewTest, SaysWhyACameraFailedUntilItAnswers)
{
    source_.answer(cameraUrl(kCamera), {{}, {}, {}, {}, QStringLiteral("the camera is out")});
    house_.tick();
    EXPECT_EQ(lamp(), LampColour::Red);
    EXPECT_EQ(house_.page.reason(kCamera.row), QStringLiteral("the camera is out"));
    source_.answer(cameraUrl(kCamera), good());
    house_.load(kCamera);
    EXPECT_EQ(lamp(), LampColour::Green);
    EXPECT_EQ(house_.page.reason(kCamera.row), QString());
}

TEST_F(CaptureViewTest, ReadsThePageAgainWhenTheSettingsAreOthers)
{
    house_.table.setUrl(kCamera, u"http://cam/other.jpg");
    house_.engine.adoptSettings();
    EXPECT_EQ(house_.page.row(kCamera.row).url, QStringLiteral("http://cam/other.jpg"));
}

TEST_F(CaptureViewTest, TakesItsAddressesOutOfTheLogWhenItGoes)
{
    auto second = std::make_unique<CaptureView>(house_.engine);
    second.reset();
    house_.tick();
    EXPECT_TRUE(house_.logText().contains(QStringLiteral("Chargement de  0:3")));
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:3")});
}

// A command that comes before the start has loaded anything.
TEST(CaptureViewBeforeTheStart, TakesNoCameraForANewOne)
{
    TempTree tree;
    tree.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\r\n[Liste0]\r\nlst3=http://cam/a.jpg\r\n"
                               "[Groupe0]\r\nSB3=65280\r\n");
    FakeClock clock;
    ScriptedSource source{clock};
    CaptureEngine engine(tree.path(), clock, source);
    CaptureView view(engine);
    engine.adoptSettings();
    engine.storage().load();
    engine.options().load();
    view.page().load();
    engine.storage().testSA();
    engine.start();
    EXPECT_EQ(view.page().remarks().of(kCamera).toStdString(), "");
    runToEnd(engine.close());
}

TEST(CaptureWithoutView, StoresTheSameImage)
{
    TempTree tree;
    tree.makeFolder(u"drives/c/in");
    tree.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\r\nTempo=60\r\n");
    FakeClock clock;
    ScriptedSource source(clock);
    source.answer(cameraUrl(kCamera), good());
    CaptureEngine engine(tree.path(), clock, source);
    engine.table().setUrl(kCamera, cameraUrl(kCamera));
    engine.table().setGroupActive(kCamera.group, true);
    engine.storage().load();
    engine.options().load();
    engine.storage().testSA();
    runToEnd(engine.scheduler().Timer_Timer());
    EXPECT_TRUE(tree.exists(QStringLiteral("drives/c/in/") +
                            engine.table().CameraFolderName(kCamera).remove(u'\\') +
                            QStringLiteral("/20060307_1405090714.jpg")));
    runToEnd(engine.close());
}

} // namespace
} // namespace velmora::test
