// libcurl's multi interface says which sockets to watch and when to wake it; a socket set and one
// timer of the event loop do so. It is never called from its own callbacks.
#include "net/TransferLoop.h"

#include "base/OneShot.h"
#include "net/SocketSet.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <curl/curl.h>

#include <new>
#include <unordered_map>
#include <utility>

namespace velmora {
namespace {

using End = std::optional<int>; // the code, or nothing when stopped

int selectMask(SocketEvents events)
{
    return (events.read ? CURL_CSELECT_IN : 0) | (events.write ? CURL_CSELECT_OUT : 0) |
           (events.error ? CURL_CSELECT_ERR : 0);
}

void initialiseCurlOnce()
{
    static const CURLcode done = curl_global_init(CURL_GLOBAL_DEFAULT);
    static_cast<void>(done);
}

} // namespace

class TransferLoop::Transfers : public QObject
{
public:
    Transfers()
    {
        initialiseCurlOnce();
        multi_ = curl_multi_init();
        if (multi_ == nullptr) {
            throw std::bad_alloc();
        }
        curl_multi_setopt(multi_, CURLMOPT_SOCKETFUNCTION, &Transfers::onSocket);
        curl_multi_setopt(multi_, CURLMOPT_SOCKETDATA, this);
        curl_multi_setopt(multi_, CURLMOPT_TIMERFUNCTION, &Transfers::onTimer);
        curl_multi_setopt(multi_, CURLMOPT_TIMERDATA, this);
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        connect(&timer_, &QTimer::timeout, this, &Transfers::onTimeout);
        connect(&sockets_, &SocketSet::ready, this,
                [this](int socket, SocketEvents events) { act(socket, selectMask(events)); });
    }

    Transfers(const Transfers &) = delete;
    Transfers &operator=(const Transfers &) = delete;
    Transfers(Transfers &&) = delete;
    Transfers &operator=(Transfers &&) = delete;

    ~Transfers() override
    {
        while (!live_.empty()) {
            finish(live_.begin()->first, std::nullopt);
        }
        curl_multi_cleanup(multi_);
    }

    void begin(CURL *easy, AtEnd atEnd, OneShot<End> &end)
    {
        live_.emplace(easy, Live{atEnd, &end});
        if (curl_multi_add_handle(multi_, easy) != CURLM_OK) {
            finish(easy, CURLE_FAILED_INIT);
        }
    }

    // Does nothing when the transfer has ended already.
    void finish(CURL *easy, End end)
    {
        const auto found = live_.find(easy);
        if (found == live_.end()) {
            return;
        }
        const Live live = found->second;
        live_.erase(found);
        if (live.atEnd == AtEnd::Close || end != End{CURLE_OK}) {
            disconnect(easy);
        }
        live.waiter->set(end);
    }

    void disconnect(CURL *easy) { curl_multi_remove_handle(multi_, easy); }

private:
    struct Live
    {
        AtEnd atEnd;
        OneShot<End> *waiter;
    };

    static int onTimer(CURLM *, long milliseconds, void *user)
    {
        static_cast<Transfers *>(user)->wakeIn(milliseconds);
        return 0;
    }

    // libcurl moves its next deadline with every step of every transfer. A timer that is set for an
    // earlier moment is left alone, and looks at the deadline again when it fires.
    void wakeIn(long milliseconds)
    {
        if (milliseconds < 0) {
            timer_.stop();
            return;
        }
        deadline_.setRemainingTime(milliseconds, Qt::PreciseTimer);
        if (!timer_.isActive() || timer_.remainingTime() > milliseconds) {
            timer_.start(static_cast<int>(milliseconds));
        }
    }

    void onTimeout()
    {
        if (deadline_.hasExpired()) {
            act(CURL_SOCKET_TIMEOUT, 0);
        } else {
            timer_.start(static_cast<int>(deadline_.remainingTime()) + 1);
        }
    }

    static int onSocket(CURL *, curl_socket_t socket, int what, void *user, void *)
    {
        static_cast<Transfers *>(user)->watch(socket, what);
        return 0;
    }

    void watch(curl_socket_t socket, int what)
    {
        if (what == CURL_POLL_REMOVE) {
            sockets_.forget(socket);
        } else {
            sockets_.watch(socket, {what != CURL_POLL_OUT, what != CURL_POLL_IN, false});
        }
    }

    void giveAllUp()
    {
        while (!live_.empty()) {
            finish(live_.begin()->first, CURLE_OUT_OF_MEMORY);
        }
    }

    void act(curl_socket_t socket, int mask)
    {
        int running = 0;
        if (curl_multi_socket_action(multi_, socket, mask, &running) == CURLM_OUT_OF_MEMORY) {
            giveAllUp(); // nobody would hear of their ends any more
        }
        int left = 0;
        while (const CURLMsg *const message = curl_multi_info_read(multi_, &left)) {
            if (message->msg == CURLMSG_DONE) {
                finish(message->easy_handle, message->data.result);
            }
        }
    }

    CURLM *multi_ = nullptr;
    QTimer timer_;
    QDeadlineTimer deadline_;
    std::unordered_map<CURL *, Live> live_;
    SocketSet sockets_;
};

TransferLoop::TransferLoop()
    : transfers_(std::make_unique<Transfers>())
{
}

TransferLoop::~TransferLoop() = default;

void *TransferLoop::newTransfer()
{
    initialiseCurlOnce();
    CURL *const easy = curl_easy_init();
    if (easy == nullptr) {
        throw std::bad_alloc();
    }
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L); // or a cancel waits for a slow name look-up
    return easy;
}

QCoro::Task<std::optional<int>> TransferLoop::run(void *easy, std::stop_token stop)
{
    return runUntil(AtEnd::Close, easy, std::move(stop));
}

QCoro::Task<std::optional<int>> TransferLoop::connect(void *easy, std::stop_token stop)
{
    return runUntil(AtEnd::StayConnected, easy, std::move(stop));
}

QCoro::Task<std::optional<int>> TransferLoop::runUntil(AtEnd atEnd, void *easy,
                                                       std::stop_token stop)
{
    OneShot<End> end;
    Transfers &transfers = *transfers_;
    transfers.begin(easy, atEnd, end);
    const std::stop_callback onStop(std::move(stop),
                                    [&transfers, easy] { transfers.finish(easy, std::nullopt); });
    const End code = co_await end;
    co_return code;
}

void TransferLoop::disconnect(void *easy)
{
    transfers_->disconnect(easy);
}

} // namespace velmora
