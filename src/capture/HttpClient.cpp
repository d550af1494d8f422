// How a picture is asked for in libcurl's words, and what its answer means; the transfer loop runs
// the transfers.
#include "capture/HttpClient.h"

#include <curl/curl.h>

#include <sys/socket.h>
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

struct CleanUp
{
    void operator()(CURL *easy) const { curl_easy_cleanup(easy); }

    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

/// A transfer and what has come of it so far.
struct Transfer
{
    QByteArray body;
    qint64 headerBytes = 0;
    std::unique_ptr<curl_slist, CleanUp> headers;
    std::unique_ptr<CURL, CleanUp> easy{TransferLoop::newTransfer()};
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

void setTransferOptions(Transfer &transfer, const HttpRequest &request)
{
    CURL *const easy = transfer.easy.get();
    curl_easy_setopt(easy, CURLOPT_URL, request.url.constData());
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
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, &transfer);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &onHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, &transfer);
}

// True when the address has a user in front of its host.
bool namesUser(const QByteArray &url)
{
    const qsizetype host = url.indexOf("//") + 2;
    return url.sliced(host, url.indexOf('/', host) - host).contains('@');
}

void setFormOptions(Transfer &transfer, const HttpRequest &request)
{
    CURL *const easy = transfer.easy.get();
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
    transfer.headers.reset(curl_slist_append(nullptr, "Accept:"));
    curl_slist_append(transfer.headers.get(), "Pragma: no-cache");
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, transfer.headers.get());
}

// A header of the last response, after any redirects; one that says nothing is none.
QString headerText(CURL *easy, const char *name)
{
    curl_header *header = nullptr;
    const bool sent = curl_easy_header(easy, name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK;
    return sent ? QString::fromLatin1(header->value).trimmed() : QString();
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

HttpReply replyOf(Transfer &transfer, CURLcode code)
{
    CURL *const easy = transfer.easy.get();
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

} // namespace

QCoro::Task<HttpReply> HttpClient::fetch(HttpRequest request, std::stop_token stop)
{
    HttpReply reply;
    if (request.url.isEmpty()) {
        reply.failure = QStringLiteral("the address names no host");
        co_return reply;
    }
    Transfer transfer;
    setTransferOptions(transfer, request);
    setFormOptions(transfer, request);
    const std::optional<int> code = co_await loop_.run(transfer.easy.get(), std::move(stop));
    if (code) {
        reply = replyOf(transfer, static_cast<CURLcode>(*code));
    } else {
        reply.outcome = FetchOutcome::Stopped;
    }
    co_return reply;
}

} // namespace velmora
