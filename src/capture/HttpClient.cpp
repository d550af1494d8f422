// Sets up the request for a picture in libcurl's terms, and interprets the answer; the transfer
// loop runs the transfers.
#include "capture/HttpClient.h"

#include "capture/DeclaredLength.h"
#include "capture/FirstPart.h"
#include "net/CurlOption.h"

#include <QDeadlineTimer>
#include <QScopeGuard>

#include <array>
#include <new>
#include <optional>
#include <sys/socket.h>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kMaxBodyBytes = 64LL * 1024 * 1024;
constexpr qint64 kMaxHeaderBytes = 128LL * 1024; // of an answer and the redirects before it
constexpr int kMaxHeaderLines = 2000;            // each is kept by libcurl
constexpr long kMaxRedirects = 10;
constexpr std::chrono::milliseconds kLeastLimit{1}; // 0 would mean no limit
constexpr int kSocketBufferBytes = 256 * 1024;
constexpr long kReceiveBufferBytes = 32L * 1024; // libcurl fills it up to a hundred times in one go
constexpr qsizetype kSmallPieceBytes = 4096;
constexpr qsizetype kGatheredBytes = 16384;
constexpr int kFirstGoodStatus = 200;
constexpr int kFirstRedirectStatus = 300;

struct FreeHeaders
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};

/// Why the program itself ended a transfer.
enum class Refusal { None, Status, TooLong, Headers, Coding, Lengths, Memory, Stream, Enough };

/// A transfer and what has arrived so far.
struct Transfer
{
    Transfer(TransferLoop &onLoop, ReplyBody empty)
        : loop(onLoop)
        , body(std::move(empty))
    {
    }

    TransferLoop &loop;
    ReplyBody body;
    QByteArray gathered; // of a body that arrives in small pieces, not yet appended
    QByteArray header;   // as far as it has arrived, possibly in several lines
    DeclaredLength length;
    qint64 headerBytes = 0;
    int headerLines = 0;
    Refusal refusal = Refusal::None;
    std::optional<FirstPart> stream; // of an answer that is a stream of pictures
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
    curl_easy_getinfo(easy, CURLINFO_RESPONSE_CODE, &status);
    return status;
}

// The page that comes with an error status may be endless: it is not read.
Refusal refusalOfBody(const Transfer &transfer, qsizetype length)
{
    if (!isGoodStatus(statusOf(transfer.easy.get()))) {
        return Refusal::Status;
    }
    const qint64 total = transfer.body.size() + transfer.gathered.size() + length;
    return total > kMaxBodyBytes ? Refusal::TooLong : Refusal::None;
}

// One picture of a stream is enough; the rest is not waited for.
Refusal refusalOfStream(Transfer &transfer, QByteArrayView bytes)
{
    // NOLINTNEXTLINE(bugprone-unchecked-optional-access): asked only of a transfer that has one
    switch (transfer.stream->feed(bytes, transfer.body)) {
    case FirstPart::State::Whole:
        return Refusal::Enough;
    case FirstPart::State::Broken:
        return Refusal::Stream;
    case FirstPart::State::Reading:
        break;
    }
    return Refusal::None;
}

void appendGathered(Transfer &transfer)
{
    transfer.body.append(std::exchange(transfer.gathered, {}));
}

// A server may send every byte on its own; each would cost a system call.
void appendToBody(Transfer &transfer, QByteArrayView bytes)
{
    if (transfer.gathered.isEmpty() && bytes.size() >= kSmallPieceBytes) {
        transfer.body.append(bytes);
        return;
    }
    transfer.gathered.append(bytes);
    if (transfer.gathered.size() >= kGatheredBytes) {
        appendGathered(transfer);
    }
}

void takeBody(Transfer &transfer, QByteArrayView bytes)
{
    transfer.refusal = refusalOfBody(transfer, bytes.size());
    if (transfer.refusal != Refusal::None) {
        return;
    }
    if (transfer.stream) {
        transfer.refusal = refusalOfStream(transfer, bytes);
    } else {
        appendToBody(transfer, bytes);
    }
}

// An exception must not pass through libcurl.
std::size_t onBody(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const transfer = static_cast<Transfer *>(user);
    const std::size_t total = size * count; // in bytes
    if (transfer->loop.pausesNow()) {
        return CURL_WRITEFUNC_PAUSE;
    }
    try {
        takeBody(*transfer, QByteArrayView(bytes, static_cast<qsizetype>(total)));
    } catch (const std::bad_alloc &) {
        transfer->refusal = Refusal::Memory;
    }
    return transfer->refusal == Refusal::None ? total : CURL_WRITEFUNC_ERROR;
}

bool beginsWith(QByteArrayView text, QByteArrayView start)
{
    return text.first(std::min(text.size(), start.size())).compare(start, Qt::CaseInsensitive) == 0;
}

// The value in a header of that name; nothing for any other header.
std::optional<QByteArrayView> valueIn(QByteArrayView header, QByteArrayView name)
{
    const qsizetype colon = header.indexOf(':');
    const bool isThis =
        colon >= 0 && header.first(colon).trimmed().compare(name, Qt::CaseInsensitive) == 0;
    return isThis ? std::optional(header.sliced(colon + 1).trimmed()) : std::nullopt;
}

// libcurl would decode codings other than "chunked", to a thousand times the size if a server so
// wishes; one that it misses because it is written oddly would be stored undecoded.
Refusal refusalOfCoding(QByteArrayView header)
{
    constexpr QByteArrayView kName("Transfer-Encoding");
    const QByteArrayView coding = valueIn(header, kName).value_or(QByteArrayView());
    const bool isPlain = header.indexOf(':') == kName.size() && !header.contains('\n');
    const bool isInChunks = coding.compare("chunked", Qt::CaseInsensitive) == 0;
    return coding.isEmpty() || (isInChunks && isPlain) ? Refusal::None : Refusal::Coding;
}

// Of two lengths, libcurl would take either for the whole. A refusal's own is of no interest.
Refusal refusalOfLength(Transfer &transfer, QByteArrayView header)
{
    const QByteArrayView value = valueIn(header, "Content-Length").value_or(QByteArrayView());
    const bool isOne = transfer.length.take(value) || !isGoodStatus(statusOf(transfer.easy.get()));
    return isOne ? Refusal::None : Refusal::Lengths;
}

// Room for an ordinary body at once; growing it step by step copies it several times.
void reserveBody(Transfer &transfer, QByteArrayView header)
{
    if (const std::optional<QByteArrayView> length = valueIn(header, "Content-Length")) {
        transfer.body.reserve(length->toLongLong());
    }
}

// A redirect leads to a new answer.
void forgetLastAnswer(Transfer &transfer, QByteArrayView header)
{
    if (beginsWith(header, "HTTP/")) {
        transfer.stream.reset();
        transfer.length.forget();
    }
}

void recogniseStream(Transfer &transfer, QByteArrayView header)
{
    const QByteArrayView type = valueIn(header, "Content-Type").value_or(QByteArrayView());
    if (FirstPart::isAnnouncedBy(type)) {
        transfer.stream.emplace(type);
    }
}

void takeHeader(Transfer &transfer, QByteArrayView header)
{
    forgetLastAnswer(transfer, header);
    transfer.refusal = refusalOfCoding(header);
    if (transfer.refusal == Refusal::None) {
        transfer.refusal = refusalOfLength(transfer, header);
    }
    reserveBody(transfer, header);
    recogniseStream(transfer, header);
}

// A header may continue on the next line, so each is complete only when another one begins.
void takeHeaderLine(Transfer &transfer, QByteArrayView line)
{
    transfer.headerBytes += line.size();
    transfer.headerLines += 1;
    if (transfer.headerBytes > kMaxHeaderBytes || transfer.headerLines > kMaxHeaderLines) {
        transfer.refusal = Refusal::Headers;
        return;
    }
    const bool goesOn = line.startsWith(' ') || line.startsWith('\t');
    if (!goesOn) {
        takeHeader(transfer, std::exchange(transfer.header, {}).trimmed());
    }
    transfer.header += line;
}

std::size_t onHeader(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const transfer = static_cast<Transfer *>(user);
    const std::size_t total = size * count; // in bytes
    try {
        takeHeaderLine(*transfer, QByteArrayView(bytes, static_cast<qsizetype>(total)));
    } catch (const std::bad_alloc &) {
        transfer->refusal = Refusal::Memory;
    }
    return transfer->refusal == Refusal::None ? total : 0;
}

// Room for a whole picture in the socket: the camera can send it all at once while others are being
// read.
int onSocketMade(void *, curl_socket_t socket, curlsocktype)
{
    ::setsockopt(socket, SOL_SOCKET, SO_RCVBUF, &kSocketBufferBytes, sizeof kSocketBufferBytes);
    return CURL_SOCKOPT_OK;
}

void setTransferOptions(Transfer &transfer, const HttpRequest &request)
{
    CURL *const easy = transfer.easy.get();
    setOption(easy, CURLOPT_URL, request.url.constData());
    setOption(easy, CURLOPT_DEFAULT_PROTOCOL, "http");
    setOption(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    setOption(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    setOption(easy, CURLOPT_FOLLOWLOCATION, 1L);
    setOption(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
    setOption(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(request.limit.count()));
    setOption(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(request.limit.count()));
    setOption(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kMaxBodyBytes));
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
    curl_slist *const longer = curl_slist_append(transfer.headers.get(), header);
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
    const bool sent = curl_easy_header(easy, name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK;
    return sent ? QString::fromLatin1(header->value).trimmed() : QString();
}

bool wasAsked(CURL *easy)
{
    long sent = 0;
    curl_easy_getinfo(easy, CURLINFO_REQUEST_SIZE, &sent);
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

QString refusalText(Refusal refusal)
{
    switch (refusal) {
    case Refusal::TooLong:
        return QStringLiteral("the server sends more than a picture can have");
    case Refusal::Headers:
        return QStringLiteral("the server sends headers without end");
    case Refusal::Coding:
        return QStringLiteral("the server encodes the picture in a way that was not asked for");
    case Refusal::Lengths:
        return QStringLiteral("the server gives two different lengths");
    case Refusal::Memory:
        return QStringLiteral("there is not enough memory for the picture");
    case Refusal::Stream:
    case Refusal::Enough:
    case Refusal::Status:
    case Refusal::None:
        break;
    }
    return {};
}

QString failureText(const Transfer &transfer, CURLcode code)
{
    CURL *const easy = transfer.easy.get();
    if (transfer.stream && code == CURLE_OK && isGoodStatus(statusOf(easy))) {
        return QStringLiteral("the stream ended within its first picture");
    }
    if (code == CURLE_OK || transfer.refusal == Refusal::Status) {
        return QStringLiteral("the server answered with status %1").arg(statusOf(easy));
    }
    if (transfer.refusal == Refusal::Stream) {
        return transfer.stream->fault();
    }
    if (transfer.refusal != Refusal::None) {
        return refusalText(transfer.refusal);
    }
    if (code == CURLE_FILESIZE_EXCEEDED) {
        return refusalText(Refusal::TooLong);
    }
    if (code == CURLE_BAD_FUNCTION_ARGUMENT && wasAsked(easy)) {
        return QStringLiteral("the server sends lines that are not headers");
    }
    return isEndlessLine(transfer, code) ? refusalText(Refusal::Headers)
                                         : QString::fromLatin1(curl_easy_strerror(code));
}

HttpReply replyOf(Transfer &transfer, CURLcode code)
{
    CURL *const easy = transfer.easy.get();
    curl_off_t duration = 0;
    char *type = nullptr;
    curl_easy_getinfo(easy, CURLINFO_TOTAL_TIME_T, &duration);
    curl_easy_getinfo(easy, CURLINFO_CONTENT_TYPE, &type);
    const bool ended = transfer.stream ? transfer.refusal == Refusal::Enough : code == CURLE_OK;
    const bool arrived = ended && isGoodStatus(statusOf(easy));
    HttpReply reply;
    reply.outcome = arrived ? FetchOutcome::Arrived : FetchOutcome::Failed;
    if (arrived) {
        appendGathered(transfer);
        reply.body = std::move(transfer.body);
    }
    // A stream's date would be that of its start.
    reply.lastModified = transfer.stream ? QString() : headerText(easy, "Last-Modified");
    reply.date = headerText(easy, "Date");
    reply.contentType =
        transfer.stream ? transfer.stream->contentType() : QString::fromLatin1(type);
    reply.duration =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::microseconds{duration});
    reply.failure = arrived ? QString() : failureText(transfer, code);
    return reply;
}

bool isEncrypted(const QByteArray &url)
{
    return beginsWith(url, "https:");
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

HttpClient::HttpClient(AuthorityPlaces authorities)
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
