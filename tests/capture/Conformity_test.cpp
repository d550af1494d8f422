// The conformity pass: which files it renames, to what, and what it shows and holds back meanwhile.
#include "ConformityTest.h"

#include <QDir>

#include <algorithm>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kBegin = QStringLiteral("Mise en conformité des fichiers");
const QString kEnd = QStringLiteral("Poursuite du chargement");

struct FormRow
{
    const char *name;
    QByteArray file;
    bool isShort;
};

void PrintTo(const FormRow &row, std::ostream *out)
{
    *out << row.name;
}

class ShortForm : public testing::TestWithParam<FormRow>
{
};

TEST_P(ShortForm, HasItsFirstDotAtTheSixteenthCharacter)
{
    EXPECT_EQ(Conformity::isShortForm(GetParam().file), GetParam().isShort);
}

const FormRow kForms[] = {
    {"Short", "20060307_140509.jpg", true},
    {"Current", "20060307_1405090714.jpg", false},
    {"BareDot", "20060307_140509.", true},
    {"NoDot", "20060307_140509", false},
    {"LaterDotToo", "20060307_140509.a.jpg", true},
    {"EarlierDotToo", "2006.307_140509.jpg", false},
    {"AnyCharacters", "holiday-picture.jpg", true},
    {"OneLess", "20060307_14050.jpg", false},
    {"OneMore", "20060307_1405099.jpg", false},
    {"CharactersOfTwoBytes", "éééééééé_éééééé.jpg", true},
    {"AsManyBytes", "ééééééé_.jpg", false},
    {"BytesThatAreNoUtf8", "2006030\xE9_140509.jpg", true},
    {"DotAlone", ".", false},
    {"Empty", "", false},
};

INSTANTIATE_TEST_SUITE_P(Conformity, ShortForm, testing::ValuesIn(kForms),
                         [](const auto &info) { return std::string(info.param.name); });

struct NameRow
{
    const char *name;
    QByteArray given;
    std::time_t modified;
    QByteArray expected;
};

void PrintTo(const NameRow &row, std::ostream *out)
{
    *out << row.name;
}

class NewName : public ConformityTest, public testing::WithParamInterface<NameRow>
{
};

TEST_P(NewName, HasDayAndHourOfTheFile)
{
    put(GetParam().given, GetParam().modified);
    run();
    EXPECT_EQ(names(), QByteArrayList{GetParam().expected});
}

const NameRow kNames[] = {
    {"SeventhAtFourteen", "20060307_140509.jpg", kModified, "20060307_1405090714.jpg"},
    {"DateOfTheFileNotOfTheName", "19991231_235959.jpg", kModified, "19991231_2359590714.jpg"},
    {"LeadingZeros", "20060307_140509.jpg", kModified - 12 * kHour, "20060307_1405090702.jpg"},
    {"Midnight", "20060307_140509.jpg", kModified - 14 * kHour, "20060307_1405090700.jpg"},
    {"LastHour", "20060307_140509.jpg", kModified + 9 * kHour, "20060307_1405090723.jpg"},
    {"LastDay", "20060307_140509.jpg", kModified + 24 * kDay, "20060307_1405093114.jpg"},
    {"BareDot", "20060307_140509.", kModified, "20060307_1405090714.jpg"},
    {"ExtensionFromTheFirstDot", "20060307_140509.a.JPG", kModified, "20060307_1405090714.a.JPG"},
    {"LongExtension", "20060307_140509.jpeg", kModified, "20060307_1405090714.jpeg"},
    {"DotDot", "20060307_140509..", kModified, "20060307_1405090714.."},
    {"NoDigits", "abcdefgh_ijklmn.png", kModified, "abcdefgh_ijklmn0714.png"},
    {"CharactersOfTwoBytes", "éééééééé_éééééé.jpg", kModified, "éééééééé_éééééé0714.jpg"},
    {"BytesThatAreNoUtf8", "2006030\xE9_140509.j\xFFg", kModified, "2006030\xE9_1405090714.j\xFFg"},
    {"LineEnds", "2006\n307_1405\r9.jpg", kModified, "2006\n307_1405\r90714.jpg"},
    {"LongestName", "20060307_140509." + QByteArray(235, 'x'), kModified,
     "20060307_1405090714." + QByteArray(235, 'x')},
};

INSTANTIATE_TEST_SUITE_P(Conformity, NewName, testing::ValuesIn(kNames),
                         [](const auto &info) { return std::string(info.param.name); });

class KeptName : public ConformityTest, public testing::WithParamInterface<const char *>
{
};

TEST_P(KeptName, IsNotTouched)
{
    put(GetParam());
    run();
    EXPECT_EQ(names(), QByteArrayList{GetParam()});
    EXPECT_EQ(texts_, (QStringList{kBegin, kEnd}));
}

INSTANTIATE_TEST_SUITE_P(Conformity, KeptName,
                         testing::Values("20060307_1405090714.jpg", "20060307_140509",
                                         "20060307-140509.jpg", "holiday-picture.jpg",
                                         "20060307_14050.jpg", "20060307_1405099.jpg",
                                         "2006.307_140509.jpg", ".20060307_14050.jpg"));

TEST_F(ConformityTest, TakesTheHourOfTheLocalTime)
{
    goTo("EET-2");
    put("20060307_140509.jpg");
    run();
    EXPECT_EQ(names(), QByteArrayList{"20060307_1405090716.jpg"});
}

TEST_F(ConformityTest, TakesTheDayOfTheLocalTime)
{
    goTo("EET-2");
    put("20060307_140509.jpg", kModified + 9 * kHour);
    run();
    EXPECT_EQ(names(), QByteArrayList{"20060307_1405090801.jpg"});
}

TEST_F(ConformityTest, TakesTheSummerTimeOfTheFile)
{
    goTo("CET-1CEST,M3.5.0,M10.5.0/3");
    put("20060307_140509.jpg");
    put("20060807_140509.jpg", kModified + 153 * kDay);
    run();
    EXPECT_EQ(names(), (QByteArrayList{"20060307_1405090715.jpg", "20060807_1405090716.jpg"}));
}

TEST_F(ConformityTest, KeepsTheFileItself)
{
    put("20060307_140509.jpg");
    run();
    struct stat info = {};
    ASSERT_EQ(::stat(path("20060307_1405090714.jpg").constData(), &info), 0);
    EXPECT_EQ(info.st_mtim.tv_sec, kModified);
    EXPECT_EQ(
        house_.tree.read(house_.folder(kConformed) + QStringLiteral("/20060307_1405090714.jpg")),
        "picture of 20060307_140509.jpg");
}

TEST_F(ConformityTest, GoesThroughEveryGroupAndRow)
{
    QStringList expected;
    for (int group = 0; group < kGroups; ++group) {
        for (int row = 0; row < kRows; ++row) {
            const CameraAddress camera{group, row};
            house_.table.setUrl(camera, cameraUrl(camera)); // most groups are switched off
            const auto name = QStringLiteral("200603%1_%2.jpg")
                                  .arg(group, 2, 10, QChar(u'0'))
                                  .arg(row, 6, 10, QChar(u'0'));
            house_.putImage(camera, name);
            setModified(folder(camera) + '/' + name.toUtf8(), kModified);
            expected.append(QStringLiteral("Mise en conformité:") + name);
        }
    }
    run();
    EXPECT_EQ(texts_, QStringList{kBegin} + expected + QStringList{kEnd});
    EXPECT_EQ(house_.images({0, 0}), QStringList{QStringLiteral("20060300_0000000714.jpg")});
    EXPECT_EQ(house_.images({9, 9}), QStringList{QStringLiteral("20060309_0000090714.jpg")});
}

TEST_F(ConformityTest, LeavesTheStorageFolderItselfAlone)
{
    house_.tree.write(u"drives/c/in/20060307_140509.jpg", "x");
    run();
    EXPECT_EQ(house_.tree.files(u"drives/c/in"),
              QStringList{QStringLiteral("20060307_140509.jpg")});
}

TEST_F(ConformityTest, RenamesInOrderOfTheNames)
{
    put("20060307_140511.jpg");
    put("20060307_140509.jpg");
    put("20060307_140510.jpg");
    run();
    EXPECT_EQ(texts_,
              (QStringList{kBegin, QStringLiteral("Mise en conformité:20060307_140509.jpg"),
                           QStringLiteral("Mise en conformité:20060307_140510.jpg"),
                           QStringLiteral("Mise en conformité:20060307_140511.jpg"), kEnd}));
}

TEST_F(ConformityTest, LeavesFoldersAndPipesAlone)
{
    ASSERT_EQ(::mkdir(path("20060307_140509.dir").constData(), 0755), 0);
    ASSERT_EQ(::mkfifo(path("20060307_140509.jpg").constData(), 0644), 0);
    ASSERT_EQ(::symlink("nowhere", path("20060307_140509.lnk").constData()), 0);
    run();
    EXPECT_EQ(names(), (QByteArrayList{"20060307_140509.dir", "20060307_140509.jpg",
                                       "20060307_140509.lnk"}));
}

TEST_F(ConformityTest, RenamesALinkToAFileByTheDateOfTheFile)
{
    house_.tree.write(u"elsewhere.jpg", "picture");
    const QByteArray elsewhere = QFile::encodeName(house_.tree.path(u"elsewhere.jpg"));
    setModified(elsewhere, kModified);
    ASSERT_EQ(::symlink(elsewhere.constData(), path("20060307_140509.jpg").constData()), 0);
    setModified(path("20060307_140509.jpg"), kModified + 2 * kDay);
    run();
    ASSERT_EQ(names(), QByteArrayList{"20060307_1405090714.jpg"});
    EXPECT_EQ(QFile::symLinkTarget(shownPath("20060307_1405090714.jpg")),
              house_.tree.path(u"elsewhere.jpg"));
    EXPECT_TRUE(house_.tree.exists(u"elsewhere.jpg"));
}

TEST_F(ConformityTest, ShowsWhatItDoesInTheMainWindow)
{
    put("20060307_140509.jpg");
    run();
    EXPECT_EQ(house_.shown(Caption::Step),
              (QStringList{kBegin, QStringLiteral("Mise en conformité:20060307_140509.jpg")}));
}

TEST_F(ConformityTest, LogsEachFile)
{
    house_.log.setOn(true);
    put("20060307_140509.jpg");
    run();
    EXPECT_EQ(house_.logText(), QStringLiteral("Mise en conformité:20060307_140509.jpg\n"));
}

TEST_F(ConformityTest, ShowsAndLogsANameWithLineEndsOnOneLine)
{
    house_.log.setOn(true);
    put("2006\n307_1405\r9.jpg");
    run();
    const auto shown = QStringLiteral("Mise en conformité:2006 307_1405 9.jpg");
    EXPECT_EQ(texts_, (QStringList{kBegin, shown, kEnd}));
    EXPECT_EQ(house_.logText(), shown + u'\n');
}

TEST_F(ConformityTest, BeginsAndEndsWithoutStorageFolder)
{
    ASSERT_TRUE(QDir(house_.tree.path(u"drives/c/in")).removeRecursively());
    run();
    EXPECT_EQ(texts_, (QStringList{kBegin, kEnd}));
    EXPECT_EQ(ended_, 1);
    EXPECT_FALSE(house_.tree.exists(u"drives/c/in"));
}

TEST_F(ConformityTest, BeginsAndEndsWithoutTheDrive)
{
    house_.storage.edit(QStringLiteral("Q:\\in"));
    house_.storage.putInForce();
    run();
    EXPECT_EQ(texts_, (QStringList{kBegin, kEnd}));
    EXPECT_TRUE(house_.allTexts().contains(kBegin));
}

TEST_F(ConformityTest, HoldsTheCapturesFromBeginToEnd)
{
    QStringList held;
    const auto note = [&] {
        held.append(house_.scheduler.isSuspended() ? QStringLiteral("held")
                                                   : QStringLiteral("free"));
    };
    put("20060307_140509.jpg");
    QObject::connect(&conformity_, &Conformity::began, &house_, note);
    QObject::connect(&conformity_, &Conformity::statusChanged, &house_, note);
    QObject::connect(&conformity_, &Conformity::ended, &house_, note);
    run();
    EXPECT_EQ(held.join(u' '), QStringLiteral("held held held held free"));
    EXPECT_TRUE(house_.timer.isActive());
}

TEST_F(ConformityTest, IsOverWhenItHasEnded)
{
    bool running = true;
    QObject::connect(&conformity_, &Conformity::ended, &house_,
                     [&] { running = conformity_.isRunning(); });
    EXPECT_FALSE(conformity_.isRunning());
    begin();
    EXPECT_TRUE(conformity_.isRunning());
    house_.finish();
    EXPECT_FALSE(running);
}

TEST_F(ConformityTest, HoldsAPassThatRunsAndLetsItGoOn)
{
    add({0, 1}, delayedReply(1s));
    add({0, 2});
    house_.beginTick();
    begin();
    EXPECT_TRUE(house_.scheduler.isSuspended());
    clock_.advance(1s);
    EXPECT_FALSE(conformity_.isRunning());
    EXPECT_EQ(house_.stored(),
              (QStringList{QStringLiteral("0:0"), QStringLiteral("0:1"), QStringLiteral("0:2")}));
}

TEST_F(ConformityTest, DoesNothingWhileAnotherPassRuns)
{
    put("20060307_140509.jpg");
    begin();
    begin();
    house_.finish();
    EXPECT_EQ(began_, 1);
    EXPECT_EQ(ended_, 1);
    EXPECT_EQ(texts_.size(), 3);
    EXPECT_FALSE(house_.scheduler.isSuspended());
}

TEST_F(ConformityTest, RunsAgainAfterwards)
{
    run();
    put("20060307_140509.jpg");
    run();
    EXPECT_EQ(names(), QByteArrayList{"20060307_1405090714.jpg"});
    EXPECT_EQ(ended_, 2);
}

TEST_F(ConformityTest, LetsTheWindowsShowItsBeginBeforeItWorks)
{
    put("20060307_140509.jpg");
    begin();
    EXPECT_EQ(texts_, QStringList{kBegin});
    house_.finish();
}

TEST_F(ConformityTest, LetsEventsRunEveryEightMillisecondsOfWork)
{
    constexpr int kFiles = 20000;
    house_.log.setOn(false);
    put("20060307_100000.jpg");
    for (int number = 1; number < kFiles; ++number) {
        addName(path("20060307_100000.jpg"),
                path("20060307_" + QByteArray::number(100000 + number) + ".jpg"));
    }
    int renamed = 0;
    int mostBetweenYields = 0;
    int yields = busy_.yields();
    QObject::connect(&conformity_, &Conformity::statusChanged, &house_, [&] {
        renamed = busy_.yields() == yields ? renamed + 1 : 1;
        yields = busy_.yields();
        mostBetweenYields = std::max(mostBetweenYields, renamed);
    });
    run();
    EXPECT_EQ(texts_.size(), kFiles + 2);
    EXPECT_LE(mostBetweenYields, 8);
    EXPECT_TRUE(names().contains("20060307_1000000714.jpg"));
    EXPECT_TRUE(names().contains("20060307_1199990714.jpg"));
}

TEST_F(ConformityTest, LetsEventsRunWhileItReadsAFullFolder)
{
    busy_.setCost(8ms); // so long does a piece of the folder take
    run();
    const int withoutFiles = busy_.yields();
    put("another");
    for (int number = 0; number < 10000; ++number) {
        addName(path("another"), path("another " + QByteArray::number(number)));
    }
    run();
    EXPECT_GT(busy_.yields() - withoutFiles, withoutFiles + 2);
}

TEST_F(ConformityTest, StandsStillWhileTheStorageBoxIsEditedAndRenamesNothing)
{
    put("20060307_140509.jpg");
    begin();
    house_.storage.beginEdit();
    clock_.advance(std::chrono::minutes{1});
    EXPECT_EQ(names(), QByteArrayList{"20060307_140509.jpg"});
    EXPECT_TRUE(conformity_.isRunning());
    EXPECT_EQ(ended_, 0);
    house_.storage.putInForce();
    house_.finish();
    EXPECT_EQ(names(), QByteArrayList{"20060307_1405090714.jpg"});
    EXPECT_EQ(began_, 1);
    EXPECT_EQ(ended_, 1);
}

TEST_F(ConformityTest, RenamesNothingInAFolderThatIsOnlyTyped)
{
    const QString typed =
        QStringLiteral("drives/c/other/") + house_.folder(kConformed).section(u'/', -1);
    house_.tree.write(typed + QStringLiteral("/20060307_140509.jpg"), "mine");
    begin();
    house_.storage.edit(QStringLiteral("C:\\other"));
    clock_.advance(std::chrono::minutes{1});
    EXPECT_EQ(house_.tree.files(typed), QStringList{QStringLiteral("20060307_140509.jpg")});
    house_.storage.putInForce();
    house_.finish();
    EXPECT_EQ(house_.tree.files(typed).size(), 1);
    EXPECT_NE(house_.tree.files(typed), QStringList{QStringLiteral("20060307_140509.jpg")});
}

} // namespace
} // namespace velmora::test
