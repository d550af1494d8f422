// Transfers run by the event loop: each ends once, with its code or as stopped.
#include "net/TransferLoop.h"

#include "loopback/Server.h"
#include "net/Curl.h"
#include "support/RunTask.h"

#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace velmora::test {
namespace {

using End = std::optional<int>;

std::size_t dropBody(char *, std::size_t size, std::size_t count, void *)
{
    return size * count;
}

/// Gives every client the same answer.
class SmallServer : public loopback::Server
{
public:
    explicit SmallServer(const loopback::Answer &answer)
        : Server([this, answer](const loopback::Request &) {
            onRequest();
            return answer;
        })
    {
        EXPECT_TRUE(listen(0));
    }

    std::function<void()> onRequest = [] {};
};

/// A transfer set up as users of the loop do.
class Transfer
{
public:
    explicit Transfer(const QByteArray &url)
        : easy_(TransferLoop::newTransfer())
    {
        setOption(get(), CURLOPT_URL, url.constData());
        setOption(get(), CURLOPT_WRITEFUNCTION, &dropBody);
        setOption(get(), CURLOPT_TIMEOUT_MS, 10000L);
    }

    [[nodiscard]] void *get() const { return easy_.get(); }

private:
    EasyHandle easy_;
};

QCoro::Task<> runInto(TransferLoop &loop, QByteArray url, std::stop_token stop, End &end)
{
    const Transfer transfer(url);
    end = co_await loop.run(transfer.get(), stop);
}

class TransferLoopTest : public testing::Test
{
protected:
    End run(const QByteArray &url, std::stop_token stop = {})
    {
        End end;
        runToEnd(runInto(*loop_, url, std::move(stop), end));
        return end;
    }

    std::unique_ptr<TransferLoop> loop_ = std::make_unique<TransferLoop>();
    SmallServer good_{loopback::response("200 OK", {}, "body")};
    SmallServer silent_{loopback::silence()};
};

TEST_F(TransferLoopTest, EndsWithTheCodeOfTheTransfer)
{
    EXPECT_EQ(run(good_.url("/")), End{CURLE_OK});
    EXPECT_EQ(run("http://127.0.0.1:1/"), End{CURLE_COULDNT_CONNECT});
    EXPECT_EQ(run("nonsense://127.0.0.1/"), End{CURLE_UNSUPPORTED_PROTOCOL});
}

TEST_F(TransferLoopTest, EndsWithoutACodeWhenStopped)
{
    std::stop_source stop;
    silent_.onRequest = [&] { stop.request_stop(); };
    EXPECT_EQ(run(silent_.url("/"), stop.get_token()), std::nullopt);
}

TEST_F(TransferLoopTest, EndsAtOnceWhenStoppedBefore)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(run(silent_.url("/"), stop.get_token()), std::nullopt);
}

TEST_F(TransferLoopTest, AStopAfterTheEndChangesNothing)
{
    std::stop_source stop;
    EXPECT_EQ(run(good_.url("/"), stop.get_token()), End{CURLE_OK});
    stop.request_stop();
    EXPECT_EQ(run(good_.url("/")), End{CURLE_OK});
}

TEST_F(TransferLoopTest, ALoopThatGoesStopsWhatRuns)
{
    silent_.onRequest = [this] { loop_.reset(); };
    EXPECT_EQ(run(silent_.url("/")), std::nullopt);
}

TEST_F(TransferLoopTest, KeepsWhatATransferNeedsForTheNextOneForAWhile)
{
    EXPECT_EQ(loop_->spareDescriptors(), 0);
    EXPECT_EQ(run(good_.url("/")), End{CURLE_OK});
    const int ofOne = loop_->spareDescriptors();
    EXPECT_GT(ofOne, 0);
    EXPECT_EQ(run(good_.url("/")), End{CURLE_OK});
    EXPECT_EQ(loop_->spareDescriptors(), ofOne) << "the second took it over";
    EXPECT_TRUE(QTest::qWaitFor([this] { return loop_->spareDescriptors() == 0; }));
}

TEST_F(TransferLoopTest, KeepsNothingOfATransferThatFailed)
{
    EXPECT_EQ(run("http://127.0.0.1:1/"), End{CURLE_COULDNT_CONNECT});
    EXPECT_EQ(loop_->spareDescriptors(), 0);
    std::stop_source stop;
    silent_.onRequest = [&] { stop.request_stop(); };
    EXPECT_EQ(run(silent_.url("/"), stop.get_token()), std::nullopt);
    EXPECT_EQ(loop_->spareDescriptors(), 0);
}

TEST_F(TransferLoopTest, RunsManySideBySide)
{
    std::array<End, 40> ends;
    std::stop_source stop;
    int asked = 0;
    silent_.onRequest = [&] {
        if (++asked == static_cast<int>(ends.size())) {
            stop.request_stop();
        }
    };
    std::vector<QCoro::Task<>> tasks;
    for (End &end : ends) {
        end = -1;
        tasks.push_back(runInto(*loop_, silent_.url("/"), stop.get_token(), end));
    }
    for (QCoro::Task<> &task : tasks) {
        runToEnd(std::move(task));
    }
    EXPECT_EQ(asked, 40);
    EXPECT_EQ(std::count(ends.begin(), ends.end(), std::nullopt), 40);
}

constexpr qsizetype kPieces = 40;
constexpr qsizetype kPieceBytes = 1000;

// Every piece counts as a body of its own to libcurl's callback.
loopback::Answer inPieces()
{
    loopback::Answer answer;
    answer.bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
    for (qsizetype i = 0; i < kPieces; ++i) {
        answer.bytes += QByteArray::number(kPieceBytes, 16) + "\r\n" +
                        QByteArray(kPieceBytes, static_cast<char>('a' + i % 26)) + "\r\n";
    }
    answer.bytes += "0\r\n\r\n";
    return answer;
}

QByteArray allPieces()
{
    QByteArray bytes;
    for (qsizetype i = 0; i < kPieces; ++i) {
        bytes += QByteArray(kPieceBytes, static_cast<char>('a' + i % 26));
    }
    return bytes;
}

/// Receives a body of which every piece costs a millisecond, and counts how many arrive between two
/// turns of the event loop.
class SlowReader
{
public:
    explicit SlowReader(TransferLoop &loop)
        : loop_(loop)
    {
        QObject::connect(&turns_, &QTimer::timeout, &turns_, [this] { inThisTurn_ = 0; });
        turns_.start(0);
    }

    static std::size_t onBody(char *bytes, std::size_t size, std::size_t count, void *user)
    {
        return static_cast<SlowReader *>(user)->take({bytes, static_cast<qsizetype>(size * count)});
    }

    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

    [[nodiscard]] int mostInATurn() const { return mostInATurn_; }

    bool breaksOff = false; // in the middle

private:
    std::size_t take(QByteArrayView bytes)
    {
        if (loop_.pausesNow()) {
            return CURL_WRITEFUNC_PAUSE;
        }
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds{1};
        while (std::chrono::steady_clock::now() < end) {
        }
        bytes_ += bytes;
        mostInATurn_ = std::max(mostInATurn_, ++inThisTurn_);
        const bool isEnough = breaksOff && bytes_.size() > kPieces * kPieceBytes / 2;
        return isEnough ? CURL_WRITEFUNC_ERROR : static_cast<std::size_t>(bytes.size());
    }

    TransferLoop &loop_;
    QTimer turns_;
    QByteArray bytes_;
    int inThisTurn_ = 0;
    int mostInATurn_ = 0;
};

QCoro::Task<> readInto(TransferLoop &loop, QByteArray url, SlowReader &reader, End &end)
{
    const Transfer transfer(url);
    setOption(transfer.get(), CURLOPT_WRITEFUNCTION, &SlowReader::onBody);
    setOption(transfer.get(), CURLOPT_WRITEDATA, &reader);
    end = co_await loop.run(transfer.get(), {});
}

class TransferInParts : public TransferLoopTest
{
protected:
    End read()
    {
        End end;
        runToEnd(readInto(*loop_, server_.url("/"), reader_, end));
        return end;
    }

    SmallServer server_{inPieces()};
    SlowReader reader_{*loop_};
};

TEST_F(TransferInParts, BringsAllInItsOrder)
{
    EXPECT_EQ(read(), End{CURLE_OK});
    EXPECT_EQ(reader_.bytes(), allPieces());
}

TEST_F(TransferInParts, LetsTheEventLoopHaveItsTurnInBetween)
{
    EXPECT_EQ(read(), End{CURLE_OK});
    EXPECT_LE(reader_.mostInATurn(), 4);
}

TEST_F(TransferInParts, EndsWhenItIsBrokenOffBetweenThem)
{
    reader_.breaksOff = true;
    EXPECT_EQ(read(), End{CURLE_WRITE_ERROR});
    EXPECT_LT(reader_.bytes().size(), allPieces().size());
}

} // namespace
} // namespace velmora::test
