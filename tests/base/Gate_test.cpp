// Which callers wait at a gate, and which are let through.
#include "base/Gate.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace velmora {
namespace {

QCoro::Task<> walk(Gate &gate, std::stop_token stop, QStringList &log, QString name)
{
    co_await gate.pass(std::move(stop));
    log.append(name);
}

class GateTest : public testing::Test
{
protected:
    // Lets all waiters go on, since a coroutine that never ends is never freed.
    ~GateTest() override
    {
        gate_.open();
        QCoreApplication::sendPostedEvents();
    }

    void come(const QString &name) { tasks_.push_back(walk(gate_, stop_.get_token(), log_, name)); }

    void open()
    {
        gate_.open();
        QCoreApplication::sendPostedEvents();
    }

    Gate gate_;
    std::stop_source stop_;
    QStringList log_;
    std::vector<QCoro::Task<>> tasks_;
};

TEST_F(GateTest, LetsEverybodyThroughWhileItIsOpen)
{
    come(QStringLiteral("a"));
    come(QStringLiteral("b"));
    EXPECT_EQ(log_, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(GateTest, HoldsEverybodyUntilItIsOpened)
{
    gate_.shut();
    come(QStringLiteral("a"));
    come(QStringLiteral("b"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_, QStringList());
    open();
    EXPECT_EQ(log_, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST_F(GateTest, HoldsACallerThatFindsItShutAgain)
{
    gate_.shut();
    come(QStringLiteral("a"));
    gate_.open();
    gate_.shut();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_, QStringList());
    open();
    EXPECT_EQ(log_, QStringList{QStringLiteral("a")});
}

TEST_F(GateTest, LetsACallerThatIsToStopThroughAndStaysShut)
{
    gate_.shut();
    come(QStringLiteral("a"));
    stop_.request_stop();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_, QStringList{QStringLiteral("a")});
    stop_ = std::stop_source();
    come(QStringLiteral("b"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log_, QStringList{QStringLiteral("a")});
}

} // namespace
} // namespace velmora
