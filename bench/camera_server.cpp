// A hundred cameras in a process of their own, for measurements: every request gets the same number
// of bytes after the same delay, with a Last-Modified one second later than the one before; paths
// that begin with /hole never get an answer, and those that begin with /bare get no Last-Modified,
// but a Date and different bytes each time. Prints its port, and ends when its standard input does.
//   bench_camera_server DELAY_MS BODY_BYTES
// It does not use the server of the tests (loopback::Server), because that takes 1.7 times the
// processor time for a hundred answers of 200 KB, which would show beside the time of what is
// measured.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <map>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <string>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

using Time = std::chrono::steady_clock::time_point;

struct Connection
{
    std::string request;
    std::string reply;
    std::size_t sent = 0;
};

struct Due
{
    Time at;
    int socket;
};

class Server
{
public:
    Server(std::chrono::milliseconds delay, std::size_t bodyBytes)
        : delay_(delay)
        , body_("\xFF\xD8\xFF" + std::string(bodyBytes - 3, 'x'))
    {
        listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        ::bind(listener_, reinterpret_cast<sockaddr *>(&address), sizeof address);
        ::listen(listener_, 512);
        socklen_t length = sizeof address;
        ::getsockname(listener_, reinterpret_cast<sockaddr *>(&address), &length);
        std::printf("%d\n", ntohs(address.sin_port));
        std::fflush(stdout);
        watch(listener_, EPOLLIN);
        watch(STDIN_FILENO, EPOLLIN);
    }

    void run()
    {
        std::array<epoll_event, 64> events{};
        for (;;) {
            const int count = ::epoll_wait(epoll_, events.data(), events.size(), waitMs());
            for (int i = 0; i < count; ++i) {
                const int socket = events.at(static_cast<std::size_t>(i)).data.fd;
                if (socket == STDIN_FILENO) {
                    return;
                }
                socket == listener_ ? accept() : serve(socket);
            }
            answerDue();
        }
    }

private:
    void watch(int socket, std::uint32_t events) const
    {
        epoll_event event = {};
        event.events = events;
        event.data.fd = socket;
        ::epoll_ctl(epoll_, EPOLL_CTL_ADD, socket, &event);
    }

    [[nodiscard]] int waitMs() const
    {
        if (due_.empty()) {
            return -1;
        }
        const auto left = due_.front().at - std::chrono::steady_clock::now();
        return static_cast<int>(
            std::max<long>(0, std::chrono::ceil<std::chrono::milliseconds>(left).count()));
    }

    void accept()
    {
        for (int socket = 0;
             (socket = ::accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK)) >= 0;) {
            const int on = 1;
            ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
            connections_[socket] = {};
            watch(socket, EPOLLIN);
        }
    }

    void serve(int socket)
    {
        Connection &connection = connections_[socket];
        if (!connection.reply.empty()) {
            send(socket, connection);
            return;
        }
        std::array<char, 4096> buffer{};
        const ssize_t got = ::read(socket, buffer.data(), buffer.size());
        if (got <= 0) {
            close(socket);
            return;
        }
        connection.request.append(buffer.data(), static_cast<std::size_t>(got));
        const bool whole = connection.request.ends_with("\r\n\r\n");
        if (whole && !connection.request.starts_with("GET /hole")) {
            due_.push_back({std::chrono::steady_clock::now() + delay_, socket});
        }
    }

    void answerDue()
    {
        while (!due_.empty() && due_.front().at <= std::chrono::steady_clock::now()) {
            const int socket = due_.front().socket;
            due_.pop_front();
            const auto found = connections_.find(socket);
            if (found != connections_.end()) {
                const bool isBare = found->second.request.starts_with("GET /bare");
                found->second.reply = isBare ? bareHeader() : header();
                send(socket, found->second);
            }
        }
    }

    static std::string dateText(std::time_t time)
    {
        std::array<char, 64> date{};
        std::strftime(date.data(), date.size(), "%a, %d %b %Y %H:%M:%S GMT", std::gmtime(&time));
        return date.data();
    }

    static std::string head(const std::string &dateLine, std::size_t bytes)
    {
        return "HTTP/1.1 200 OK\r\nContent-Type: image/jpeg\r\nConnection: close\r\n" + dateLine +
               "\r\nContent-Length: " + std::to_string(bytes) + "\r\n\r\n";
    }

    std::string header()
    {
        return head("Last-Modified: " + dateText(1'000'000'000 + ++served_), body_.size());
    }

    // The number that makes every body different precedes it.
    std::string bareHeader()
    {
        std::string number = std::to_string(++served_);
        number.insert(0, 16 - number.size(), '0');
        const std::time_t date = std::time(nullptr) + served_ % 80'000;
        return head("Date: " + dateText(date), number.size() + body_.size()) + number;
    }

    // The body is sent from where it is: copying it for each camera would cost the server as much
    // as the client spends on it.
    ssize_t sendMore(int socket, Connection &connection)
    {
        const std::size_t headerLeft =
            connection.reply.size() - std::min(connection.sent, connection.reply.size());
        const std::size_t bodyAt = connection.sent + headerLeft - connection.reply.size();
        std::array<iovec, 2> parts = {
            {{connection.reply.data() + connection.reply.size() - headerLeft, headerLeft},
             {body_.data() + bodyAt, body_.size() - bodyAt}}};
        msghdr message = {};
        message.msg_iov = parts.data();
        message.msg_iovlen = parts.size();
        return ::sendmsg(socket, &message, MSG_NOSIGNAL);
    }

    void send(int socket, Connection &connection)
    {
        while (connection.sent < connection.reply.size() + body_.size()) {
            const ssize_t written = sendMore(socket, connection);
            if (written < 0 && errno == EAGAIN) {
                epoll_event event = {};
                event.events = EPOLLOUT;
                event.data.fd = socket;
                ::epoll_ctl(epoll_, EPOLL_CTL_MOD, socket, &event);
                return;
            }
            if (written <= 0) {
                break;
            }
            connection.sent += static_cast<std::size_t>(written);
        }
        close(socket);
    }

    void close(int socket)
    {
        connections_.erase(socket);
        ::close(socket);
    }

    std::chrono::milliseconds delay_;
    std::string body_;
    int epoll_ = ::epoll_create1(0);
    int listener_ = -1;
    std::map<int, Connection> connections_;
    std::deque<Due> due_;
    std::time_t served_ = 0;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "bench_camera_server DELAY_MS BODY_BYTES\n");
        return 2;
    }
    Server(std::chrono::milliseconds(std::atoi(argv[1])),
           static_cast<std::size_t>(std::atol(argv[2])))
        .run();
    return 0;
}
