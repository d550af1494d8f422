// The one place that knows libcurl, and therefore a long one. Its multi interface says which
// sockets to watch and when to wake it; a socket set and one timer of the event loop do so. It is
// never called from its own callbacks.
#include "capture/HttpClient.h"

#include "base/OneShot.h"
#include "capture/SocketSet.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <curl/curl.h>

#include <sys/socket.h>
#include <unordered_map>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kMaxBodyBytes = 64LL * 1024 * 1024;
constexpr qint64 kMaxReservedBytes = 1024LL * 1024;
constexpr qint64 kMaxHeaderBytes = 256LL * 1024;
constexpr long kMaxRedirects = 10;
constexpr int kSocketBufferBytes = 256 * 1024;
constexpr long kReceiveBufferBytes = 64L * 1024;
constexpr int kFirstGoodStatus = 200;
constexpr int kFirstRedirectStatus = 300;

struct Transfer
{
    OneShot<HttpReply> *answer = nullptr;
    QByteArray body;
    qint64 headerBytes = 0;
    curl_slist *headers = nullptr;
};

std::size_t onBody(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const transfer = static_cast<Transfer *>(user);
    const std::size_t total = size * count; // of bytes
    const auto length = static_cast<qsizetype>(total);
    if (transfer->body.size() + length > kMaxBodyBytes) {
        return CURL_WRITEFUNC_ERROR;
    }
    transfer->body.append(bytes, length);
    return total;
}

// Room for a usual body at once; growing it step by step copies it several times. No more than that
// is taken on a camera's word.
void reserveBody(Transfer &transfer, QByteArrayView header)
{
    constexpr QByteArrayView kLength("content-length:");
    if (header.first(qMin(header.size(), kLength.size())).compare(kLength, Qt::CaseInsensitive) ==
        0) {
        const qint64 declared = header.sliced(kLength.size()).trimmed().toLongLong();
        transfer.body.reserve(
            static_cast<qsizetype>(qBound<qint64>(0, declared, kMaxReservedBytes)));
    }
}

std::size_t onHeader(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const transfer = static_cast<Transfer *>(user);
    const std::size_t total = size * count; // of bytes
    const auto length = static_cast<qsizetype>(total);
    transfer->headerBytes += length;
    reserveBody(*transfer, QByteArrayView(bytes, length));
    return transfer->headerBytes > kMaxHeaderBytes ? 0 : total;
}

// Room for a whole picture in the socket: the camera can send it at once while others are being
// read.
int onSocketMade(void *, curl_socket_t socket, curlsocktype)
{
    ::setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &kSocketBufferBytes, sizeof kSocketBufferBytes);
    return CURL_SOCKOPT_OK;
}

void setTransferOptions(CURL *easy, const HttpRequest &request, Transfer *transfer)
{
    curl_easy_setopt(easy, CURLOPT_URL, request.url.constData());
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L); // or a cancel waits for a slow name look-up
    curl_easy_setopt(easy, CURLOPT_DEFAULT_PROTOCOL, "http");
    curl_easy_setopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(easy, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
    curl_easy_setopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(request.limit.count()));
    curl_easy_setopt(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request.limit.count()));
    curl_easy_setopt(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kMaxBodyBytes));
    curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, kReceiveBufferBytes);
    // Small cameras serve few connections at once; an idle one of ours would shut others out.
    curl_easy_setopt(easy, CURLOPT_FORBID_REUSE, 1L);
    curl_easy_setopt(easy, CURLOPT_SOCKOPTFUNCTION, &onSocketMade);
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Velmora");
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &onBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, transfer);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, transfer);
}

// True when the address has a user in front of its host.
bool namesUser(const QByteArray &url)
{
    const qsizetype host = url.indexOf("//") + 2;
    return url.sliced(host, url.indexOf('/', host) - host).contains('@');
}

void setFormOptions(CURL *easy, const HttpRequest &request, Transfer *transfer)
{
    // More than one kind lets curl ask without a password first.
    curl_easy_setopt(easy, CURLOPT_HTTPAUTH, CURLAUTH_BASIC | CURLAUTH_DIGEST);
    if (request.form == HttpForm::AsWritten) {
        return;
    }
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_0));
    if (!namesUser(request.url)) {
        curl_easy_setopt(easy, CURLOPT_USERNAME, "anonimous");
        curl_easy_setopt(easy, CURLOPT_PASSWORD, "");
    }
    transfer->headers = curl_slist_append(transfer->headers, "Accept:");
    transfer->headers = curl_slist_append(transfer->headers, "Pragma: no-cache");
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, transfer->headers);
}

// A header of the last response, after any redirects.
QString headerText(CURL *easy, const char *name)
{
    curl_header *header = nullptr;
    const bool sent = curl_easy_header(easy, name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK;
    return sent ? QString::fromLatin1(header->value) : QString();
}

QString failureText(CURLcode code, long status)
{
    switch (code) {
    case CURLE_OK:
        return QStringLiteral("the server answered with status %1").arg(status);
    case CURLE_WRITE_ERROR:
    case CURLE_FILESIZE_EXCEEDED:
        return QStringLiteral("the server sends more than a picture can have");
    default:
        return QString::fromLatin1(curl_easy_strerror(code));
    }
}

HttpReply replyOf(CURL *easy, CURLcode code, Transfer &transfer)
{
    long status = 0;
    curl_off_t duration = 0;
    char *type = nullptr;
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(easy, CURLINFO_TOTAL_TIME_T, &duration);
    curl_easy_getinfo(easy, CURLINFO_CONTENT_TYPE, &type);
    const bool arrived =
        code == CURLE_OK && status >= kFirstGoodStatus && status < kFirstRedirectStatus;
    HttpReply reply;
    reply.outcome = arrived ? FetchOutcome::Arrived : FetchOutcome::Failed;
    reply.body = std::move(transfer.body);
    reply.lastModified = headerText(easy, "Last-Modified");
    reply.contentType = QString::fromLatin1(type);
    reply.duration =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::microseconds{duration});
    reply.failure = arrived ? QString() : failureText(code, status);
    return reply;
}

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

class HttpClient::Transfers : public QObject
{
public:
    Transfers()
    {
        initialiseCurlOnce();
        multi_ = curl_multi_init();
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
            stop(live_.begin()->first, *live_.begin()->second->answer);
        }
        curl_multi_cleanup(multi_);
    }

    CURL *begin(const HttpRequest &request, OneShot<HttpReply> &answer)
    {
        CURL *const easy = curl_easy_init();
        auto transfer = std::make_unique<Transfer>();
        transfer->answer = &answer;
        setTransferOptions(easy, request, transfer.get());
        setFormOptions(easy, request, transfer.get());
        live_.emplace(easy, std::move(transfer));
        curl_multi_add_handle(multi_, easy);
        return easy;
    }

    // Gives a transfer up; does nothing when it has ended already, even if its handle serves
    // another.
    void stop(CURL *easy, const OneShot<HttpReply> &answer)
    {
        const auto found = live_.find(easy);
        if (found == live_.end() || found->second->answer != &answer) {
            return;
        }
        if (const auto transfer = release(easy)) {
            HttpReply reply;
            reply.outcome = FetchOutcome::Stopped;
            close(easy, *transfer);
            transfer->answer->set(std::move(reply));
        }
    }

private:
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

    void act(curl_socket_t socket, int mask)
    {
        int running = 0;
        curl_multi_socket_action(multi_, socket, mask, &running);
        int left = 0;
        while (const CURLMsg *const message = curl_multi_info_read(multi_, &left)) {
            if (message->msg == CURLMSG_DONE) {
                finish(message->easy_handle, message->data.result);
            }
        }
    }

    void finish(CURL *easy, CURLcode code)
    {
        if (const auto transfer = release(easy)) {
            HttpReply reply = replyOf(easy, code, *transfer);
            close(easy, *transfer);
            transfer->answer->set(std::move(reply));
        }
    }

    std::unique_ptr<Transfer> release(CURL *easy)
    {
        const auto found = live_.find(easy);
        if (found == live_.end()) {
            return nullptr;
        }
        std::unique_ptr<Transfer> transfer = std::move(found->second);
        live_.erase(found);
        return transfer;
    }

    void close(CURL *easy, const Transfer &transfer)
    {
        curl_multi_remove_handle(multi_, easy);
        curl_easy_cleanup(easy);
        curl_slist_free_all(transfer.headers);
    }

    CURLM *multi_ = nullptr;
    QTimer timer_;
    QDeadlineTimer deadline_;
    std::unordered_map<CURL *, std::unique_ptr<Transfer>> live_;
    SocketSet sockets_;
};

HttpClient::HttpClient()
    : transfers_(std::make_unique<Transfers>())
{
}

HttpClient::~HttpClient() = default;

QCoro::Task<HttpReply> HttpClient::fetch(HttpRequest request, std::stop_token stop)
{
    if (request.url.isEmpty()) {
        HttpReply reply;
        reply.failure = QStringLiteral("the address names no host");
        co_return reply;
    }
    OneShot<HttpReply> answer;
    Transfers &transfers = *transfers_;
    CURL *const easy = transfers.begin(request, answer);
    const std::stop_callback onStop(std::move(stop),
                                    [&transfers, easy, &answer] { transfers.stop(easy, answer); });
    HttpReply reply = co_await answer;
    co_return reply;
}

} // namespace velmora
