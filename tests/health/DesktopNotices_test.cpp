// Notices on the desktop, over a message bus that works, hangs, refuses or does not exist.
#include "health/DesktopNotices.h"

#include "health/BusMessage.h"
#include "support/LoopTurns.h"
#include "support/ScopedEnv.h"
#include "support/TempTree.h"

#include <QLocalServer>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QByteArray kWelcome = "OK 0123456789abcdef0123456789abcdef\r\n";

/// A bus that answers a client's first line, and keeps what follows.
class BusDouble
{
public:
    explicit BusDouble(const QString &path, QByteArray answer)
        : answer_(std::move(answer))
    {
        server_.listen(path);
        QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] {
            QLocalSocket *const client = server_.nextPendingConnection();
            ++clients;
            QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] {
                const bool isFirst = !heard.contains("AUTH");
                heard += client->readAll();
                if (isFirst) {
                    client->write(answer_);
                }
            });
            QObject::connect(client, &QLocalSocket::disconnected, client, [this] { ++gone; });
        });
    }

    QByteArray heard;
    int clients = 0;
    int gone = 0;

private:
    QLocalServer server_;
    QByteArray answer_;
};

class DesktopNoticesTest : public testing::Test
{
protected:
    TempTree tree_;
    ScopedEnv bus_{"DBUS_SESSION_BUS_ADDRESS",
                   "unix:path=" + tree_.path(u"bus").toUtf8() + ",guid=01"};
    DesktopNotices notices_;
};

TEST_F(DesktopNoticesTest, SendsWhatItIsToShow)
{
    const BusDouble bus(tree_.path(u"bus"), kWelcome);
    notices_.show(QStringLiteral("Camera 0:3 <Garage> is late"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bus.heard.contains("is late"); }));
    EXPECT_TRUE(bus.heard.startsWith(busLogin()));
    EXPECT_TRUE(bus.heard.contains("BEGIN\r\n"));
    EXPECT_TRUE(bus.heard.contains("Hello"));
    EXPECT_TRUE(bus.heard.contains("Camera 0:3 &lt;Garage&gt; is late"));
}

TEST_F(DesktopNoticesTest, SendsAllOverOneConnection)
{
    const BusDouble bus(tree_.path(u"bus"), kWelcome);
    notices_.show(QStringLiteral("one"));
    notices_.show(QStringLiteral("two"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bus.heard.contains("two"); }));
    notices_.show(QStringLiteral("three"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bus.heard.contains("three"); }));
    EXPECT_EQ(bus.heard.count("Notify"), 3);
    EXPECT_EQ(bus.clients, 1);
}

TEST_F(DesktopNoticesTest, LeavesABusThatRefuses)
{
    const BusDouble bus(tree_.path(u"bus"), "REJECTED EXTERNAL\r\n");
    notices_.show(QStringLiteral("one"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bus.gone == 1; }));
    EXPECT_FALSE(bus.heard.contains("Notify"));
}

TEST_F(DesktopNoticesTest, ComesBackToARestartedBus)
{
    {
        const BusDouble bus(tree_.path(u"bus"), kWelcome);
        notices_.show(QStringLiteral("one"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return bus.heard.contains("one"); }));
    }
    const BusDouble bus(tree_.path(u"bus"), kWelcome);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        if (bus.clients == 0) {
            notices_.show(QStringLiteral("two"));
        }
        return bus.heard.contains("two");
    }));
}

TEST_F(DesktopNoticesTest, DoesNothingWithoutABus)
{
    const BusDouble bus(tree_.path(u"bus"), kWelcome);
    {
        const ScopedEnv none("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        notices_.show(QStringLiteral("one"));
    }
    notices_.show(QStringLiteral("two"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bus.heard.contains("two"); }));
    EXPECT_FALSE(bus.heard.contains("one"));
}

// No program serves the connection; only the system accepts it.
TEST_F(DesktopNoticesTest, WaitsForNoBusThatHangs)
{
    QLocalServer hanging;
    hanging.listen(tree_.path(u"bus"));
    const LoopTurns loop;
    notices_.show(QStringLiteral("one"));
    EXPECT_EQ(loop.turns(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return loop.turns() >= 100; }));
    EXPECT_TRUE(hanging.hasPendingConnections());
    EXPECT_FALSE(answers(*sessionBus(), 20ms));
}

TEST_F(DesktopNoticesTest, CountsAMissingBusAsOneThatHoldsNothingUp)
{
    EXPECT_TRUE(answers(*sessionBus(), 1s));
}

TEST(BusMessage, HasTheFormOfTheBus)
{
    const QByteArray hello = busHello();
    EXPECT_EQ(hello.first(11), QByteArray("BEGIN\r\nl\1\0\1", 11));
    const QByteArray notice = busNotice(7, QStringLiteral("late"));
    EXPECT_EQ(notice.first(4), QByteArray("l\1\0\1", 4));
    EXPECT_EQ(notice[8], 7);
    EXPECT_EQ(notice.last(4), QByteArray(4, '\xff'));
    EXPECT_TRUE(notice.contains("susssasa{sv}i"));
}

struct AddressCase
{
    const char *name;
    const char *text;
    const char *place;
    bool isAbstract;
};

class BusAddress : public testing::TestWithParam<AddressCase>
{
};

TEST_P(BusAddress, NamesASocket)
{
    const auto place = busPlace(GetParam().text);
    EXPECT_EQ(place ? place->name.toStdString() : "", GetParam().place);
    EXPECT_EQ(place && place->form == QLocalSocket::AbstractNamespaceOption, GetParam().isAbstract);
}

INSTANTIATE_TEST_SUITE_P(
    All, BusAddress,
    testing::Values(AddressCase{"path", "unix:path=/run/bus", "/run/bus", false},
                    AddressCase{"guid", "unix:guid=1,path=/run/bus", "/run/bus", false},
                    AddressCase{"escaped", "unix:path=/a%20b", "/a b", false},
                    AddressCase{"abstract", "unix:abstract=/tmp/x,guid=1", "/tmp/x", true},
                    AddressCase{"second", "tcp:host=h,port=1;unix:path=/b", "/b", false},
                    AddressCase{"none", "", "", false}, AddressCase{"off", "disabled:", "", false},
                    AddressCase{"launched", "autolaunch:", "", false},
                    AddressCase{"bare", "unix:", "", false},
                    AddressCase{"nothing", "unix:path", "", false}),
    [](const auto &info) { return std::string(info.param.name); });

} // namespace
} // namespace velmora::test
