// The order of coroutines that must not overlap.
#include "base/Turnstile.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace velmora {
namespace {

QCoro::Task<> pass(Turnstile &turnstile, QStringList &log, QString name)
{
    co_await turnstile.enter();
    log.append(name);
}

class TurnstileTest : public testing::Test
{
protected:
    // Lets all waiters enter, since a coroutine that never ends is never freed.
    ~TurnstileTest() override
    {
        for (std::size_t left = 0; left < tasks_.size(); ++left) {
            leave();
        }
    }

    void come(const QString &name) { tasks_.push_back(pass(turnstile_, log_, name)); }

    void leave()
    {
        turnstile_.leave();
        QCoreApplication::sendPostedEvents();
    }

    Turnstile turnstile_;
    QStringList log_;
    std::vector<QCoro::Task<>> tasks_;
};

TEST_F(TurnstileTest, LetsTheFirstInAtOnce)
{
    come(QStringLiteral("a"));
    EXPECT_EQ(log_, QStringList({QStringLiteral("a")}));
}

TEST_F(TurnstileTest, HoldsTheSecondBackUntilTheFirstLeaves)
{
    come(QStringLiteral("a"));
    come(QStringLiteral("b"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_, QStringList({QStringLiteral("a")}));
    leave();
    EXPECT_EQ(log_, QStringList({QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(TurnstileTest, KeepsTheOrderOfArrival)
{
    for (const QChar name : QStringLiteral("abcd")) {
        come(name);
    }
    for (int left = 0; left < 3; ++left) {
        leave();
    }
    EXPECT_EQ(log_.join(QString()), QStringLiteral("abcd"));
}

TEST_F(TurnstileTest, LetsOneInForEachThatLeaves)
{
    for (const QChar name : QStringLiteral("abcd")) {
        come(name);
    }
    leave();
    EXPECT_EQ(log_.join(QString()), QStringLiteral("ab"));
}

TEST_F(TurnstileTest, LetsTheNextInFromTheEventLoopAndNotInsideLeave)
{
    come(QStringLiteral("a"));
    come(QStringLiteral("b"));
    turnstile_.leave();
    EXPECT_EQ(log_.join(QString()), QStringLiteral("a"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_.join(QString()), QStringLiteral("ab"));
}

TEST_F(TurnstileTest, LetsNoOneOvertakeWhileThePlaceIsHandedOn)
{
    come(QStringLiteral("a"));
    come(QStringLiteral("b"));
    turnstile_.leave();
    come(QStringLiteral("late"));
    EXPECT_EQ(log_.join(u','), QStringLiteral("a"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_.join(u','), QStringLiteral("a,b"));
    leave();
    EXPECT_EQ(log_.join(u','), QStringLiteral("a,b,late"));
}

TEST_F(TurnstileTest, IsFreeAgainWhenTheLastHasLeft)
{
    come(QStringLiteral("a"));
    come(QStringLiteral("b"));
    leave();
    leave();
    come(QStringLiteral("c"));
    EXPECT_EQ(log_.join(QString()), QStringLiteral("abc"));
}

QCoro::Task<> passOrGiveUp(Turnstile &turnstile, QStringList &log, QString name,
                           std::stop_token stop)
{
    const bool entered = co_await turnstile.enter(std::move(stop));
    log.append(entered ? name : name + u'!');
}

TEST(WideTurnstile, LetsInAsManyAsThereIsRoomForAndTellsWhoGaveUp)
{
    Turnstile turnstile([](int inside) { return inside < 2; });
    QStringList log;
    std::stop_source stop;
    std::vector<QCoro::Task<>> tasks;
    for (const QChar name : QStringLiteral("abcd")) {
        const std::stop_token token = name == u'c' ? stop.get_token() : std::stop_token();
        tasks.push_back(passOrGiveUp(turnstile, log, name, token));
    }
    EXPECT_EQ(log.join(QString()), QStringLiteral("ab"));
    stop.request_stop();
    turnstile.leave();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log.join(QString()), QStringLiteral("abc!d"));
    tasks.push_back(passOrGiveUp(turnstile, log, QStringLiteral("e"), {}));
    EXPECT_EQ(log.join(QString()), QStringLiteral("abc!d")) << "there is room for two";
    turnstile.leave();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log.join(QString()), QStringLiteral("abc!de"));
}

} // namespace
} // namespace velmora
