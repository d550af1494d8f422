// One camera loaded successfully: which pictures are stored, under which name, and what is counted.
#include "CaptureTest.h"
#include "support/LoopTurns.h"

#include <QScopeGuard>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 3};

class ChargeFile : public CaptureTest
{
protected:
    /// A camera whose address is requested as written.
    void addScript(const ScriptedReply &reply)
    {
        house_.addCamera(kCamera, kScript);
        source_.answer(kScript, reply);
    }

    const QString kScript = QStringLiteral("https://cam/snap");
};

TEST_F(ChargeFile, StoresThePictureByteForByte)
{
    add(kCamera);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.tree.read(house_.folder(kCamera) + u'/' + kImageName), jpeg(2000));
}

TEST_F(ChargeFile, RefusesNineHundredNinetyNineBytes)
{
    add(kCamera, goodReply(kLastModified, 999));
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList());
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
}

TEST_F(ChargeFile, TakesAThousandBytes)
{
    add(kCamera, goodReply(kLastModified, 1000));
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
}

TEST_F(ChargeFile, RefusesNineHundredNinetyNineBytesAsWritten)
{
    addScript(goodReply(kLastModified, 999));
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList());
    EXPECT_EQ(house_.value(u"SB", kCamera), kRed);
}

TEST_F(ChargeFile, TakesAThousandBytesAsWritten)
{
    addScript(goodReply(kLastModified, 1000));
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
}

TEST_F(ChargeFile, NamesThePictureAfterItsContentWhereTheAddressDoesNotSay)
{
    addScript(
        {QByteArray("\x89PNG\r\n\x1A\n").leftJustified(1000, 'x'), kLastModified, {}, {}, {}});
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{QStringLiteral("20060307_1405090714.png")});
}

TEST_F(ChargeFile, CutsALongExtension)
{
    const QString url = QStringLiteral("http://cam/a.jpeg");
    house_.addCamera(kCamera, url);
    source_.answer(url, goodReply());
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{QStringLiteral("20060307_1405090714.jpe")});
}

TEST_F(ChargeFile, PutsTheDayAndHourOfTheDownloadIntoTheName)
{
    add(kCamera);
    clock_.setLocal(kFakeStart + 24h * 9 + 8h);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{QStringLiteral("20060307_1405091622.jpg")});
}

TEST_F(ChargeFile, WritesWhatItHasLearned)
{
    add(kCamera);
    clock_.setLocal(kFakeStart + 61s);
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"LastModified", kCamera), kLastModifiedStored);
    EXPECT_EQ(house_.value(u"LocalTime", kCamera), QStringLiteral("07/03/2006 14:06:10"));
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("0"));
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("1"));
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
}

TEST_F(ChargeFile, WritesTheWholeSecondsOfTheTransfer)
{
    add(kCamera, delayedReply(2999ms));
    house_.beginLoad(kCamera);
    clock_.advance(3s);
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("2"));
    EXPECT_EQ(house_.page.row(kCamera.row).loadSeconds, 2);
}

TEST_F(ChargeFile, StoresTheSameDateOnce)
{
    add(kCamera);
    house_.load(kCamera);
    clock_.advance(2h);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("1"));
    EXPECT_EQ(house_.stored(), QStringList{QStringLiteral("0:3")});
}

TEST_F(ChargeFile, IsGreenAndTimedForAnImageThatIsNotNew)
{
    add(kCamera);
    house_.load(kCamera);
    house_.setValue(u"SB", kCamera, kRed);
    clock_.advance(2h);
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
    EXPECT_EQ(house_.value(u"LocalTime", kCamera), QStringLiteral("07/03/2006 16:05:09"));
}

TEST_F(ChargeFile, StoresAnotherDate)
{
    add(kCamera);
    house_.load(kCamera);
    source_.answer(cameraUrl(kCamera), goodReply(QStringLiteral("Tue, 07 Mar 2006 14:05:08 GMT")));
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera),
              (QStringList{QStringLiteral("20060307_1405080714.jpg"), kImageName}));
    EXPECT_EQ(house_.value(u"LastModified", kCamera), QStringLiteral("07/03/2006 14:05:08"));
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("2"));
}

TEST_F(ChargeFile, StoresTheSameDateAgainIntoAnEmptiedFolder)
{
    add(kCamera);
    house_.setValue(u"LastModified", kCamera, kLastModifiedStored);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
}

TEST_F(ChargeFile, StoresAPictureWithoutDateIntoAnEmptyFolderOnly)
{
    add(kCamera, goodReply(QString()));
    house_.load(kCamera);
    clock_.advance(1h);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), QStringList{QStringLiteral("18991230_0000000714.jpg")});
    EXPECT_EQ(house_.value(u"LastModified", kCamera), QStringLiteral("30/12/1899 00:00:00"));
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("1"));
}

TEST_F(ChargeFile, TakesAHeaderThatIsNoDateAsNewEachTime)
{
    add(kCamera, goodReply(QStringLiteral("yesterday")));
    house_.load(kCamera);
    house_.load(kCamera);
    clock_.advance(1h);
    house_.load(kCamera);
    EXPECT_EQ(house_.images(kCamera), (QStringList{QStringLiteral("18991230_0000000714.jpg"),
                                                   QStringLiteral("18991230_0000000715.jpg")}));
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("2"));
}

TEST_F(ChargeFile, NeverOverwritesAFile)
{
    add(kCamera);
    house_.putImage(kCamera, kImageName, "old");
    house_.setValue(u"lNew", kCamera, QStringLiteral("7"));
    house_.load(kCamera);
    EXPECT_EQ(house_.tree.read(house_.folder(kCamera) + u'/' + kImageName), "old");
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("7"));
    EXPECT_EQ(house_.stored(), QStringList());
}

TEST_F(ChargeFile, IsGoodAllTheSameWhenTheFileIsThere)
{
    add(kCamera);
    house_.putImage(kCamera, kImageName, "old");
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"LastModified", kCamera), kLastModifiedStored);
    EXPECT_EQ(house_.value(u"SB", kCamera), kGreen);
    EXPECT_EQ(house_.failed(), QStringList());
}

TEST_F(ChargeFile, LeavesNoWorkFile)
{
    add(kCamera);
    house_.load(kCamera);
    EXPECT_EQ(house_.tree.files(u"drives/c/in/tmp"), QStringList());
}

struct CounterRow
{
    const char *name;
    QString stored;
    QString counted;
};

void PrintTo(const CounterRow &row, std::ostream *out)
{
    *out << row.stored.toStdString();
}

class ChargeFileCounts : public CaptureTest, public testing::WithParamInterface<CounterRow>
{
};

TEST_P(ChargeFileCounts, OneNewImageMore)
{
    add(kCamera);
    house_.setValue(u"lNew", kCamera, GetParam().stored);
    house_.load(kCamera);
    EXPECT_EQ(house_.value(u"lNew", kCamera), GetParam().counted);
    EXPECT_EQ(house_.page.row(kCamera.row).newImages, GetParam().counted.toInt());
}

const CounterRow kCounters[] = {
    {"FromNothing", QString(), QStringLiteral("1")},
    {"FromZero", QStringLiteral("0"), QStringLiteral("1")},
    {"FromNine", QStringLiteral("9"), QStringLiteral("10")},
    {"FromLeadingNumber", QStringLiteral("3x"), QStringLiteral("4")},
    {"FromNoNumber", QStringLiteral("abc"), QStringLiteral("1")},
    {"ToTheLastNumber", QStringLiteral("2147483646"), QStringLiteral("2147483647")},
    {"FromTheLastNumber", QStringLiteral("2147483647"), QStringLiteral("1")},
    {"FromOutOfRange", QStringLiteral("99999999999"), QStringLiteral("1")},
};

INSTANTIATE_TEST_SUITE_P(ImageStore, ChargeFileCounts, testing::ValuesIn(kCounters),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(ChargeFile, NamesTheCounterThatIsOutOfRange)
{
    add(kCamera);
    house_.setValue(u"lNew", kCamera, QStringLiteral("99999999999"));
    house_.load(kCamera);
    const QString told = house_.allTexts().filter(QStringLiteral("out of range")).value(0);
    EXPECT_TRUE(told.contains(QStringLiteral("Groupe0"))) << told.toStdString();
    EXPECT_TRUE(told.contains(QStringLiteral("lNew3"))) << told.toStdString();
    EXPECT_TRUE(told.contains(QStringLiteral("99999999999"))) << told.toStdString();
}

TEST_F(ChargeFile, SetsTheAutomaticCounterInAutomaticMode)
{
    add(kCamera);
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("1"));
    EXPECT_EQ(house_.store.automaticCounter(kCamera), 0);
    house_.load(kCamera);
    EXPECT_EQ(house_.store.automaticCounter(kCamera), 1);
    EXPECT_EQ(house_.store.automaticCounter({kCamera.row, kCamera.group}), 0);
}

TEST_F(ChargeFile, ClearsTheAutomaticCounterOutOfAutomaticMode)
{
    add(kCamera);
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("1"));
    house_.load(kCamera);
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("0"));
    source_.answer(cameraUrl(kCamera), goodReply(QStringLiteral("Tue, 07 Mar 2006 14:06:00 GMT")));
    house_.load(kCamera);
    EXPECT_EQ(house_.store.automaticCounter(kCamera), 0);
}

TEST_F(ChargeFile, KeepsTheAutomaticCounterForAnImageThatIsNotNew)
{
    add(kCamera);
    house_.load(kCamera);
    house_.setValue(u"AutoDelai", kCamera, QStringLiteral("1"));
    house_.load(kCamera);
    EXPECT_EQ(house_.store.automaticCounter(kCamera), 0);
}

TEST_F(ChargeFile, BringsTheTimeoutIntoRange)
{
    add(kCamera);
    house_.options.setTimeout(QStringLiteral("2"));
    house_.load(kCamera);
    EXPECT_EQ(house_.options.timeout(), QStringLiteral("5"));
}

TEST_F(ChargeFile, GivesTheTransferTheTimeoutOfTheBox)
{
    add(kCamera, delayedReply(1h));
    house_.options.setTimeout(QStringLiteral("-8.5"));
    house_.beginLoad(kCamera);
    clock_.advance(8s - 1ms);
    EXPECT_EQ(house_.failed(), QStringList());
    clock_.advance(1ms);
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:3")});
    EXPECT_EQ(house_.value(u"TimeLoad", kCamera), QStringLiteral("8"));
}

TEST_F(ChargeFile, DoesNothingForARowWithoutAddress)
{
    house_.log.setOn(true);
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    int loaded = 0;
    QObject::connect(&house_.store, &ImageStore::loaded, &house_, [&loaded] { ++loaded; });
    house_.load(kCamera);
    EXPECT_EQ(loaded, 1);
    EXPECT_EQ(fetches(), 0);
    EXPECT_EQ(house_.tree.read(u"Velmora.ini"), before);
    EXPECT_EQ(house_.logText(), QStringLiteral("<-Interface ChargeFile->\n"));
}

TEST_F(ChargeFile, ChangesNothingWhenItIsGivenUp)
{
    add(kCamera, delayedReply(1s));
    const QByteArray before = house_.tree.read(u"Velmora.ini");
    house_.beginLoad(kCamera);
    house_.store.dropTransfers();
    clock_.advance(10s);
    EXPECT_EQ(house_.tree.read(u"Velmora.ini"), before);
    EXPECT_EQ(house_.images(kCamera), QStringList());
    EXPECT_EQ(house_.stored() + house_.failed(), QStringList());
}

TEST_F(ChargeFile, LetsTheTimerRunAgainWhateverHappens)
{
    add(kCamera);
    for (const ScriptedReply &reply : {goodReply(), goodReply(kLastModified, 10), failedReply()}) {
        source_.answer(cameraUrl(kCamera), reply);
        house_.timer.stop();
        house_.load(kCamera);
        EXPECT_TRUE(house_.timer.isActive());
    }
}

/// Turns of the event loop between the picture and the end of its camera's load.
class LargeSettings : public ChargeFile
{
protected:
    int turnsWhileStoring()
    {
        add(kCamera);
        LoopTurns loop;
        int turns = 0;
        QObject::connect(&house_.store, &ImageStore::downloaded, &house_, [&] { loop.restart(); });
        QObject::connect(&house_.store, &ImageStore::imageStored, &house_,
                         [&] { turns = loop.turns(); });
        house_.load(kCamera);
        return turns;
    }
};

TEST_F(LargeSettings, LetEventsThroughBetweenTwoValues)
{
    const QString file = QStringLiteral("Velmora.ini");
    house_.tree.write(file, house_.tree.read(file) + "[Notes]\r\n" + QByteArray(1'000'000, ';'));
    EXPECT_GE(turnsWhileStoring(), 4);
    EXPECT_EQ(house_.images(kCamera), QStringList{kImageName});
    EXPECT_EQ(house_.value(u"lNew", kCamera), QStringLiteral("1"));
    EXPECT_EQ(house_.value(u"LastModified", kCamera), kLastModifiedStored);
}

TEST_F(LargeSettings, GiveNothingToACameraThatTakesTheRowBetweenTwoValues)
{
    const QString file = QStringLiteral("Velmora.ini");
    house_.tree.write(file, house_.tree.read(file) + "[Notes]\r\n" + QByteArray(1'000'000, ';'));
    add(kCamera);
    LoopTurns loop;
    QObject::connect(&house_.store, &ImageStore::downloaded, &house_, [&] {
        loop.then(2, [this] {
            static_cast<void>(house_.settings.change([](SettingsDraft &draft) {
                setUrl(draft, kCamera, u"http://other/a.jpg");
                forgetRow(draft, kCamera);
            }));
        });
    });
    house_.load(kCamera);
    EXPECT_EQ(house_.table.url(kCamera), QStringLiteral("http://other/a.jpg"));
    for (const QStringView word : {u"LastModified", u"lNew", u"SB", u"LocalTime", u"TimeLoad"}) {
        EXPECT_EQ(house_.value(word, kCamera), QString()) << word.toString().toStdString();
    }
}

TEST_F(LargeSettings, AreNoneInAnOrdinaryFile)
{
    EXPECT_EQ(turnsWhileStoring(), 0);
}

} // namespace
} // namespace velmora::test
