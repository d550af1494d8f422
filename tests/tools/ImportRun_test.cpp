// A run of the import over real folders: what arrives under which name, and what ends it.
#include "ImportRunTest.h"
#include "support/FileSizeLimit.h"
#include "support/RefusedCalls.h"

#include <QSignalSpy>

#include <algorithm>

namespace velmora::test {
namespace {

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

TEST_F(ImportRunTest, ASourceThatCannotBeReadToItsEndIsCopiedAsFarAsItCanAndAborted)
{
    put(kKept);
    const RefusedCall failing(Call::ReadFolder, EIO, 1, 1); // after a piece with all names
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(copied(), QStringList{kKept});
    EXPECT_EQ(result.failure,
              QStringLiteral("the folder could not be read to its end: Input/output error"));
}

TEST_F(ImportRunTest, ASourceThatCannotBeReadAtAllIsNotTakenForEmpty)
{
    put(kKept);
    const RefusedCall failing(Call::ReadFolder, EIO, 1);
    EXPECT_EQ(run().end, ImportEnd::Aborted);
    EXPECT_EQ(copied(), QStringList());
}

TEST_F(ImportRunTest, NothingIsCopiedWhereNotAllNamesAreKnown)
{
    put(kKept);
    const RefusedCall failing(Call::ReadFolder, EIO, 1, 2); // the source has two pieces
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 0);
    EXPECT_EQ(result.failure, QStringLiteral("camera's folder: the folder could not be read to its "
                                             "end: Input/output error"));
}

TEST_F(ImportRunTest, AMissingSourceHoldsNothing)
{
    ImportOrder missing = order();
    missing.source = tree_.path(u"nowhere");
    EXPECT_EQ(run(missing).end, ImportEnd::Copied);
    missing.source.clear(); // a drive that does not exist
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
    // No rights give access there, not even an administrator's.
    ASSERT_EQ(::symlink("/proc/self/mem", native(u"from/20061005_1230450002.jpg").constData()), 0);
    put(QStringLiteral("20061005_1230450003.jpg"));
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(copied(), QStringList{QStringLiteral("20061005_1230450001.jpg")});
}

TEST_F(ImportRunTest, AFileThatChangesWhileItIsCopiedAbortsAndThoseBeforeItStay)
{
    put(kKept);
    putLarge(QStringLiteral("20061005_1230450001.jpg"));
    QObject::connect(&run_, &ImportRun::advanced, &run_, [this] {
        ASSERT_EQ(::truncate(native(u"from/20061005_1230450001.jpg").constData(), 1000), 0);
    });
    const ImportResult result = run();
    EXPECT_EQ(result.end, ImportEnd::Aborted);
    EXPECT_EQ(result.copied, 1);
    EXPECT_EQ(result.failure,
              QStringLiteral("20061005_1230450001.jpg: the file changed while it was copied"));
    EXPECT_EQ(copied(), QStringList{kKept});
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
