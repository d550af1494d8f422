// Why a camera gives no picture, shown where the user looks: in its row of the main window and in
// the browser.
#include "BrowserWindowHouse.h"
#include "WindowHouse.h"
#include "admin/StatusReport.h"
#include "support/TypedAddress.h"
#include "ui/ElideLabel.h"

#include <QTabBar>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const ScriptedReply kOut{{}, {}, {}, {}, QStringLiteral("the camera is out")};

ScriptedReply picture(const QByteArray &body)
{
    return {body,
            QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"),
            QStringLiteral("image/jpeg"),
            {},
            {}};
}

class RowReasons : public testing::Test
{
protected:
    RowReasons()
    {
        house_.house.addCamera(kCamera, cameraUrl(kCamera));
        house_.selectTab(1);
        house_.selectTab(0);
        house_.source.answer(cameraUrl(kCamera), kOut);
    }

    QString line() { return house_.find<QLabel>(QStringLiteral("lReason")).text(); }

    QString tip(int row) { return house_.find<Lamp>(QStringLiteral("SB%1").arg(row)).toolTip(); }

    QString message() { return house_.find<QLabel>(QStringLiteral("lMessage")).text(); }

    static constexpr CameraAddress kCamera{0, 2};
    WindowHouse house_;
};

TEST_F(RowReasons, StandInTheTipOfTheLamp)
{
    house_.house.load(kCamera);
    EXPECT_EQ(tip(2), QStringLiteral("the camera is out"));
    EXPECT_EQ(tip(5), QString());
    house_.source.answer(cameraUrl(kCamera), picture(pictureBytes(Qt::red)));
    house_.house.load(kCamera);
    EXPECT_EQ(tip(2), QString());
}

// The lamp of a row that was empty is red already.
TEST_F(RowReasons, BlameNoCameraThatWasNotFetchedYetInTheStatusEither)
{
    house_.type(QStringLiteral("Source1"), QStringLiteral("http://cam/new.jpg"));
    house_.leaveBox();
    EXPECT_EQ(house_.stored(u"Groupe0", u"SB1"), QStringLiteral("255"));
    EXPECT_EQ(tip(1), QStringLiteral("not fetched yet"));
    const TempTree &tree = house_.house.tree;
    const ProgramStatus status = programStatus(house_.house.engine.settings(),
                                               NativePaths(tree.path()), 4711, ProgramReport());
    EXPECT_EQ(status.cameras.front().camera, (CameraAddress{0, 1}));
    EXPECT_EQ(status.cameras.front().state, CameraState::Unknown);
    EXPECT_TRUE(isWell(status));
}

TEST_F(RowReasons, StandInALineForTheRowThatIsClicked)
{
    house_.house.load(kCamera);
    EXPECT_EQ(line(), QString());
    house_.click(QStringLiteral("SB2"));
    EXPECT_EQ(line(), QStringLiteral("Camera 0:2: the camera is out"));
    house_.click(QStringLiteral("lNew5"));
    EXPECT_EQ(line(), QString());
}

TEST_F(RowReasons, FollowTheFocus)
{
    house_.house.load(kCamera);
    house_.find<QWidget>(QStringLiteral("EffM2")).setFocus(Qt::TabFocusReason);
    EXPECT_EQ(line(), QStringLiteral("Camera 0:2: the camera is out"));
    house_.selectTab(4);
    EXPECT_EQ(line(), QString());
}

TEST_F(RowReasons, OfTheLiveViewComeFirst)
{
    house_.house.load(kCamera);
    house_.source.answer(cameraUrl(kCamera), {"<html>", {}, QStringLiteral("text/html"), {}, {}});
    house_.click(QStringLiteral("Source2"));
    house_.clock.advance(1s);
    EXPECT_EQ(line(), QStringLiteral("Camera 0:2, live picture: not a picture (text/html)"));
    EXPECT_EQ(house_.find<Lamp>(QStringLiteral("SB2")).FillColor(), 255);
}

TEST_F(RowReasons, TellOfALivePictureOfWhichOnlyTheHeadIsThere)
{
    const QByteArray whole = pictureBytes(Qt::red, {320, 240});
    house_.source.answer(cameraUrl(kCamera), picture(whole.first(whole.indexOf("\xFF\xDA"))));
    house_.click(QStringLiteral("Source2"));
    house_.clock.advance(1s);
    EXPECT_EQ(line(), QStringLiteral("Camera 0:2, live picture: the picture is damaged: nothing "
                                     "of it can be shown"));
    house_.source.answer(cameraUrl(kCamera), picture(whole));
    house_.click(QStringLiteral("Source2"));
    house_.clock.advance(1s);
    EXPECT_FALSE(line().contains(u"live picture")) << line().toStdString();
}

TEST_F(RowReasons, TellWhenThereIsNoFolderYet)
{
    QDir(house_.house.tree.path(house_.house.folder(kCamera))).removeRecursively();
    house_.click(QStringLiteral("n2"));
    EXPECT_TRUE(house_.opener.opened.isEmpty());
    EXPECT_TRUE(message().contains(u"0:2")) << message().toStdString();
    house_.house.tree.makeFolder(house_.house.folder(kCamera));
    house_.click(QStringLiteral("n2"));
    EXPECT_EQ(house_.opener.opened.size(), 1);
}

TEST_F(RowReasons, TellWhenThereIsNoLogYet)
{
    house_.house.log.setOn(false);
    QFile::remove(house_.house.tree.path(u"Velmora.log"));
    house_.click(QStringLiteral("cmdDebug"));
    EXPECT_TRUE(message().contains(u"log")) << message().toStdString();
    QFile::remove(house_.house.settings.path());
    house_.click(QStringLiteral("cmdDebug"), Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_TRUE(message().contains(u"settings")) << message().toStdString();
    EXPECT_TRUE(house_.opener.opened.isEmpty());
}

TEST_F(RowReasons, OfAHeldCaptureStandBelowAndInTheTipOfPause)
{
    const QString why = QStringLiteral("the disk is nearly full");
    auto &step = house_.find<QLabel>(QStringLiteral("lErr"));
    const Suspension held = house_.house.scheduler.suspend(why);
    EXPECT_EQ(step.text(), QStringLiteral("Pause"));
    EXPECT_EQ(step.toolTip(), why);
    EXPECT_EQ(message(), why);
    house_.house.scheduler.resume(held);
    EXPECT_EQ(step.text(), QStringLiteral("Wait"));
    EXPECT_EQ(step.toolTip(), QString());
    EXPECT_EQ(message(), QString());
}

// The image in hand when the capture was held is stored after one that could not be.
TEST_F(RowReasons, OfAHeldCaptureStayBelowWhenAnImageCanBeStoredAgain)
{
    const QString why = QStringLiteral("the disk is nearly full");
    Q_EMIT house_.house.store.storingFailed(QStringLiteral("No space left on device"));
    [[maybe_unused]] const Suspension held = house_.house.scheduler.suspend(why);
    EXPECT_EQ(message(), why);
    Q_EMIT house_.house.store.imageStored({0, 3}, QStringLiteral("20060307_1405090714.jpg"));
    EXPECT_EQ(house_.find<QLabel>(QStringLiteral("lErr")).toolTip(), why);
    EXPECT_EQ(message(), why);
}

TEST_F(RowReasons, AreElidedWhereTheyDoNotFit)
{
    for (const char *const name : {"lMessage", "lReason"}) {
        auto &label = house_.find<ElideLabel>(QString::fromLatin1(name));
        label.setText(QString(5000, u'x'));
        EXPECT_LT(label.minimumSizeHint().width(), 100) << name;
    }
}

class BrowserReasons : public testing::Test
{
protected:
    QString line() { return house_.text(QStringLiteral("txtLog")); }

    QString notice(int cell) { return house_.cell(cell).property("notice").toString(); }

    void load(CameraAddress camera, const ScriptedReply &reply)
    {
        house_.source.answer(cameraUrl(camera), reply);
        house_.house.load(camera);
        house_.settle();
    }

    static constexpr CameraAddress kCamera{0, 0};
    BrowserWindowHouse house_;
};

TEST_F(BrowserReasons, OfTheShownCameraAreKept)
{
    house_.addImages({0, 1}, 1);
    house_.openOn(0);
    load(kCamera, kOut);
    EXPECT_EQ(line(), QStringLiteral("Camera 0:0: the camera is out"));
    EXPECT_EQ(notice(0), QStringLiteral("the camera is out"));
    EXPECT_EQ(notice(1), QString());
    load({0, 1}, picture(pictureBytes(Qt::red)));
    EXPECT_EQ(line(), QStringLiteral("Camera 0:0: the camera is out"));
    load(kCamera, picture(pictureBytes(Qt::red)));
    EXPECT_EQ(line(), QStringLiteral("Image stored"));
    EXPECT_EQ(notice(0), QString());
    EXPECT_FALSE(house_.shown(0).isEmpty()); // the first image, without any request
}

TEST_F(BrowserReasons, AreThoseOfTheCameraThatIsChosen)
{
    house_.addImages({0, 1}, 2);
    house_.openOn(1);
    load({0, 1}, kOut);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    EXPECT_EQ(line(), QStringLiteral("Camera 0:1: the camera is out"));
    EXPECT_EQ(notice(2), QStringLiteral("the camera is out")); // where its next image would be
    house_.clickRow(QStringLiteral("lstCam"), 0);
    EXPECT_EQ(line(), QString());
    EXPECT_EQ(notice(1), QString());
}

TEST_F(BrowserReasons, StandInTheCellsOfTheGroup)
{
    house_.addImages({0, 1}, 0);
    house_.openOn(1);
    house_.tick(QStringLiteral("cCamera"));
    load({0, 1}, kOut);
    EXPECT_EQ(notice(1), QStringLiteral("the camera is out"));
    EXPECT_EQ(notice(2), QString());
}

TEST_F(BrowserReasons, SayThatAStoredFileIsNoPicture)
{
    house_.openOn(0);
    ScriptedReply page = picture(QByteArray(3000, '<'));
    page.contentType = QStringLiteral("text/html");
    load(kCamera, page);
    EXPECT_EQ(line(), QStringLiteral("Camera 0:0: not a picture (text/html)"));
    EXPECT_EQ(notice(0), QStringLiteral("not a picture"));
}

TEST_F(BrowserReasons, LeaveAMessageUntilSomethingElseHappens)
{
    house_.openOn(0);
    load(kCamera, kOut);
    house_.window.showMessage(QStringLiteral("no such day"));
    load(kCamera, kOut);
    EXPECT_EQ(line(), QStringLiteral("no such day"));
    house_.addImages({0, 1}, 1);
    load({0, 1}, picture(pictureBytes(Qt::red)));
    EXPECT_EQ(line(), QStringLiteral("Camera 0:0: the camera is out"));
}

TEST_F(BrowserReasons, AKeyThatDeletesNothingSaysWhyAgain)
{
    house_.openOn(2);
    house_.house.storage.edit(QStringLiteral("C:\\half-typed"));
    const QString why = line();
    ASSERT_TRUE(why.contains(u"storage folder")) << why.toStdString();
    house_.window.showMessage(QStringLiteral("no such day"));
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    EXPECT_EQ(line(), why);
    EXPECT_EQ(house_.question(), nullptr);
}

TEST_F(BrowserReasons, TheLineSaysAgainWhatTheCaptureIsHeldFor)
{
    const QString why = QStringLiteral("the disk is nearly full");
    house_.openOn(2);
    const Suspension held = house_.house.scheduler.suspend(why);
    EXPECT_EQ(line(), why);
    house_.window.showMessage(QStringLiteral("no such day"));
    load(kCamera, kOut);
    EXPECT_EQ(line(), why);
    house_.house.scheduler.resume(held);
    EXPECT_NE(line(), why);
}

TEST_F(BrowserReasons, TheLabelFollowsTheAddress)
{
    house_.open();
    EXPECT_EQ(house_.text(QStringLiteral("lCamera")), QStringLiteral("no camera"));
    typeAddress(house_.house.page, 0, QStringLiteral("http://cam/new.jpg"));
    EXPECT_EQ(house_.text(QStringLiteral("lCamera")), QStringLiteral("cam/new.jpg"));
}

TEST_F(BrowserReasons, TheQuestionNamesTheCameraBesideItsText)
{
    house_.openOn(2);
    house_.key(QStringLiteral("LstDir"), Qt::Key_Delete);
    ASSERT_NE(house_.question(), nullptr);
    EXPECT_EQ(house_.question()->text(), QStringLiteral("Kill ") + storedName(1));
    EXPECT_EQ(house_.question()->informativeText(),
              QStringLiteral("Camera 0:0: cam/0/0/picture.jpg"));
}

} // namespace
} // namespace velmora::test
