// Handing a target to the desktop: the opener on PATH, run with the target unchanged.
#include "base/DesktopOpener.h"

#include "base/UniqueFd.h"
#include "support/RunTask.h"
#include "support/ScopedEnv.h"
#include "support/TempTree.h"

#include <QFile>

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

using test::ScopedEnv;
using test::TempTree;

constexpr int kPatienceMs = 10000;

/// A named pipe, to which a started program writes.
class NamedPipe
{
public:
    explicit NamedPipe(const QString &path)
        : fd_(opened(QFile::encodeName(path)))
    {
    }

    /// What was written until the writer closed its end; empty when there is no writer.
    [[nodiscard]] QByteArray readAll() const
    {
        QByteArray all;
        std::array<char, 256> part{};
        pollfd wait{fd_.get(), POLLIN, 0};
        while (::poll(&wait, 1, kPatienceMs) > 0) {
            const ssize_t got = ::read(fd_.get(), part.data(), part.size());
            if (got <= 0) {
                break;
            }
            all.append(part.data(), got);
        }
        return all;
    }

private:
    static int opened(const QByteArray &path)
    {
        EXPECT_EQ(::mkfifo(path.constData(), 0600), 0);
        return ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }

    UniqueFd fd_;
};

class XdgOpenerTest : public testing::Test
{
protected:
    void installOpener(mode_t mode) const
    {
        tree.write(u"bin/xdg-open",
                   "#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" + path("pipe") + "'\n");
        ASSERT_EQ(::chmod(path("bin/xdg-open").constData(), mode), 0);
    }

    [[nodiscard]] QByteArray path(const char *relative) const
    {
        return QFile::encodeName(tree.path(QString::fromLatin1(relative)));
    }

    TempTree tree;
    XdgOpener opener;
};

TEST_F(XdgOpenerTest, StartsTheProgramOnPathWithTheTargetAsOneArgument)
{
    installOpener(0755);
    const NamedPipe pipe(tree.path(u"pipe"));
    const ScopedEnv env("PATH", path("bin"));
    EXPECT_EQ(opener.open(QStringLiteral("/srv/my cams/'a' \"b\" $HOME é")), OpenOutcome::Started);
    EXPECT_EQ(pipe.readAll(), QByteArray("1|/srv/my cams/'a' \"b\" $HOME é"));
}

TEST_F(XdgOpenerTest, TakesTheFirstOnPath)
{
    installOpener(0755);
    tree.write(u"other/xdg-open", "#!/bin/sh\nexit 1\n");
    ASSERT_EQ(::chmod(path("other/xdg-open").constData(), 0755), 0);
    const NamedPipe pipe(tree.path(u"pipe"));
    const ScopedEnv env("PATH", path("bin") + ':' + path("other"));
    EXPECT_EQ(opener.open(QStringLiteral("http://127.0.0.1/")), OpenOutcome::Started);
    EXPECT_EQ(pipe.readAll(), QByteArray("1|http://127.0.0.1/"));
}

TEST_F(XdgOpenerTest, SaysThatThereIsNoOpenerOnAnEmptyPath)
{
    const ScopedEnv env("PATH", QByteArray(""));
    EXPECT_EQ(opener.open(QStringLiteral("/srv")), OpenOutcome::NoOpener);
}

TEST_F(XdgOpenerTest, SaysThatThereIsNoOpenerInAFolderWithoutOne)
{
    tree.makeFolder(u"bin");
    const ScopedEnv env("PATH", path("bin"));
    EXPECT_EQ(opener.open(QStringLiteral("/srv")), OpenOutcome::NoOpener);
}

TEST_F(XdgOpenerTest, PassesOverAFileThatCannotBeRun)
{
    installOpener(0644);
    const ScopedEnv env("PATH", path("bin"));
    EXPECT_EQ(opener.open(QStringLiteral("/srv")), OpenOutcome::NoOpener);
}

/// Waits for openers that end as the test says.
class FollowTest : public XdgOpenerTest
{
protected:
    void installEnding(const QByteArray &script) const
    {
        tree.write(u"bin/xdg-open", "#!/bin/sh\n" + script + '\n');
        ASSERT_EQ(::chmod(path("bin/xdg-open").constData(), 0755), 0);
    }

    QCoro::Task<> follow(std::stop_token stop)
    {
        outcome = co_await opener.follow(QStringLiteral("/srv/a b"), std::move(stop));
    }

    FollowOutcome followed()
    {
        test::runToEnd(follow({}));
        return outcome.value();
    }

    std::optional<FollowOutcome> outcome;
};

TEST_F(FollowTest, TellsHowTheOpenerEnded)
{
    const std::array<std::pair<const char *, FollowOutcome>, 6> endings = {{
        {"exit 0", FollowOutcome::Opened},
        {"exit 1", FollowOutcome::Failed},
        {"exit 2", FollowOutcome::NotFound},
        {"exit 3", FollowOutcome::NoHandler},
        {"exit 4", FollowOutcome::Failed},
        {"kill -9 $$", FollowOutcome::Failed},
    }};
    const ScopedEnv env("PATH", path("bin"));
    for (const auto &[script, expected] : endings) {
        installEnding(script);
        EXPECT_EQ(followed(), expected) << script;
    }
}

TEST_F(FollowTest, GivesTheTargetAsOneArgument)
{
    installEnding("test \"$#|$1\" = '1|/srv/a b'");
    const ScopedEnv env("PATH", path("bin"));
    EXPECT_EQ(followed(), FollowOutcome::Opened);
}

TEST_F(FollowTest, HasNoHandlerWithoutAnOpener)
{
    const ScopedEnv env("PATH", path("bin"));
    EXPECT_EQ(followed(), FollowOutcome::NoHandler);
}

TEST_F(FollowTest, FailsWithAnOpenerThatIsNoProgram)
{
    tree.write(u"bin/xdg-open", "\x7f"
                                "ELF is not");
    ASSERT_EQ(::chmod(path("bin/xdg-open").constData(), 0755), 0);
    const ScopedEnv env("PATH", path("bin"));
    EXPECT_EQ(followed(), FollowOutcome::Failed);
}

TEST_F(FollowTest, LeavesTheOpenerToItselfWhenStopped)
{
    installEnding(("read line < '" + path("go") + "'; printf done > '" + path("pipe") + "'"));
    ASSERT_EQ(::mkfifo(path("go").constData(), 0600), 0);
    const NamedPipe pipe(tree.path(u"pipe"));
    const ScopedEnv env("PATH", path("bin"));
    std::stop_source stop;
    stop.request_stop();
    test::runToEnd(follow(stop.get_token()));
    EXPECT_EQ(outcome, FollowOutcome::Stopped);
    const UniqueFd go(::open(path("go").constData(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(::write(go.get(), "go\n", 3), 3);
    EXPECT_EQ(pipe.readAll(), QByteArray("done"));
}

} // namespace
} // namespace velmora
