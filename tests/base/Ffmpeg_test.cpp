// How a run of ffmpeg ends and what is left of it; here it is a script of the test's.
#include "base/Ffmpeg.h"

#include "support/ScopedEnv.h"
#include "support/TempTree.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <unistd.h>

namespace velmora::test {
namespace {

constexpr int kPatienceMs = 20'000;
constexpr qint64 kMemory = qint64{3} << 30;

class FfmpegTest : public testing::Test
{
protected:
    /// $OUT is the test's folder.
    void install(const QByteArray &script) const
    {
        tree.write(u"bin/ffmpeg", "#!/bin/sh\nOUT=" + tree.path().toUtf8() + "\n" + script + "\n");
        QFile::setPermissions(tree.path(u"bin/ffmpeg"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    FfmpegEnd run()
    {
        QSignalSpy ended(ffmpeg.get(), &Ffmpeg::ended);
        ffmpeg->begin({QStringLiteral("-word")});
        EXPECT_TRUE(ended.isEmpty()) << "the caller may not be ready for it yet";
        EXPECT_TRUE(ended.wait(kPatienceMs));
        EXPECT_EQ(ended.size(), 1);
        return ended.isEmpty() ? FfmpegEnd::NotStarted : ended.first().first().value<FfmpegEnd>();
    }

    /// True when the process with this number has ended, whether or not it was waited for.
    [[nodiscard]] bool isGone(QStringView pidFile) const
    {
        QFile stat(
            QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(tree.read(pidFile).trimmed())));
        return !stat.open(QFile::ReadOnly) || stat.readAll().contains(") Z ");
    }

    TempTree tree;
    ScopedEnv path{"PATH", tree.path(u"bin").toUtf8() + ":/usr/bin:/bin"};
    std::unique_ptr<Ffmpeg> ffmpeg = std::make_unique<Ffmpeg>(kMemory);
};

TEST_F(FfmpegTest, EndsWell)
{
    install("printf '%s' \"$*\"");
    EXPECT_EQ(run(), FfmpegEnd::Good);
    EXPECT_EQ(ffmpeg->readAllStandardOutput(), "-word");
    EXPECT_EQ(ffmpeg->lastLine(), QString());
}

TEST_F(FfmpegTest, SaysWhyItFailedInItsLastLine)
{
    install("echo first >&2; echo ' No space left ' >&2; exit 1");
    EXPECT_EQ(run(), FfmpegEnd::Failed);
    EXPECT_EQ(ffmpeg->complaints(), "first\n No space left \n");
    EXPECT_EQ(ffmpeg->lastLine(), QStringLiteral("No space left"));
}

TEST_F(FfmpegTest, KeepsOnlyTheEndOfManyComplaints)
{
    install("head -c 1000000 /dev/zero >&2; echo; echo last >&2");
    EXPECT_EQ(run(), FfmpegEnd::Good);
    EXPECT_EQ(ffmpeg->complaints().size(), 4096);
    EXPECT_TRUE(ffmpeg->lastLine().endsWith(QStringLiteral("last")));
}

TEST_F(FfmpegTest, TellsASignalFromAFailure)
{
    install("kill -SEGV $$");
    EXPECT_EQ(run(), FfmpegEnd::Killed);
}

TEST_F(FfmpegTest, TellsThatItIsMissingFromAProgramThatDoesNotRun)
{
    tree.write(u"bin/ffmpeg", "#!/no/such/shell\n");
    QFile::setPermissions(tree.path(u"bin/ffmpeg"), QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_EQ(run(), FfmpegEnd::NotStarted);
    const ScopedEnv nowhere("PATH", tree.path().toUtf8());
    ffmpeg = std::make_unique<Ffmpeg>(kMemory);
    EXPECT_EQ(run(), FfmpegEnd::NotInstalled);
}

TEST_F(FfmpegTest, BoundsItsMemoryAndLeavesTheTerminal)
{
    install("cat /proc/self/limits; cat /proc/$$/stat");
    EXPECT_EQ(run(), FfmpegEnd::Good);
    const QString said = QString::fromUtf8(ffmpeg->readAllStandardOutput()).simplified();
    EXPECT_TRUE(said.contains(QStringLiteral("Max data size 3221225472 3221225472 bytes")));
    // Its number, name, state and parent; the numbers of its group and of its session.
    const QStringList stat = said.section(QStringLiteral("(ffmpeg)"), -1).split(u' ');
    EXPECT_EQ(stat.at(3), stat.at(4)) << said.toStdString();
    EXPECT_NE(stat.at(4).toInt(), ::getsid(0));
}

TEST_F(FfmpegTest, IsKilledWithAllThatItStarted)
{
    install("sleep 100 & echo $! > $OUT/new; mv $OUT/new $OUT/child\nwait");
    QSignalSpy ended(ffmpeg.get(), &Ffmpeg::ended);
    ffmpeg->begin({});
    ASSERT_TRUE(QTest::qWaitFor([this] { return tree.exists(u"child"); }, kPatienceMs));
    ffmpeg->killAll();
    EXPECT_TRUE(!ended.isEmpty() || ended.wait(kPatienceMs));
    EXPECT_EQ(ended.first().first().value<FfmpegEnd>(), FfmpegEnd::Killed);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isGone(u"child"); }, kPatienceMs));
}

TEST_F(FfmpegTest, LeavesNothingOfWhatItStartedWhenItHasEndedItself)
{
    install("sleep 100 > $OUT/out 2>&1 & echo $! > $OUT/child");
    EXPECT_EQ(run(), FfmpegEnd::Good);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isGone(u"child"); }, kPatienceMs));
}

} // namespace
} // namespace velmora::test
