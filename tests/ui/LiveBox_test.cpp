// The two pictures of the main window: the stored image and the live one of the current row.
#include "WindowHouse.h"
#include "support/StoredPictures.h"
#include "ui/CameraSheet.h"
#include "ui/PictureView.h"
#include "ui/Zoom.h"

#include <QDir>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kStored = QStringLiteral("iTarget");
const QString kLive = QStringLiteral("iWeb");
const QString kAskToClick = QStringLiteral("Web : cliquer sur l'image pour zoomer.");
const QString kLoading = QStringLiteral("Chargement en cours ....");

class LiveBoxTest : public testing::Test
{
protected:
    LiveBoxTest()
    {
        QObject::connect(&house_.window, &Interface::zoomWanted, &zoom_, &Zoom::present);
        house_.house.addCamera(kCamera, cameraUrl(kCamera));
        house_.house.showGroup(0);
        answer(pictureBytes(Qt::red));
    }

    void answer(const QByteArray &body, std::chrono::milliseconds delay = 3s)
    {
        house_.source.answer(cameraUrl(kCamera), {body, {}, {}, delay, {}});
    }

    // Selects the camera's row; the live picture is then under way.
    void select()
    {
        house_.click(QStringLiteral("Source2"));
        house_.clock.advance(100ms);
    }

    void arrive() { house_.clock.advance(10s); }

    QString text(const QString &label) { return house_.find<QLabel>(label).text(); }

    PictureView &picture(const QString &name) { return house_.find<PictureView>(name); }

    QString shown(const QString &name) { return picture(name).accessibleDescription(); }

    int lamp(int row)
    {
        return house_.find<Lamp>(QStringLiteral("SB%1").arg(row)).property("FillColor").toInt();
    }

    QString targetFile() const { return house_.house.tree.path(u"drives/c/in/tmp/Target.jpg"); }

    static constexpr CameraAddress kCamera{0, 2};
    WindowHouse house_;
    Zoom zoom_;
};

TEST_F(LiveBoxTest, BothPicturesHaveNamesAndAreEmptyAtFirst)
{
    for (const QString &name : {kStored, kLive}) {
        EXPECT_FALSE(picture(name).accessibleName().isEmpty());
        EXPECT_EQ(shown(name), QString());
    }
}

TEST_F(LiveBoxTest, SaysThatItIsLoading)
{
    select();
    EXPECT_EQ(text(QStringLiteral("Locale")), QStringLiteral("Local 2"));
    EXPECT_EQ(text(QStringLiteral("lWeb")), kLoading);
    EXPECT_EQ(lamp(2), 33023);
}

// Any setting, say.
TEST_F(LiveBoxTest, ARowWhoseFirstAddressIsBeingTypedStaysOrangeWhenTheSettingsAreReadAgain)
{
    house_.retype(QStringLiteral("Source5"), cameraUrl(kCamera));
    house_.clock.advance(100ms);
    house_.house.engine.adoptSettings();
    EXPECT_EQ(lamp(5), 33023);
    arrive();
    EXPECT_EQ(lamp(5), 255);
}

TEST_F(LiveBoxTest, EmptiesTheStatusLineAtItsBeginAndItsEnd)
{
    auto &status = house_.find<QLabel>(QStringLiteral("lTmp"));
    status.setText(QStringLiteral("before"));
    select();
    EXPECT_EQ(status.text(), QString());
    status.setText(QStringLiteral("meanwhile"));
    arrive();
    EXPECT_EQ(status.text(), QString());
}

TEST_F(LiveBoxTest, ShowsTheLivePictureWhenItIsThere)
{
    select();
    EXPECT_EQ(shown(kLive), QString());
    arrive();
    EXPECT_EQ(shown(kLive), targetFile());
    EXPECT_EQ(text(QStringLiteral("lWeb")), kAskToClick);
    EXPECT_EQ(text(QStringLiteral("TimeLoad2")), QStringLiteral("3"));
}

TEST_F(LiveBoxTest, ShowsTheNewestStoredImageAtOnce)
{
    house_.house.putImage(kCamera, storedName(1), pictureBytes(Qt::red));
    house_.house.putImage(kCamera, storedName(2), pictureBytes(Qt::blue));
    select();
    EXPECT_TRUE(shown(kStored).endsWith(storedName(2))) << shown(kStored).toStdString();
}

TEST_F(LiveBoxTest, WithoutAStoredImageTheLiveOneIsStillFetched)
{
    select();
    arrive();
    EXPECT_EQ(shown(kStored), QString());
    EXPECT_EQ(shown(kLive), targetFile());
}

TEST_F(LiveBoxTest, ADownloadThatFailsLeavesTheLivePictureEmpty)
{
    house_.source.answer(cameraUrl(kCamera), {{}, {}, {}, {}, QStringLiteral("gone")});
    select();
    arrive();
    EXPECT_EQ(shown(kLive), QString());
    EXPECT_EQ(text(QStringLiteral("lWeb")), kAskToClick);
}

TEST_F(LiveBoxTest, AnAnswerThatIsNoPictureLeavesTheLivePictureEmpty)
{
    answer(QByteArray(5000, 'x'));
    select();
    arrive();
    EXPECT_FALSE(picture(kLive).holdsPicture());
    EXPECT_EQ(shown(kLive), QString());
}

TEST_F(LiveBoxTest, ARowWithoutAddressChangesNothing)
{
    select();
    arrive();
    house_.click(QStringLiteral("Source5"));
    arrive();
    EXPECT_EQ(text(QStringLiteral("Locale")), QStringLiteral("Local 2"));
    EXPECT_EQ(shown(kLive), targetFile());
}

TEST_F(LiveBoxTest, TheNextLivePictureTakesThePlaceOfTheLast)
{
    select();
    arrive();
    answer(pictureBytes(Qt::blue));
    select();
    arrive();
    const QImage look = picture(kLive).grab().toImage();
    EXPECT_GT(look.pixelColor(look.width() / 2, look.height() / 2).blue(), 200);
}

class LiveViewAndSheet : public LiveBoxTest
{
protected:
    LiveViewAndSheet()
    {
        Interface &main = house_.window;
        QObject::connect(&main, &Interface::sheetWanted, &sheet_, &CameraSheet::present);
        QObject::connect(&sheet_, &CameraSheet::addressChosen, &main, &Interface::fillAddress);
        house_.house.putImage(kCamera, storedName(1), pictureBytes(Qt::red));
    }

    void give(const QString &url)
    {
        QTest::keyClick(&house_.find<QLineEdit>(QStringLiteral("Source2")), Qt::Key_F4);
        auto &address = *sheet_.findChild<QLineEdit *>(QStringLiteral("sheetAddress"));
        address.selectAll();
        QTest::keyClick(&address, Qt::Key_Delete);
        QTest::keyClicks(&address, url);
        QTest::keyClick(&address, Qt::Key_Return);
        house_.clock.advance(100ms);
    }

    CameraSheet sheet_{house_.house.settings, house_.house.view.trial()};
};

TEST_F(LiveViewAndSheet, AnotherAddressTakesThePicturesOfTheCameraBeforeAway)
{
    select();
    arrive();
    ASSERT_NE(shown(kLive), QString());
    give(cameraUrl({1, 1}));
    EXPECT_EQ(shown(kLive), QString());
    EXPECT_EQ(shown(kStored), QString());
}

TEST_F(LiveViewAndSheet, NoPictureOfTheCameraBeforeComesLate)
{
    select();
    give(cameraUrl({1, 1}));
    EXPECT_EQ(text(QStringLiteral("lWeb")), kAskToClick);
    EXPECT_EQ(lamp(2), 255);
    arrive();
    EXPECT_EQ(shown(kLive), QString());
    EXPECT_EQ(text(QStringLiteral("TimeLoad2")), QStringLiteral("0"));
}

TEST_F(LiveViewAndSheet, TheReasonOfTheCameraBeforeGoes)
{
    house_.source.answer(cameraUrl(kCamera), {{}, {}, {}, {}, QStringLiteral("gone")});
    select();
    arrive();
    ASSERT_TRUE(text(QStringLiteral("lReason")).endsWith(u"live picture: gone"));
    give(QString());
    EXPECT_EQ(text(QStringLiteral("lReason")), QString());
}

TEST_F(LiveViewAndSheet, TheSameAddressLeavesThePictures)
{
    select();
    arrive();
    give(cameraUrl(kCamera));
    EXPECT_EQ(shown(kLive), targetFile());
}

TEST_F(LiveBoxTest, EachPictureOpensEnlargedWhenItIsClicked)
{
    house_.house.putImage(kCamera, storedName(1), pictureBytes(Qt::red));
    select();
    arrive();
    auto &enlarged = *zoom_.findChild<PictureView *>(QStringLiteral("iZoom"));
    for (const QString &name : {kStored, kLive}) {
        house_.click(name);
        EXPECT_TRUE(zoom_.isVisible()) << name.toStdString();
        EXPECT_EQ(enlarged.accessibleDescription(), shown(name));
        QTest::mouseClick(&enlarged, Qt::LeftButton);
        EXPECT_FALSE(zoom_.isVisible());
    }
}

TEST_F(LiveBoxTest, AnEmptyPictureOpensNothing)
{
    house_.click(kStored);
    house_.click(kLive);
    EXPECT_FALSE(zoom_.isVisible());
}

// Of two programs with one storage folder, the live picture of each is in the same file.
class ForeignLivePicture : public LiveBoxTest
{
protected:
    ForeignLivePicture()
    {
        select();
        arrive();
    }

    void replace()
    {
        QFile::remove(targetFile());
        house_.house.tree.write(u"drives/c/in/tmp/Target.jpg", pictureBytes(Qt::blue));
    }

    void expectRefusal(const QString &why)
    {
        house_.click(kLive);
        EXPECT_FALSE(zoom_.isVisible());
        EXPECT_EQ(text(QStringLiteral("lMessage")),
                  QStringLiteral("The live picture of camera 0:2 cannot be enlarged: ") + why);
    }

    inline static const QString kForeign =
        QStringLiteral("another program has replaced or deleted its file");

    static QColor middle(PictureView &view)
    {
        const QImage look = view.grab().toImage();
        return look.pixelColor(look.width() / 2, look.height() / 2);
    }
};

TEST_F(ForeignLivePicture, IsNotEnlarged)
{
    replace();
    expectRefusal(kForeign);
}

TEST_F(ForeignLivePicture, IsNotEnlargedWhenThereIsNone)
{
    QFile::remove(targetFile());
    expectRefusal(kForeign);
}

TEST_F(ForeignLivePicture, IsNotBlamedWhenTheStorageFolderIsAway)
{
    ASSERT_TRUE(QDir(house_.house.tree.path(u"drives/c"))
                    .rename(QStringLiteral("in"), QStringLiteral("ni")));
    expectRefusal(QStringLiteral("the storage folder C:\\in\\ is not there; its disk may be away. "
                                 "\"Create folder\" makes a new one"));
}

TEST_F(ForeignLivePicture, IsForgottenWithTheNextOfItsOwn)
{
    replace();
    expectRefusal(kForeign);
    select();
    arrive();
    EXPECT_EQ(text(QStringLiteral("lMessage")), QString());
    house_.click(kLive);
    EXPECT_TRUE(zoom_.isVisible());
}

TEST_F(ForeignLivePicture, TakesNoPlaceInAWindowOfAnotherSize)
{
    replace();
    house_.window.resize(house_.window.size() + QSize(120, 90));
    QApplication::sendPostedEvents();
    EXPECT_GT(middle(picture(kLive)).red(), 200);
    EXPECT_LT(middle(picture(kLive)).blue(), 50);
}

TEST_F(LiveBoxTest, AnotherGroupEmptiesBothPictures)
{
    house_.house.putImage(kCamera, storedName(1), pictureBytes(Qt::red));
    select();
    arrive();
    house_.selectTab(4);
    EXPECT_EQ(shown(kStored), QString());
    EXPECT_EQ(shown(kLive), QString());
}

TEST_F(LiveBoxTest, ThePictureIsSharpInALargeWindow)
{
    answer(finePicture({2400, 1800}));
    house_.window.resize(600, 700);
    select();
    arrive();
    EXPECT_FALSE(isSharp(picture(kLive)));
    house_.window.resize(5200, 3400);
    house_.clock.advance(0ms);
    ASSERT_GE(picture(kLive).width(), 2400);
    ASSERT_GE(picture(kLive).height(), 1800);
    EXPECT_TRUE(isSharp(picture(kLive)));
}

} // namespace
} // namespace velmora::test
