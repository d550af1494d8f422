// Transfers run by the event loop: each ends once, with its code or as stopped.
#include "net/TransferLoop.h"

#include "support/RunTask.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
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

/// Lets every client in, and answers or not.
class SmallServer
{
public:
    explicit SmallServer(QByteArray answer)
        : answer_(std::move(answer))
    {
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] { accept(); });
        EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    }

    [[nodiscard]] QByteArray url() const
    {
        return "http://127.0.0.1:" + QByteArray::number(server_.serverPort()) + '/';
    }

    std::function<void()> onRequest = [] {};

private:
    void accept()
    {
        QTcpSocket *const socket = server_.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
            socket->readAll();
            onRequest();
            if (!answer_.isEmpty()) {
                socket->write(answer_);
                socket->disconnectFromHost();
            }
        });
    }

    QByteArray answer_;
    QTcpServer server_;
};

/// A transfer as a user of the loop sets it up.
class Transfer
{
public:
    explicit Transfer(const QByteArray &url)
        : easy_(TransferLoop::newTransfer())
    {
        curl_easy_setopt(easy_, CURLOPT_URL, url.constData());
        curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, &dropBody);
        curl_easy_setopt(easy_, CURLOPT_TIMEOUT_MS, 10000L);
    }

    Q_DISABLE_COPY_MOVE(Transfer)

    ~Transfer() { curl_easy_cleanup(easy_); }

    [[nodiscard]] void *get() const { return easy_; }

private:
    CURL *easy_;
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
    SmallServer good_{"HTTP/1.0 200 OK\r\n\r\nbody"};
    SmallServer silent_{{}};
};

TEST_F(TransferLoopTest, EndsWithTheCodeOfTheTransfer)
{
    EXPECT_EQ(run(good_.url()), End{CURLE_OK});
    EXPECT_EQ(run("http://127.0.0.1:1/"), End{CURLE_COULDNT_CONNECT});
    EXPECT_EQ(run("nonsense://127.0.0.1/"), End{CURLE_UNSUPPORTED_PROTOCOL});
}

TEST_F(TransferLoopTest, EndsWithoutACodeWhenStopped)
{
    std::stop_source stop;
    silent_.onRequest = [&] { stop.request_stop(); };
    EXPECT_EQ(run(silent_.url(), stop.get_token()), std::nullopt);
}

TEST_F(TransferLoopTest, EndsAtOnceWhenStoppedBefore)
{
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(run(silent_.url(), stop.get_token()), std::nullopt);
}

TEST_F(TransferLoopTest, AStopAfterTheEndChangesNothing)
{
    std::stop_source stop;
    EXPECT_EQ(run(good_.url(), stop.get_token()), End{CURLE_OK});
    stop.request_stop();
    EXPECT_EQ(run(good_.url()), End{CURLE_OK});
}

TEST_F(TransferLoopTest, ALoopThatGoesStopsWhatRuns)
{
    silent_.onRequest = [this] { loop_.reset(); };
    EXPECT_EQ(run(silent_.url()), std::nullopt);
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
        tasks.push_back(runInto(*loop_, silent_.url(), stop.get_token(), end));
    }
    for (QCoro::Task<> &task : tasks) {
        runToEnd(std::move(task));
    }
    EXPECT_EQ(asked, 40);
    EXPECT_EQ(std::count(ends.begin(), ends.end(), std::nullopt), 40);
}

} // namespace
} // namespace velmora::test
