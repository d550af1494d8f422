// Sockets watched as one set by the event loop.
#include "net/SocketSet.h"

#include "support/LoopTurns.h"

#include <QEventLoop>
#include <QSet>

#include <gtest/gtest.h>

#include <memory>
#include <sys/socket.h>
#include <vector>

namespace velmora {
namespace {

// Two ends of a connection.
struct Pair
{
    Pair()
    {
        int ends[2] = {-1, -1};
        if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0) {
            near = std::make_unique<UniqueFd>(ends[0]);
            far = std::make_unique<UniqueFd>(ends[1]);
        }
    }

    void sendToNear() const { EXPECT_EQ(::write(far->get(), "x", 1), 1); }

    std::unique_ptr<UniqueFd> near;
    std::unique_ptr<UniqueFd> far;
};

class SocketSetTest : public testing::Test
{
protected:
    SocketSetTest()
    {
        QObject::connect(&set_, &SocketSet::ready, &set_, [this](int socket, SocketEvents events) {
            sockets_.append(socket);
            last_ = events;
        });
    }

    // The event loop until something is ready; false when nothing was in many turns of it.
    bool turn()
    {
        const qsizetype before = sockets_.size();
        QEventLoop loop;
        QObject::connect(&set_, &SocketSet::ready, &loop, &QEventLoop::quit);
        test::LoopTurns turns;
        turns.then(50, [&loop] { loop.quit(); });
        loop.exec();
        return sockets_.size() > before;
    }

    SocketSet set_;
    QList<int> sockets_;
    SocketEvents last_;
};

TEST_F(SocketSetTest, TellsASocketThatCanBeRead)
{
    const Pair pair;
    set_.watch(pair.near->get(), {true, false, false});
    pair.sendToNear();
    ASSERT_TRUE(turn());
    EXPECT_EQ(sockets_.first(), pair.near->get());
    EXPECT_TRUE(last_.read);
    EXPECT_FALSE(last_.write);
    EXPECT_FALSE(last_.error);
}

TEST_F(SocketSetTest, TellsNothingThatIsNotWaitedFor)
{
    const Pair pair;
    set_.watch(pair.near->get(), {true, false, false}); // it is ready to be written to
    EXPECT_FALSE(turn());
}

TEST_F(SocketSetTest, CanWaitForSomethingElse)
{
    const Pair pair;
    set_.watch(pair.near->get(), {true, false, false});
    set_.watch(pair.near->get(), {false, true, false});
    ASSERT_TRUE(turn());
    EXPECT_TRUE(last_.write);
    EXPECT_FALSE(last_.read);
}

TEST_F(SocketSetTest, TellsThatTheOtherEndIsGone)
{
    Pair pair;
    set_.watch(pair.near->get(), {true, false, false});
    pair.far.reset();
    ASSERT_TRUE(turn());
    EXPECT_TRUE(last_.error);
}

TEST_F(SocketSetTest, ForgetsASocket)
{
    const Pair pair;
    set_.watch(pair.near->get(), {true, false, false});
    set_.forget(pair.near->get());
    pair.sendToNear();
    EXPECT_FALSE(turn());
}

TEST_F(SocketSetTest, ForgetsAClosedSocketByItself)
{
    Pair pair;
    set_.watch(pair.near->get(), {true, false, false});
    pair.near.reset();
    EXPECT_FALSE(turn());
}

TEST_F(SocketSetTest, TellsAFewSocketsInATurnAndAllInTheEnd)
{
    const std::vector<Pair> pairs(40);
    for (const Pair &pair : pairs) {
        set_.watch(pair.near->get(), {true, false, false});
        pair.sendToNear();
    }
    ASSERT_TRUE(turn());
    EXPECT_LE(sockets_.size(), 16);
    for (int i = 0; i < 10; ++i) {
        static_cast<void>(turn());
    }
    EXPECT_EQ(QSet<int>(sockets_.begin(), sockets_.end()).size(), 40);
}

} // namespace
} // namespace velmora
