// A run of the import over real folders: what arrives under which name, and what ends it.
#include "tools/ImportRun.h"

#include "base/DateText.h"
#include "base/FileDates.h"
#include "support/FakeClock.h"
#include "support/FileSizeLimit.h"
#include "support/RunTask.h"
#include "support/TempTree.h"
#include "tools/ImportName.h"

#include <QFile>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {
namespace {

const QString kKept = QStringLiteral("20061005_1230450000.jpg");

constexpr qsizetype kLarge = 40 << 20; // more than is copied between two turns of the event loop

class ImportRunTest : public testing::Test
{
protected:
    ImportRunTest()
    {
        tree_.makeFolder(u"from");
        tree_.makeFolder(u"in/camera");
    }

    [[nodiscard]] QByteArray native(QStringView path) const
    {
        return QFile::encodeName(tree_.path(path));
    }

    [[nodiscard]] ImportOrder order(const QString &filter = QStringLiteral("*.jpg")) const
    {
        return {QStringLiteral("C:\\from\\"), QStringLiteral("C:\\in\\\\camera\\"),
                tree_.path(u"from"),          tree_.path(u"in/camera"),
                tree_.path(u"in/tmp"),        filter};
    }

    ImportResult run(const ImportOrder &what) { return run(run_, what); }

    ImportResult run(ImportRun &run, const ImportOrder &what)
    {
        turns_ = 0;
        QTimer everyTurn;
        QObject::connect(&everyTurn, &QTimer::timeout, &everyTurn, [this] {
            if (++turns_ == stopInTurn_) {
                atOnce_.request_stop();
            }
        });
        everyTurn.start(0);
        runToEnd(store(run, what), std::chrono::seconds{60});
        return result_;
    }

    ImportResult run() { return run(order()); }

    QCoro::Task<> store(ImportRun &run, ImportOrder what)
    {
        result_ = co_await run.run(what, afterFile_.get_token(), atOnce_.get_token());
    }

    void put(const QString &name, QByteArrayView bytes = "picture") const
    {
        tree_.write(QString(QStringLiteral("from/") + name), bytes);
    }

    // Names of any bytes.
    void put(const QByteArray &name) const
    {
        const int fd = ::open((native(u"from") + '/' + name).constData(), O_CREAT | O_WRONLY, 0644);
        ASSERT_GE(fd, 0) << name.constData();
        ::close(fd);
    }

    // A name of the rule for each number below 100,000: "20061001_2345000000.jpg" for 12345.
    static QByteArray numbered(int number)
    {
        const QByteArray digits = QByteArray::number(number).rightJustified(5, '0');
        return "2006100" + digits.first(1) + '_' + digits.last(4) + "000000.jpg";
    }

    // Another name for a file, which costs less than another file.
    void linkTo(QStringView file, QStringView folder, const QByteArray &name) const
    {
        ASSERT_EQ(::link(native(file).constData(), (native(folder) + '/' + name).constData()), 0);
    }

    // With names so long that there are few in a piece.
    void fillTarget() const
    {
        constexpr int kFiles = 20'000;
        tree_.write(u"in/one", "there before");
        for (int i = 0; i < kFiles; ++i) {
            linkTo(u"in/one", u"in/camera", 'z' + QByteArray::number(i).rightJustified(229, 'z'));
        }
    }

    // A file of holes.
    void putLarge(const QString &name) const
    {
        put(name, "");
        const QString path = QStringLiteral("from/") + name;
        ASSERT_EQ(::truncate(native(path).constData(), kLarge), 0);
    }

    void take(const QString &name, QByteArrayView bytes = "there before") const
    {
        tree_.write(QString(QStringLiteral("in/camera/") + name), bytes);
    }

    [[nodiscard]] QStringList copied() const { return tree_.files(u"in/camera"); }

    [[nodiscard]] QByteArray bytesOf(const QString &name) const
    {
        return tree_.read(QString(QStringLiteral("in/camera/") + name));
    }

    // The name that a source file gets.
    [[nodiscard]] QString datedName(const QString &name, qint16 collisions) const
    {
        const QString path = QStringLiteral("from/") + name;
        const auto created = creationTime(native(path));
        return QString::fromUtf8(
            importName(QFile::encodeName(name), created.value_or(WallTime()), collisions));
    }

    TempTree tree_;
    FakeClock clock_;
    ImportRun run_{clock_};
    ImportResult result_;
    std::stop_source afterFile_;
    std::stop_source atOnce_;
    int turns_ = 0;      // of the event loop while the run ran
    int stopInTurn_ = 0; // that one stops the run at once; 0 for none
};

TEST_F(ImportRunTest, ANameOfTheRuleIsKept)
{
    put(kKept, "bytes");
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Copied);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(copied(), QStringList{kKept});
    EXPECT_EQ(bytesOf(kKept), "bytes");
    EXPECT_TRUE(tree_.exists(u"from/20061005_1230450000.jpg"));
}

TEST_F(ImportRunTest, AnyOtherGetsTheDateOfItsCreationNotOfItsChange)
{
    put(QStringLiteral("IMG_1.JPG"));
    const timespec old[] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, native(u"from/IMG_1.JPG").constData(), old, 0), 0);
    EXPECT_EQ(run().copied, 1);
    EXPECT_EQ(copied(), QStringList{datedName(QStringLiteral("IMG_1.JPG"), 0)});
    EXPECT_TRUE(copied().first().startsWith(u"20"));
    EXPECT_TRUE(copied().first().endsWith(QStringLiteral("0000.JPG")));
}

TEST_F(ImportRunTest, ASecondRunLosesTheDotAndAThirdALetter)
{
    put(kKept);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(run().copied, 1);
    }
    EXPECT_EQ(copied(), (QStringList{kKept, QStringLiteral("20061005_1230450001jpg"),
                                     QStringLiteral("20061005_1230450002pg")}));
}

TEST_F(ImportRunTest, ANameUsedUpByCollisionsAbortsTheRun)
{
    put(kKept);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(run().end, ImportEnd::Copied);
    }
    EXPECT_EQ(copied().last(), QStringLiteral("20061005_1230450004"));
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 0);
    EXPECT_EQ(copied().size(), 5);
}

TEST_F(ImportRunTest, TheCounterBelongsToTheRunAndLaterNamesBeginWithIt)
{
    take(kKept);
    put(kKept);
    put(QStringLiteral("later.jpg")); // behind the other in name order
    EXPECT_EQ(run().copied, 2);
    EXPECT_TRUE(copied().contains(QStringLiteral("20061005_1230450001jpg")));
    EXPECT_TRUE(copied().contains(datedName(QStringLiteral("later.jpg"), 1)));
    EXPECT_EQ(run_.progress().collisions, 1);
}

TEST_F(ImportRunTest, ANewRunBeginsItsCounterAnew)
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

TEST_F(ImportRunTest, FilesOfOneSecondCollideOneAfterTheOther)
{
    for (const char16_t c : {u'a', u'b', u'c'}) {
        put(QString(QChar(c)) + QStringLiteral(".jpg"));
    }
    const ImportResult result = run();
    EXPECT_EQ(result.copied, 3);
    EXPECT_EQ(copied().size(), 3);
}

TEST_F(ImportRunTest, NamesAreTakenInTheirOrderWhateverTheirCase)
{
    for (const QString &name : {QStringLiteral("b.jpg"), QStringLiteral("C.jpg"),
                                QStringLiteral("a.jpg"), QStringLiteral("D.jpg")}) {
        put(name, name.toLatin1());
    }
    put(QStringLiteral("c2.jpg"), "too long");
    const FileSizeLimit full(5); // the others have five letters each
    EXPECT_EQ(run().copied, 3);
    QByteArrayList contents;
    for (const QString &name : copied()) {
        contents.append(bytesOf(name));
    }
    std::ranges::sort(contents);
    EXPECT_EQ(contents.join(), "C.jpga.jpgb.jpg");
}

TEST_F(ImportRunTest, WhatStandsInTheWayIsNeverReplaced)
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

TEST_F(ImportRunTest, ANameWithWildcardsIsTakenByWhateverMatchesIt)
{
    take(QStringLiteral("20061005_1230450000.gif"));
    put(QByteArray("2006100?_1230450000.*"));
    EXPECT_EQ(run(order(QStringLiteral("*"))).copied, 1);
    EXPECT_EQ(copied().last(), QStringLiteral("2006100?_1230450001*"));
}

TEST_F(ImportRunTest, ANameWithWildcardsIsTakenByFoldersPipesAndLinksThatLeadNowhereToo)
{
    tree_.makeFolder(u"in/camera/20061005_1230450000.gif");
    ASSERT_EQ(::mkfifo(native(u"in/camera/20061005_1230450001gif").constData(), 0644), 0);
    ASSERT_EQ(::symlink("nowhere", native(u"in/camera/20061005_1230450002if").constData()), 0);
    put(QByteArray("2006100?_1230450000.???"));
    EXPECT_EQ(run(order(QString())).copied, 1);
    EXPECT_TRUE(tree_.exists(u"in/camera/2006100?_1230450003?"));
    EXPECT_EQ(run_.progress().collisions, 3);
}

TEST_F(ImportRunTest, ANameWithWildcardsIsLookedForInAFullFolderInPieces)
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

TEST_F(ImportRunTest, AStopAtOnceEndsTheSearchInAFullFolder)
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

// Each search is too short to let events run by itself.
TEST_F(ImportRunTest, EventsGetTheirTurnBetweenManySearchesForAName)
{
    constexpr int kCollisions = 200;
    fillTarget();
    take(QStringLiteral("2x061005_1230450000.x"));
    for (int i = 1; i < kCollisions; ++i) {
        take(QStringLiteral("2x061005_123045%1x").arg(i, 4, 10, QLatin1Char('0')));
    }
    put(QByteArray("2?061005_1230450000.") + QByteArray(210, '*'));
    SystemClock clock;
    ImportRun timed(clock);
    EXPECT_EQ(run(timed, order(QString())).copied, 1);
    EXPECT_EQ(timed.progress().collisions, kCollisions);
    EXPECT_GE(turns_, 5);
}

TEST_F(ImportRunTest, IntoItsOwnFolderARunDoesNotMeetItsCopies)
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

TEST_F(ImportRunTest, EqualTextsAreIdenticalAndNothingIsCopied)
{
    put(kKept);
    ImportOrder same = order();
    same.targetText = same.sourceText;
    EXPECT_EQ(run(same).end, ImportEnd::Identical);
    EXPECT_EQ(copied(), QStringList());
}

TEST_F(ImportRunTest, TextsThatDifferInCaseAreNotIdentical)
{
    put(kKept);
    ImportOrder other = order();
    other.targetText = other.sourceText.toLower();
    EXPECT_EQ(run(other).end, ImportEnd::Copied);
}

TEST_F(ImportRunTest, WithoutAMatchNoneIsCopied)
{
    put(QStringLiteral("a.png"));
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Copied);
    EXPECT_EQ(result.copied, 0);
}

TEST_F(ImportRunTest, AMissingSourceHoldsNothing)
{
    ImportOrder missing = order();
    missing.source = tree_.path(u"nowhere");
    EXPECT_EQ(run(missing).end, ImportEnd::Copied);
    missing.source.clear(); // a drive that is not there
    EXPECT_EQ(run(missing).end, ImportEnd::Copied);
    EXPECT_EQ(result_.copied, 0);
}

TEST_F(ImportRunTest, AMissingTargetAbortsTheRun)
{
    put(kKept);
    ImportOrder missing = order();
    missing.target = tree_.path(u"nowhere");
    EXPECT_EQ(run(missing).end, ImportEnd::Aborted);
    missing.target.clear();
    EXPECT_EQ(run(missing).end, ImportEnd::Aborted);
}

TEST_F(ImportRunTest, FoldersPipesAndSocketsAreNoFiles)
{
    put(kKept);
    tree_.makeFolder(u"from/20061005_1230450009.jpg");
    ASSERT_EQ(::mkfifo(native(u"from/pipe.jpg").constData(), 0644), 0);
    ASSERT_EQ(::mknod(native(u"from/socket.jpg").constData(), S_IFSOCK | 0644, 0), 0);
    ASSERT_EQ(::symlink("nowhere", native(u"from/nothing.jpg").constData()), 0);
    EXPECT_EQ(run().copied, 1);
    EXPECT_EQ(copied(), QStringList{kKept});
}

TEST_F(ImportRunTest, LinksToFilesAreFiles)
{
    tree_.write(u"elsewhere", "far");
    ASSERT_EQ(::symlink("../elsewhere", native(u"from/20061005_1230450000.jpg").constData()), 0);
    EXPECT_EQ(run().copied, 1);
    EXPECT_EQ(bytesOf(kKept), "far");
}

TEST_F(ImportRunTest, AFileThatCannotBeReadAbortsAndThoseBeforeItStay)
{
    put(QStringLiteral("20061005_1230450001.jpg"));
    // Nobody's rights reach there, not even an administrator's.
    ASSERT_EQ(::symlink("/proc/self/mem", native(u"from/20061005_1230450002.jpg").constData()), 0);
    put(QStringLiteral("20061005_1230450003.jpg"));
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(copied(), QStringList{QStringLiteral("20061005_1230450001.jpg")});
}

TEST_F(ImportRunTest, AFullDiskAbortsBehindWhatFitted)
{
    put(QStringLiteral("20061005_1230450001.jpg"), "tiny");
    put(QStringLiteral("20061005_1230450002.jpg"), QByteArray(10'000, 'x'));
    put(QStringLiteral("20061005_1230450003.jpg"), "tiny");
    const FileSizeLimit full(5000);
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(copied(), QStringList{QStringLiteral("20061005_1230450001.jpg")});
    EXPECT_EQ(run_.progress().copied, 1);
}

TEST_F(ImportRunTest, NamesOfEveryShapeArrive)
{
    const QByteArrayList names{".jpg",
                               "..jpg",
                               "...",
                               "noDot",
                               "two\nlines.jpg",
                               "\xFF\xFE.jpg",
                               "d\xC3\xA9p.jpg",
                               " .jpg",
                               "a b.jpg",
                               "back\\slash.jpg",
                               "?.jpg",
                               "*.jpg",
                               "-rf",
                               QByteArray(200, 'n') + ".jpg"};
    for (const QByteArray &name : names) {
        put(name);
    }
    const ImportResult result = run(order(QString()));
    EXPECT_EQ(result.end, ImportEnd::Copied);
    EXPECT_EQ(result.copied, names.size());
    EXPECT_EQ(run_.progress().files, names.size());
    ::unlink((native(u"from") + "/\xFF\xFE.jpg").constData()); // the tree could not remove it
}

TEST_F(ImportRunTest, ANameThatGetsTooLongAborts)
{
    put(QByteArray(255, 'n'));
    const ImportResult result = run(order(QStringLiteral("*")));
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(copied(), QStringList());
}

TEST_F(ImportRunTest, ALongKeptNameStays)
{
    const QByteArray name = QByteArray("20061005_1230450000.") + QByteArray(235, 'n');
    put(name);
    EXPECT_EQ(run(order(QStringLiteral("*"))).copied, 1);
    EXPECT_EQ(copied(), QStringList{QString::fromUtf8(name)});
}

// Every name is taken, so that each file uses the counter up by one.
TEST_F(ImportRunTest, TheCounterKeepsItsLastFourDigitsAndOverflowsAt32768)
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

TEST_F(ImportRunTest, EventsGetTheirTurnAndCanStopItBehindAFile)
{
    for (int i = 0; i < 500; ++i) {
        put("20061005_123045" + QByteArray::number(i).rightJustified(4, '0') + ".jpg");
    }
    QSignalSpy advanced(&run_, &ImportRun::advanced);
    QObject::connect(&run_, &ImportRun::advanced, &run_, [this] { afterFile_.request_stop(); });
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Stopped);
    EXPECT_GT(result.copied, 0);
    EXPECT_LT(result.copied, 100);
    EXPECT_EQ(copied().size(), result.copied);
    EXPECT_EQ(advanced.size(), 2);
}

TEST_F(ImportRunTest, StoppedBeforeItsBeginItCopiesNothing)
{
    put(kKept);
    afterFile_.request_stop();
    EXPECT_EQ(run().end, ImportEnd::Stopped);
    EXPECT_EQ(copied(), QStringList());
}

TEST_F(ImportRunTest, AStopAtOnceLeavesNothingOfTheFileInHand)
{
    putLarge(kKept);
    QObject::connect(&run_, &ImportRun::advanced, &run_, [this] { atOnce_.request_stop(); });
    EXPECT_EQ(run().end, ImportEnd::Stopped);
    EXPECT_EQ(result_.copied, 0);
    EXPECT_EQ(copied(), QStringList());
}

TEST_F(ImportRunTest, AStopBehindTheFileLetsALargeFileEndFirst)
{
    putLarge(kKept);
    put(QStringLiteral("20061005_1230450001.jpg"));
    QObject::connect(&run_, &ImportRun::advanced, &run_, [this] { afterFile_.request_stop(); });
    EXPECT_EQ(run().end, ImportEnd::Stopped);
    EXPECT_EQ(copied(), QStringList{kKept});
    EXPECT_EQ(bytesOf(kKept).size(), kLarge);
}

TEST_F(ImportRunTest, ATargetThatVanishesAborts)
{
    for (int i = 0; i < 500; ++i) {
        put("20061005_123045" + QByteArray::number(i).rightJustified(4, '0') + ".jpg");
    }
    QObject::connect(&run_, &ImportRun::advanced, &run_, [this] {
        ::rename(native(u"in/camera").constData(), native(u"in/away").constData());
    });
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(tree_.files(u"in/away").size(), result.copied);
    EXPECT_FALSE(tree_.exists(u"in/camera"));
}

TEST_F(ImportRunTest, ASourceFileThatVanishesAborts)
{
    for (int i = 0; i < 500; ++i) {
        put("20061005_123045" + QByteArray::number(i).rightJustified(4, '0') + ".jpg");
    }
    QObject::connect(&run_, &ImportRun::advanced, &run_,
                     [this] { ::unlink(native(u"from/20061005_1230450400.jpg").constData()); });
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 400);
}

TEST_F(ImportRunTest, FiftyThousandFilesArrive)
{
    constexpr int kFiles = 50'000;
    put(QStringLiteral("one"), "picture");
    for (int i = 0; i < kFiles; ++i) {
        linkTo(u"from/one", u"from", numbered(i));
    }
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Copied);
    EXPECT_EQ(result.copied, kFiles);
    EXPECT_EQ(copied().size(), kFiles);
}

} // namespace
} // namespace velmora::test
