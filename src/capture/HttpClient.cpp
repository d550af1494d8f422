// Sets up the request for a picture in libcurl's terms, and says how it ended; the transfer loop
// runs the transfers.
#include "capture/HttpClient.h"

#include "capture/AnswerIntake.h"
#include "net/Curl.h"

#include <QDeadlineTimer>
#include <QScopeGuard>

#include <array>
#include <new>
#include <optional>
#include <sys/socket.h>
#include <utility>

namespace velmora {
namespace {

constexpr long kMaxRedirects = 10;
constexpr std::chrono::milliseconds kLeastLimit{1}; // 0 would mean no limit
constexpr int kSocketBufferBytes = 256 * 1024;
constexpr long kReceiveBufferBytes = 32L * 1024; // libcurl fills it up to a hundred times in one go
constexpr int kFirstGoodStatus = 200;
constexpr int kFirstRedirectStatus = 300;

struct FreeHeaders
{
    void operator()(curl_slist *list) const { curl().slistFreeAll(list); }
};

/// A transfer and what has arrived so far.
struct Transfer
{
    Transfer(TransferLoop &onLoop, ReplyBody empty)
        : loop(onLoop)
        , intake(std::move(empty))
    {
    }

    TransferLoop &loop;
    AnswerIntake intake;
    std::unique_ptr<curl_slist, FreeHeaders> headers;
    std::array<char, CURL_ERROR_SIZE> libcurlText = {}; // never shown: may contain secrets
    EasyHandle easy = TransferLoop::newTransfer();
};

bool isGoodStatus(long status)
{
    return status >= kFirstGoodStatus && status < kFirstRedirectStatus;
}

// The status of the latest answer; 0 before the first.
long statusOf(CURL *easy)
{
    long status = 0;
    curl().easyGetinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    return status;
}

bool isGood(const Transfer &transfer)
{
    return isGoodStatus(statusOf(transfer.easy.get()));
}

std::size_t onBody(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const transfer = static_cast<Transfer *>(user);
    const std::size_t total = size * count; // in bytes
    if (transfer->loop.pausesNow()) {
        return CURL_WRITEFUNC_PAUSE;
    }
    const QByteArrayView piece(bytes, static_cast<qsizetype>(total));
    return transfer->intake.takeBody(piece, isGood(*transfer)) ? total : CURL_WRITEFUNC_ERROR;
}

std::size_t onHeader(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const transfer = static_cast<Transfer *>(user);
    const std::size_t total = size * count; // in bytes
    const QByteArrayView line(bytes, static_cast<qsizetype>(total));
    return transfer->intake.takeHeaderLine(line, isGood(*transfer)) ? total : 0;
}

// Room for a whole picture in the socket: the camera can send it all at once while others are being
// read.
int onSocketMade(void *, curl_socket_t socket, curlsocktype)
{
    ::setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &kSocketBufferBytes, sizeof kSocketBufferBytes);
    return CURL_SOCKOPT_OK;
}

// libcurl either resolves "." and ".." in the path, or leaves them in the address and in the
// targets of its redirects, which a client has to resolve.
bool mayHaveDots(const QByteArray &url)
{
    return url.contains("/.");
}

void setTransferOptions(Transfer &transfer, const HttpRequest &request)
{
    CURL *const easy = transfer.easy.get();
    setOption(easy, CURLOPT_URL, request.url.constData());
    setOption(easy, CURLOPT_DEFAULT_PROTOCOL, "http");
    setOption(easy, CURLOPT_PATH_AS_IS, mayHaveDots(request.url) ? 1L : 0L);
    setOption(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    setOption(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    setOption(easy, CURLOPT_FOLLOWLOCATION, 1L);
    setOption(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
    setOption(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(request.limit.count()));
    setOption(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request.limit.count()));
    setOption(easy, CURLOPT_BUFFERSIZE, kReceiveBufferBytes);
    setOption(easy, CURLOPT_HTTP_CONTENT_DECODING, 0L);
    // Small cameras serve few connections at once; an idle one of ours would shut others out.
    setOption(easy, CURLOPT_FORBID_REUSE, 1L);
    setOption(easy, CURLOPT_SOCKOPTFUNCTION, &onSocketMade);
    setOption(easy, CURLOPT_USERAGENT, "Velmora");
    setOption(easy, CURLOPT_WRITEFUNCTION, &onBody);
    setOption(easy, CURLOPT_WRITEDATA, &transfer);
    setOption(easy, CURLOPT_HEADERFUNCTION, &onHeader);
    setOption(easy, CURLOPT_HEADERDATA, &transfer);
    setOption(easy, CURLOPT_ERRORBUFFER, transfer.libcurlText.data());
}

// True when the address has a user before its host.
bool namesUser(const QByteArray &url)
{
    const qsizetype host = url.indexOf("//") + 2;
    return url.sliced(host, url.indexOf('/', host) - host).contains('@');
}

void addHeader(Transfer &transfer, const char *header)
{
    curl_slist *const longer = curl().slistAppend(transfer.headers.get(), header);
    if (longer == nullptr) {
        throw std::bad_alloc();
    }
    static_cast<void>(transfer.headers.release());
    transfer.headers.reset(longer);
}

void setFormOptions(Transfer &transfer, const HttpRequest &request)
{
    CURL *const easy = transfer.easy.get();
    // More than one kind lets curl ask without a password first.
    setOption(easy, CURLOPT_HTTPAUTH, CURLAUTH_BASIC | CURLAUTH_DIGEST);
    if (!request.user.isEmpty()) {
        setOption(easy, CURLOPT_USERNAME, request.user.toUtf8().constData());
        setOption(easy, CURLOPT_PASSWORD, request.password.toUtf8().constData());
    }
    const bool asWritten = request.form == HttpForm::AsWritten;
    setOption(easy, CURLOPT_HTTP_VERSION,
              static_cast<long>(asWritten ? CURL_HTTP_VERSION_1_1 : CURL_HTTP_VERSION_1_0));
    if (asWritten) {
        return;
    }
    if (request.user.isEmpty() && !namesUser(request.url)) {
        setOption(easy, CURLOPT_USERNAME, "anonimous");
        setOption(easy, CURLOPT_PASSWORD, "");
    }
    addHeader(transfer, "Accept:");
    addHeader(transfer, "Pragma: no-cache");
    setOption(easy, CURLOPT_HTTPHEADER, transfer.headers.get());
}

// A header of the last response, after any redirects; a blank one counts as none.
QString headerText(CURL *easy, const char *name)
{
    curl_header *header = nullptr;
    const bool sent = curl().easyHeader(easy, name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK;
    return sent ? QString::fromLatin1(header->value).trimmed() : QString();
}

bool wasAsked(CURL *easy)
{
    long sent = 0;
    curl().easyGetinfo(easy, CURLINFO_REQUEST_SIZE, &sent);
    return sent > 0;
}

// libcurl reports that it is out of memory when a header line does not end, and, after a body in
// chunks, says so only in its message.
bool isEndlessLine(const Transfer &transfer, CURLcode code)
{
    const QByteArrayView text(transfer.libcurlText.data());
    return (code == CURLE_OUT_OF_MEMORY && wasAsked(transfer.easy.get())) ||
           (code == CURLE_RECV_ERROR && text.startsWith("Out of memory"));
}

QString failureText(const Transfer &transfer, CURLcode code)
{
    const AnswerIntake &intake = transfer.intake;
    const Refusal refusal = intake.refusal();
    if (intake.stream() && code == CURLE_OK && isGood(transfer)) {
        return QStringLiteral("the stream ended within its first picture");
    }
    if (code == CURLE_OK || refusal == Refusal::Status) {
        return QStringLiteral("the server answered with status %1")
            .arg(statusOf(transfer.easy.get()));
    }
    if (refusal == Refusal::Stream) {
        return intake.stream()->fault();
    }
    if (refusal != Refusal::None) {
        return refusalText(refusal);
    }
    if (code == CURLE_BAD_FUNCTION_ARGUMENT && wasAsked(transfer.easy.get())) {
        return QStringLiteral("the server sends lines that are not headers");
    }
    return isEndlessLine(transfer, code) ? refusalText(Refusal::Headers)
                                         : QString::fromLatin1(curl().easyStrerror(code));
}

bool hasArrived(const Transfer &transfer, CURLcode code)
{
    const AnswerIntake &intake = transfer.intake;
    const bool ended = intake.stream() ? intake.refusal() == Refusal::Enough : code == CURLE_OK;
    return ended && isGood(transfer);
}

HttpReply replyOf(Transfer &transfer, CURLcode code)
{
    CURL *const easy = transfer.easy.get();
    const std::optional<FirstPart> &stream = transfer.intake.stream();
    curl_off_t duration = 0;
    char *type = nullptr;
    curl().easyGetinfo(easy, CURLINFO_TOTAL_TIME_T, &duration);
    curl().easyGetinfo(easy, CURLINFO_CONTENT_TYPE, &type);
    HttpReply reply;
    if (hasArrived(transfer, code)) {
        reply.outcome = FetchOutcome::Arrived;
        reply.body = transfer.intake.wholeBody();
    } else {
        reply.outcome = FetchOutcome::Failed;
        reply.failure = failureText(transfer, code);
    }
    // A stream's date would be that of its start.
    reply.lastModified = stream ? QString() : headerText(easy, "Last-Modified");
    reply.date = headerText(easy, "Date");
    reply.contentType = stream ? stream->contentType() : QString::fromLatin1(type);
    reply.duration =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::microseconds{duration});
    return reply;
}

bool isEncrypted(const QByteArray &url)
{
    return QLatin1StringView(url).startsWith(QLatin1StringView("https:"), Qt::CaseInsensitive);
}

HttpReply failed(const QString &reason)
{
    HttpReply reply;
    reply.failure = reason;
    return reply;
}

HttpReply stopped()
{
    HttpReply reply;
    reply.outcome = FetchOutcome::Stopped;
    return reply;
}

} // namespace

HttpClient::HttpClient(std::optional<AuthorityPlaces> authorities)
    : authorities_(std::move(authorities))
{
}

// A lack of resources costs this camera its picture, and no other.
QCoro::Task<HttpReply> HttpClient::fetch(HttpRequest request, std::stop_token stop)
{
    if (request.url.isEmpty()) {
        co_return failed(QStringLiteral("the address names no host"));
    }
    const bool entered = co_await places_.enter(stop);
    if (!entered) {
        co_return stopped();
    }
    const auto leave = qScopeGuard([this] { places_.leave(); });
    HttpReply reply;
    try {
        reply = co_await transfer(std::move(request), std::move(stop));
    } catch (const std::bad_alloc &) {
        reply = failed(refusalText(Refusal::Memory));
    } catch (const NoCurl &error) {
        reply = failed(QString::fromUtf8(error.what()));
    }
    co_return reply;
}

// Certificates are read when a camera first needs them. When a redirect leads to an encrypted
// address, that shows only in the middle of the transfer, which is then started again.
QCoro::Task<HttpReply> HttpClient::transfer(HttpRequest request, std::stop_token stop)
{
    const QDeadlineTimer limit(request.limit, Qt::PreciseTimer);
    if (isEncrypted(request.url)) {
        co_await authorities_.load();
    }
    std::optional<HttpReply> reply = co_await tryTransfer(request, stop);
    if (!reply) {
        co_await authorities_.load();
        request.limit = std::max(
            std::chrono::duration_cast<std::chrono::milliseconds>(limit.remainingTimeAsDuration()),
            kLeastLimit);
        reply = co_await tryTransfer(std::move(request), std::move(stop));
    }
    co_return std::move(reply).value_or(HttpReply());
}

// Nothing when it needs the certificates first.
QCoro::Task<std::optional<HttpReply>> HttpClient::tryTransfer(HttpRequest request,
                                                              std::stop_token stop)
{
    Transfer transfer(loop_, emptyBody(request, bodies_));
    setTransferOptions(transfer, request);
    setFormOptions(transfer, request);
    authorities_.applyTo(transfer.easy.get());
    const std::optional<int> code = co_await loop_.run(transfer.easy.get(), std::move(stop));
    if (!code) {
        co_return stopped();
    }
    if (*code == CURLE_ABORTED_BY_CALLBACK && !authorities_.isLoaded()) {
        co_return std::nullopt;
    }
    co_return replyOf(transfer, static_cast<CURLcode>(*code));
}

} // namespace velmora
