// Walking back through a camera's images, pair by pair, and what may happen meanwhile.
#include "tools/MotionAlarm.h"

#include "support/BrowserHouse.h"
#include "support/FilmDouble.h"

#include <QBuffer>
#include <QFileInfo>
#include <QTimer>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <limits>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 0};
constexpr CameraAddress kOther{0, 1};

QByteArray picture()
{
    static const QByteArray bytes = [] {
        QImage image(8, 6, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray png;
        QBuffer buffer(&png);
        image.save(&buffer, "PNG");
        return png;
    }();
    return bytes;
}

/// Records each pair as it is compared: "newer older", by the images' numbers.
class WatchedAlarm final : public MotionAlarm
{
public:
    using MotionAlarm::MotionAlarm;

    Comparison VerifColor() override
    {
        pairs.append(number(AlarmPicture::Var) + u' ' + number(AlarmPicture::Ref));
        onCompare(static_cast<int>(pairs.size()));
        return MotionAlarm::VerifColor();
    }

    /// "5" for the fifth second's image, "-" for none.
    [[nodiscard]] QString number(AlarmPicture which) const
    {
        const LoadedPicture &shown = picture(which);
        if (shown.image.isNull()) {
            return shown.path.isEmpty() ? QStringLiteral("-") : QStringLiteral("?");
        }
        const QString name = QFileInfo(shown.path).fileName();
        return QString::number(name.mid(11, 2).toInt() * 60 + name.mid(13, 2).toInt());
    }

    QStringList pairs;
    std::function<void(int)> onCompare = [](int) {};
};

class MotionAlarmTest : public testing::Test
{
protected:
    MotionAlarmTest() { alarm_.setPixels({80, 60}); }

    ~MotionAlarmTest() override
    {
        alarm_.stop();
        house_.finish();
    }

    void store(CameraAddress camera, int count)
    {
        house_.addCamera(camera);
        for (int number = 0; number < count; ++number) {
            house_.capture.putImage(camera, imageName(number), picture());
        }
    }

    // Shows a camera with this many images and selects one.
    void open(int count, int selected)
    {
        store(kCamera, count);
        house_.show(kCamera);
        house_.data.files.setListIndex(selected);
    }

    [[nodiscard]] bool isScanning() const { return house_.capture.scope.running() > 0; }

    void scan()
    {
        alarm_.run();
        house_.finish();
    }

    [[nodiscard]] QString path(CameraAddress camera, int number) const
    {
        return house_.capture.tree.path(house_.capture.folder(camera)) + u'/' + imageName(number);
    }

    static QStringList pairs(const char *text) { return QString::fromLatin1(text).split(u','); }

    BrowserHouse house_{[](BrowserHouse &) { return std::make_unique<FilmDouble>(); }};
    WatchedAlarm alarm_{house_.capture.storage, house_.data, house_.clock, house_.capture.scope};
};

TEST_F(MotionAlarmTest, WalksBackElevenPairsFromTheSelectedImage)
{
    open(30, 24);
    scan();
    EXPECT_EQ(alarm_.pairs, pairs("24 23,22 21,20 19,18 17,16 15,14 13,12 11,10 9,8 7,6 5,4 3"));
    EXPECT_EQ(alarm_.number(AlarmPicture::Var), QStringLiteral("4"));
    EXPECT_EQ(alarm_.number(AlarmPicture::Ref), QStringLiteral("3"));
    EXPECT_FALSE(isScanning());
}

TEST_F(MotionAlarmTest, PairsThatDoNotExistStayEmpty)
{
    open(6, 5);
    scan();
    EXPECT_EQ(alarm_.pairs, pairs("5 4,3 2,1 0,- -,- -,- -,- -,- -,- -,- -,- -"));
}

TEST_F(MotionAlarmTest, TheFirstImageHasNoneBeforeIt)
{
    open(3, 2);
    scan();
    EXPECT_EQ(alarm_.pairs.first(3), pairs("2 1,0 -,- -"));
}

TEST_F(MotionAlarmTest, ReachesTheLastPairOfTwentyTwoImages)
{
    open(22, 21);
    scan();
    EXPECT_EQ(alarm_.pairs.last(), QStringLiteral("1 0"));
    EXPECT_EQ(alarm_.pairs.size(), 11);
}

TEST_F(MotionAlarmTest, WithoutASelectionEveryPairIsEmpty)
{
    open(3, -1);
    scan();
    EXPECT_EQ(alarm_.pairs, QStringList(11, QStringLiteral("- -")));
}

TEST_F(MotionAlarmTest, ShowsTheNativePathBelowTheStorageFolder)
{
    open(3, 2);
    alarm_.onCompare = [this](int pass) {
        if (pass == 1) {
            EXPECT_EQ(alarm_.picture(AlarmPicture::Var).path, path(kCamera, 2));
            EXPECT_EQ(alarm_.picture(AlarmPicture::Ref).path, path(kCamera, 1));
        }
    };
    scan();
}

TEST_F(MotionAlarmTest, AFileThatIsGoneOrBrokenLeavesItsPlaceEmptyAndTheWalkGoesOn)
{
    open(6, 5);
    house_.remove(kCamera, imageName(4));
    house_.capture.putImage(kCamera, imageName(3), "no picture");
    house_.capture.putImage(kCamera, imageName(2), "");
    scan();
    EXPECT_EQ(alarm_.pairs.first(3), pairs("5 -,- -,1 0"));
    EXPECT_EQ(house_.capture.allTexts().filter(QStringLiteral("picture")), QStringList());
}

TEST_F(MotionAlarmTest, ClearsAllThreePicturesFirst)
{
    open(6, 5);
    alarm_.ChargeRef();
    QList<AlarmPicture> cleared;
    QObject::connect(&alarm_, &MotionAlarm::changed, &alarm_, [&](AlarmPicture which) {
        if (alarm_.number(which) == QStringLiteral("-")) {
            cleared.append(which);
        }
    });
    alarm_.run();
    EXPECT_EQ(cleared.first(3),
              (QList<AlarmPicture>{AlarmPicture::Ref, AlarmPicture::Var, AlarmPicture::Vide}));
    EXPECT_EQ(alarm_.number(AlarmPicture::Ref), QStringLiteral("-"));
    house_.finish();
}

TEST_F(MotionAlarmTest, ClearsEachPictureBeforeItsLoadAndRepaintsBeforeComparing)
{
    open(30, 24);
    QStringList story;
    QObject::connect(&alarm_, &MotionAlarm::changed, &alarm_, [&](AlarmPicture which) {
        story.append(
            (which == AlarmPicture::Var ? QStringLiteral("var ") : QStringLiteral("ref ")) +
            alarm_.number(which));
    });
    QObject::connect(&alarm_, &MotionAlarm::repaintWanted, &alarm_,
                     [&] { story.append(QStringLiteral("paint")); });
    alarm_.onCompare = [&](int pass) {
        story.append(QStringLiteral("compare"));
        if (pass == 2) {
            alarm_.stop();
        }
    };
    scan();
    EXPECT_EQ(story.mid(3), pairs("var -,var 24,ref -,ref 23,paint,compare,"
                                  "var -,var 22,ref -,ref 21,paint,compare"));
}

TEST_F(MotionAlarmTest, LetsEventsRunBeforeEachPictureAndBeforeEachComparison)
{
    open(30, 24);
    int steps = 0;
    int turns = 0;
    const auto countTurn = [&](const auto &self) -> void {
        ++turns;
        if (isScanning()) {
            QTimer::singleShot(0, &alarm_, [self] { self(self); });
        }
    };
    QObject::connect(&alarm_, &MotionAlarm::repaintWanted, &alarm_, [&] { ++steps; });
    alarm_.run();
    EXPECT_EQ(steps, 0) << "nothing is loaded within the click";
    countTurn(countTurn);
    house_.finish();
    EXPECT_EQ(steps, 11);
    EXPECT_GE(turns, 33);
}

TEST_F(MotionAlarmTest, EventsRunBetweenThePaintingAndTheComparison)
{
    open(30, 24);
    int turns = 0;
    QObject::connect(&alarm_, &MotionAlarm::repaintWanted, &alarm_,
                     [&] { QTimer::singleShot(0, &alarm_, [&] { ++turns; }); });
    alarm_.onCompare = [&](int pass) { EXPECT_EQ(turns, pass); };
    scan();
    EXPECT_EQ(turns, 11);
}

TEST_F(MotionAlarmTest, AsksTheBrowserForItsSelectionInEveryPass)
{
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 1) {
            house_.data.files.setListIndex(29);
        }
    };
    scan();
    EXPECT_EQ(alarm_.pairs.first(3), pairs("24 23,27 26,25 24"));
}

TEST_F(MotionAlarmTest, AnotherCameraInTheMiddleIsWalkedFromThere)
{
    store(kOther, 3);
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 2) {
            house_.browser.chooseCamera(kOther.row);
        }
    };
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 11);
    EXPECT_EQ(alarm_.pairs.first(2), pairs("24 23,22 21"));
    EXPECT_EQ(alarm_.pairs.last(), QStringLiteral("- -"));
}

TEST_F(MotionAlarmTest, TheFolderIsThatOfTheCameraThatIsSelected)
{
    store(kOther, 30);
    open(30, 24);
    house_.data.state.cameraChosen(kOther); // before its list is there
    alarm_.ChargeRef();
    EXPECT_EQ(alarm_.picture(AlarmPicture::Ref).path, path(kOther, 24));
}

TEST_F(MotionAlarmTest, AnotherStorageFolderInTheMiddleIsTaken)
{
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 2) {
            house_.capture.storage.edit(QStringLiteral("C:\\elsewhere\\"));
            house_.capture.storage.putInForce();
        }
    };
    scan();
    EXPECT_EQ(alarm_.pairs.mid(1, 2), pairs("22 21,- -"));
}

TEST_F(MotionAlarmTest, AFolderThatVanishesInTheMiddleLeavesThePicturesEmpty)
{
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 3) {
            house_.pullStorage();
        } else if (pass == 5) {
            house_.plugStorage();
        }
    };
    scan();
    EXPECT_EQ(alarm_.pairs.mid(2, 4), pairs("20 19,- -,- -,14 13"));
}

TEST_F(MotionAlarmTest, AListThatShrinksInTheMiddleIsNotReadBeyondItsEnd)
{
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 1) {
            house_.data.files.bind({}, QString(), std::make_shared<const ImageNames>());
        }
    };
    scan();
    EXPECT_EQ(alarm_.pairs, pairs("24 23") + QStringList(10, QStringLiteral("- -")));
}

TEST_F(MotionAlarmTest, ASecondRunWhileOneIsUnderWayDoesNothing)
{
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 2) {
            alarm_.run();
        }
    };
    alarm_.run();
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 11);
    EXPECT_EQ(alarm_.pairs.last(), QStringLiteral("4 3"));
}

TEST_F(MotionAlarmTest, CanRunAgainAfterItsEnd)
{
    open(30, 24);
    scan();
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 22);
}

TEST_F(MotionAlarmTest, StopsInTheMiddleAndRunsAgain)
{
    open(30, 24);
    alarm_.onCompare = [this](int pass) {
        if (pass == 3) {
            alarm_.stop();
        }
    };
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 3);
    EXPECT_FALSE(isScanning());
    alarm_.pairs.clear();
    alarm_.onCompare = [](int) {};
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 11);
}

TEST_F(MotionAlarmTest, LoadsNothingMoreOnceItIsStopped)
{
    open(30, 24);
    alarm_.run();
    alarm_.stop();
    house_.finish();
    EXPECT_TRUE(alarm_.pairs.isEmpty());
    EXPECT_EQ(alarm_.number(AlarmPicture::Var), QStringLiteral("-"));
}

TEST_F(MotionAlarmTest, EndsWithTheProgram)
{
    open(30, 24);
    alarm_.onCompare = [this](int) { house_.capture.scope.requestStop(); };
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 1);
    scan();
    EXPECT_EQ(alarm_.pairs.size(), 1);
}

TEST_F(MotionAlarmTest, ChangesNothingButThePictures)
{
    open(30, 24);
    const QByteArray settings = house_.capture.tree.read(u"Velmora.ini");
    const QStringList cells = house_.cells();
    house_.newLog();
    scan();
    EXPECT_EQ(house_.data.files.ListIndex(), 24);
    EXPECT_EQ(house_.cells(), cells);
    EXPECT_EQ(house_.newLog(), QStringList());
    EXPECT_EQ(house_.capture.tree.read(u"Velmora.ini"), settings);
}

TEST_F(MotionAlarmTest, TheReferenceAloneIsTheSelectedImage)
{
    open(30, 7);
    alarm_.ChargeRef();
    EXPECT_EQ(alarm_.number(AlarmPicture::Ref), QStringLiteral("7"));
    EXPECT_EQ(alarm_.number(AlarmPicture::Var), QStringLiteral("-"));
    house_.remove(kCamera, imageName(8));
    house_.data.files.setListIndex(8);
    alarm_.ChargeRef();
    EXPECT_EQ(alarm_.number(AlarmPicture::Ref), QStringLiteral("-"));
}

TEST_F(MotionAlarmTest, TheReferenceIsClearedBeforeItIsLoaded)
{
    open(30, 7);
    alarm_.ChargeRef();
    QStringList story;
    QObject::connect(&alarm_, &MotionAlarm::changed, &alarm_,
                     [&](AlarmPicture which) { story.append(alarm_.number(which)); });
    alarm_.ChargeRef();
    EXPECT_EQ(story, pairs("-,7"));
}

TEST_F(MotionAlarmTest, PicturesAreLoadedAgainForAnotherSize)
{
    open(3, 2);
    alarm_.ChargeRef();
    EXPECT_EQ(alarm_.picture(AlarmPicture::Ref).image.size(), QSize(8, 6));
    alarm_.setPixels({4, 3});
    EXPECT_EQ(alarm_.picture(AlarmPicture::Ref).image.size(), QSize(4, 3));
    EXPECT_EQ(alarm_.picture(AlarmPicture::Ref).path, path(kCamera, 2));
    EXPECT_EQ(alarm_.number(AlarmPicture::Var), QStringLiteral("-"));
}

TEST_F(MotionAlarmTest, AnImageThatHasGoneIsEmptyInAnotherSize)
{
    open(3, 2);
    alarm_.ChargeRef();
    house_.remove(kCamera, imageName(2));
    alarm_.setPixels({4, 3});
    EXPECT_EQ(alarm_.number(AlarmPicture::Ref), QStringLiteral("-"));
}

TEST_F(MotionAlarmTest, TheHookSaysSuccess)
{
    MotionAlarm alarm(house_.capture.storage, house_.data, house_.clock, house_.capture.scope);
    EXPECT_EQ(alarm.VerifColor(), Comparison::Success);
}

struct ClampRow
{
    std::array<int, 3> before;
    std::array<int, 3> after;
};

constexpr ClampRow kClamps[] = {
    {{-5, 128, 300}, {0, 128, 255}},
    {{0, 0, 0}, {0, 0, 0}},
    {{255, 255, 255}, {255, 255, 255}},
    {{-1, -1, -1}, {0, 0, 0}},
    {{256, 256, 256}, {255, 255, 255}},
    {{1, 254, 256}, {1, 254, 255}},
    {{std::numeric_limits<int>::min(), 0, std::numeric_limits<int>::max()}, {0, 0, 255}},
};

TEST(ColourClamp, BringsEachPartIntoItsRange)
{
    for (const ClampRow &row : kClamps) {
        auto [red, green, blue] = row.before;
        clampColour(red, green, blue);
        EXPECT_EQ((std::array{red, green, blue}), row.after);
    }
}

} // namespace
} // namespace velmora::test
