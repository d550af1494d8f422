// Names already taken: what an import run tries next, and how long it searches.
#include "ImportRunTest.h"
#include "support/BusyClock.h"

namespace velmora::test {
namespace {

class ImportCollision : public ImportRunTest
{
};

TEST_F(ImportCollision, ASecondRunLosesTheDotAndAThirdALetter)
{
    put(kKept);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(run().copied, 1);
    }
    EXPECT_EQ(copied(), (QStringList{kKept, QStringLiteral("20061005_1230450001jpg"),
                                     QStringLiteral("20061005_1230450002pg")}));
}

TEST_F(ImportCollision, NamesThatDifferOnlyInCaseAreTheSame)
{
    put(kKept);
    EXPECT_EQ(run().copied, 1);
    ASSERT_EQ(::unlink((native(u"from/") + kKept.toLatin1()).constData()), 0);
    put(QStringLiteral("20061005_1230450000.JPG"));
    EXPECT_EQ(run().copied, 1);
    EXPECT_EQ(copied(), (QStringList{kKept, QStringLiteral("20061005_1230450001JPG")}));
}

TEST_F(ImportCollision, ANameUsedUpByCollisionsAbortsTheRun)
{
    put(kKept);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(run().end, ImportEnd::Copied);
    }
    EXPECT_EQ(copied().last(), QStringLiteral("20061005_1230450004"));
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.failure, kKept + QStringLiteral(": no name is free for it"));
    EXPECT_EQ(result.copied, 0);
    EXPECT_EQ(copied().size(), 5);
}

TEST_F(ImportCollision, TheCounterBelongsToTheRunAndLaterNamesBeginWithIt)
{
    take(kKept);
    put(kKept);
    put(QStringLiteral("later.jpg")); // after the other in name order
    EXPECT_EQ(run().copied, 2);
    EXPECT_TRUE(copied().contains(QStringLiteral("20061005_1230450001jpg")));
    EXPECT_TRUE(copied().contains(datedName(QStringLiteral("later.jpg"), 1)));
    EXPECT_EQ(run_.progress().collisions, 1);
}

TEST_F(ImportCollision, ANewRunResetsItsCounter)
{
    take(kKept);
    put(kKept);
    EXPECT_EQ(run().copied, 1);
    ASSERT_EQ(::unlink(native(u"from/20061005_1230450000.jpg").constData()), 0);
    put(QStringLiteral("later.jpg"));
    EXPECT_EQ(run().copied, 1);
    EXPECT_TRUE(copied().contains(datedName(QStringLiteral("later.jpg"), 0)));
    EXPECT_EQ(run_.progress().collisions, 0);
}

TEST_F(ImportCollision, FilesOfOneSecondCollideOneAfterTheOther)
{
    for (const char16_t c : {u'a', u'b', u'c'}) {
        put(QString(QChar(c)) + QStringLiteral(".jpg"));
    }
    const ImportResult result = run();
    EXPECT_EQ(result.copied, 3);
    EXPECT_EQ(copied().size(), 3);
}

TEST_F(ImportCollision, WhatStandsInTheWayIsNeverReplaced)
{
    take(kKept, "mine");
    tree_.makeFolder(u"in/camera/20061005_1230450001jpg");
    ASSERT_EQ(::symlink("nowhere", native(u"in/camera/20061005_1230450002pg").constData()), 0);
    put(kKept, "new");
    EXPECT_EQ(run().copied, 1);
    EXPECT_EQ(bytesOf(kKept), "mine");
    EXPECT_EQ(bytesOf(QStringLiteral("20061005_1230450003g")), "new");
    EXPECT_EQ(run_.progress().collisions, 3);
}

TEST_F(ImportCollision, ANameWithWildcardsIsTakenByWhateverMatchesIt)
{
    take(QStringLiteral("20061005_1230450000.gif"));
    put(QByteArray("2006100?_1230450000.*"));
    EXPECT_EQ(run(order(QStringLiteral("*"))).copied, 1);
    EXPECT_EQ(copied().last(), QStringLiteral("2006100?_1230450001*"));
}

TEST_F(ImportCollision, ANameWithWildcardsIsTakenByFoldersPipesAndLinksThatLeadNowhereToo)
{
    tree_.makeFolder(u"in/camera/20061005_1230450000.gif");
    ASSERT_EQ(::mkfifo(native(u"in/camera/20061005_1230450001gif").constData(), 0644), 0);
    ASSERT_EQ(::symlink("nowhere", native(u"in/camera/20061005_1230450002if").constData()), 0);
    put(QByteArray("2006100?_1230450000.???"));
    EXPECT_EQ(run(order(QString())).copied, 1);
    EXPECT_TRUE(tree_.exists(u"in/camera/2006100?_1230450003?"));
    EXPECT_EQ(run_.progress().collisions, 3);
}

TEST_F(ImportCollision, ANameWithWildcardsIsLookedForInAFullFolderInPieces)
{
    put(kKept);
    EXPECT_EQ(run(order(QString())).copied, 1);
    const int without = turns_;
    fillTarget();
    ASSERT_EQ(::unlink(native(u"from/20061005_1230450000.jpg").constData()), 0);
    put(QByteArray("2?061005_1230450009.jpg"));
    EXPECT_EQ(run(order(QString())).copied, 1);
    EXPECT_TRUE(tree_.exists(u"in/camera/2?061005_1230450009.jpg"));
    EXPECT_GE(turns_, without + 2);
}

TEST_F(ImportCollision, AStopAtOnceEndsTheSearchInAFullFolder)
{
    put(kKept);
    EXPECT_EQ(run(order(QString())).copied, 1);
    stopInTurn_ = turns_ + 1;
    fillTarget();
    const qsizetype before = copied().size();
    ASSERT_EQ(::unlink(native(u"from/20061005_1230450000.jpg").constData()), 0);
    put(QByteArray("2?061005_1230450009.jpg"));
    EXPECT_EQ(run(order(QString())).end, ImportEnd::Stopped);
    EXPECT_EQ(copied().size(), before);
}

TEST_F(ImportCollision, AStarAloneIsAWildcardToo)
{
    take(QStringLiteral("20061005_1230450000.gif"));
    put(QByteArray("2006*05_12304500000.jpg"));
    put(QByteArray("2006*005_1230450000.g*"));
    EXPECT_EQ(run(order(QStringLiteral("*.g*"))).copied, 1);
    EXPECT_TRUE(tree_.exists(u"in/camera/2006*005_1230450001g*"));
}

// Each search takes 2 ms.
TEST_F(ImportCollision, EventsGetTheirTurnBetweenManySearchesForAName)
{
    constexpr int kCollisions = 200;
    take(QStringLiteral("2x061005_1230450000.x"));
    for (int i = 1; i < kCollisions; ++i) {
        take(QStringLiteral("2x061005_123045%1x").arg(i, 4, 10, QLatin1Char('0')));
    }
    put(QByteArray("2?061005_1230450000.") + QByteArray(210, '*'));
    FakeClock still;
    BusyClock clock(still);
    ImportRun timed(clock, gate_);
    EXPECT_EQ(run(timed, order(QString())).copied, 1);
    EXPECT_EQ(timed.progress().collisions, kCollisions);
    EXPECT_GE(turns_, kCollisions / 5);
}

TEST_F(ImportCollision, IntoItsOwnFolderARunDoesNotMeetItsCopies)
{
    take(kKept, "kept");
    take(QStringLiteral("other.jpg"), "other");
    ImportOrder own = order();
    own.source = own.target;
    const ImportResult result = run(own);
    EXPECT_EQ(result.end, ImportEnd::Copied);
    EXPECT_EQ(result.copied, 2);
    EXPECT_EQ(copied().size(), 4);
    EXPECT_EQ(bytesOf(QStringLiteral("20061005_1230450001jpg")), "kept");
}

// Every name is taken, so that each file uses up a number.
TEST_F(ImportCollision, TheCounterKeepsItsLastFourDigitsAndOverflowsAt32768)
{
    constexpr int kFiles = 32'769;
    put(QStringLiteral("one"));
    tree_.write(u"in/two", "there before");
    for (int i = 0; i < kFiles; ++i) {
        linkTo(u"from/one", u"from", numbered(i));
        linkTo(u"in/two", u"in/camera", numbered(i));
    }
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 32'767);
    EXPECT_EQ(run_.progress().collisions, 32'767);
    for (const char *const name :
         {"20061000_0000000001jpg", "20061000_9998009999jpg", "20061000_9999000000jpg",
          "20061001_0001000002jpg", "20061003_2766002767jpg"}) {
        EXPECT_TRUE(tree_.exists(QStringLiteral("in/camera/") + QString::fromUtf8(name))) << name;
    }
}

} // namespace
} // namespace velmora::test
