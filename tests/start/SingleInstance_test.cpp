// One program per program folder: who has it, who is notified, and by which window.
#include "start/SingleInstance.h"

#include "support/ScopedEnv.h"
#include "support/TempTree.h"
#include "support/WithoutRootRights.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::test {
namespace {

struct Second
{
    Claim claim = Claim::First;
    pid_t holder = 0;
};

/// A second start, while the first one's event loop goes on.
Second startSecond(const QString &folder)
{
    std::future<Second> second = std::async(std::launch::async, [folder] {
        SingleInstance instance(folder);
        const Claim claim = instance.claim(Front::Windows);
        return Second{claim, instance.holder()};
    });
    while (second.wait_for(std::chrono::seconds(0)) != std::future_status::ready) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return second.get();
}

class SingleInstanceTest : public testing::Test
{
protected:
    SingleInstanceTest() { tree_.makeFolder(u"program"); }

    [[nodiscard]] QString folder() const { return tree_.path(u"program"); }

    [[nodiscard]] QStringList inRuntimeFolder() const
    {
        return QDir(runtime_.path())
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    }

    TempTree tree_;
    TempTree runtime_;
    ScopedEnv environment_{"XDG_RUNTIME_DIR", QFile::encodeName(runtime_.path())};
};

TEST_F(SingleInstanceTest, TheFirstClaimHolds)
{
    SingleInstance first(folder());
    EXPECT_EQ(first.claim(Front::Windows), Claim::First);
    EXPECT_EQ(first.trouble(), QString());
}

TEST_F(SingleInstanceTest, FoldersDoNotDisturbEachOther)
{
    const TempTree other;
    SingleInstance first(folder());
    SingleInstance second(other.path());
    EXPECT_EQ(first.claim(Front::Windows), Claim::First);
    EXPECT_EQ(second.claim(Front::Windows), Claim::First);
}

TEST_F(SingleInstanceTest, TheSecondCallsTheFirst)
{
    SingleInstance first(folder());
    ASSERT_EQ(first.claim(Front::Windows), Claim::First);
    QSignalSpy shown(&first, &SingleInstance::shown);
    const Second second = startSecond(folder());
    EXPECT_EQ(second.claim, Claim::Called);
    EXPECT_EQ(second.holder, ::getpid());
    EXPECT_EQ(shown.count(), 1);
}

TEST_F(SingleInstanceTest, OneThatNeedsNoWindowCallsNone)
{
    SingleInstance first(folder());
    ASSERT_EQ(first.claim(Front::Windows), Claim::First);
    QSignalSpy shown(&first, &SingleInstance::shown);
    SingleInstance second(folder());
    EXPECT_EQ(second.claim(Front::None), Claim::Refused);
    EXPECT_EQ(second.holder(), ::getpid());
    EXPECT_EQ(shown.count(), 0);
}

TEST_F(SingleInstanceTest, OneWithoutWindowsCannotBeCalled)
{
    SingleInstance first(folder());
    ASSERT_EQ(first.claim(Front::None), Claim::First);
    EXPECT_EQ(inRuntimeFolder(), QStringList());
    SingleInstance second(folder());
    EXPECT_EQ(second.claim(Front::Windows), Claim::Refused);
    EXPECT_EQ(second.holder(), ::getpid());
}

TEST_F(SingleInstanceTest, TheClaimEndsWithItsHolderAndLeavesNothing)
{
    {
        SingleInstance first(folder());
        ASSERT_EQ(first.claim(Front::Windows), Claim::First);
    }
    EXPECT_EQ(tree_.files(), QStringList());
    EXPECT_EQ(inRuntimeFolder(), QStringList());
    SingleInstance second(folder());
    EXPECT_EQ(second.claim(Front::Windows), Claim::First);
}

TEST_F(SingleInstanceTest, WhatAKilledRunLeftIsInNoOnesWay)
{
    QString socket;
    {
        SingleInstance first(folder());
        ASSERT_EQ(first.claim(Front::Windows), Claim::First);
        socket = runtime_.path(inRuntimeFolder().value(0));
    }
    runtime_.write(QFileInfo(socket).fileName(), "left over");
    tree_.write(u"program/Velmora.lock", "1\n" + QFile::encodeName(socket) + '\n');
    SingleInstance second(folder());
    EXPECT_EQ(second.claim(Front::Windows), Claim::First);
    EXPECT_EQ(startSecond(folder()).claim, Claim::Called);
}

TEST_F(SingleInstanceTest, LockAndSocketAreForTheUserAlone)
{
    const mode_t before = ::umask(0);
    SingleInstance first(folder());
    const Claim claim = first.claim(Front::Windows);
    ::umask(before);
    ASSERT_EQ(claim, Claim::First);
    ASSERT_EQ(inRuntimeFolder().size(), 1);
    for (const QString &path :
         {tree_.path(u"program/Velmora.lock"), runtime_.path(inRuntimeFolder().first())}) {
        struct stat info = {};
        ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0) << path.toStdString();
        EXPECT_EQ(info.st_mode & 0777, 0600U) << path.toStdString();
    }
}

TEST_F(SingleInstanceTest, TheProcessThatRunsIsFound)
{
    EXPECT_EQ(processOn(folder()), std::nullopt);
    {
        SingleInstance first(folder());
        ASSERT_EQ(first.claim(Front::None), Claim::First);
        EXPECT_EQ(processOn(folder()), ::getpid());
    }
    EXPECT_EQ(processOn(folder()), std::nullopt);
}

TEST_F(SingleInstanceTest, WhatStandsInThePlaceOfTheLockShutsNoOneOut)
{
    tree_.makeFolder(u"program/Velmora.lock");
    SingleInstance first(folder());
    EXPECT_EQ(first.claim(Front::Windows), Claim::First);
    EXPECT_TRUE(first.trouble().contains(folder())) << first.trouble().toStdString();
    EXPECT_TRUE(first.trouble().contains(QStringLiteral("Velmora.lock")));
    EXPECT_EQ(processOn(folder()), ::getpid());
    EXPECT_EQ(startSecond(folder()).claim, Claim::Called);
}

TEST_F(SingleInstanceTest, AFolderThatMayNotBeWrittenIsClaimedAllTheSame)
{
    const WithoutRootRights ordinary;
    const TempTree own;
    const ScopedEnv runtime("XDG_RUNTIME_DIR", QFile::encodeName(own.path()));
    SingleInstance first(QStringLiteral("/usr"));
    EXPECT_EQ(first.claim(Front::Windows), Claim::First);
    EXPECT_TRUE(first.trouble().contains(QStringLiteral("/usr")));
    EXPECT_EQ(startSecond(QStringLiteral("/usr")).claim, Claim::Called);
}

TEST_F(SingleInstanceTest, WithoutAnyPlaceForALockItRunsAndSaysSo)
{
    tree_.makeFolder(u"program/Velmora.lock");
    const ScopedEnv none("XDG_RUNTIME_DIR", QByteArray("relative"));
    SingleInstance first(folder());
    EXPECT_EQ(first.claim(Front::None), Claim::First);
    EXPECT_FALSE(first.trouble().isEmpty());
}

} // namespace
} // namespace velmora::test
