// libcurl finds the server, connects, encrypts and logs in. The mail itself is handed over by our
// own code: libcurl waits for the server's last answers without letting the event loop run.
#include "mail/SmtpClient.h"

#include "base/OneLine.h"
#include "mail/SmtpDialogue.h"
#include "net/CurlOption.h"

#include <QScopeGuard>

#include <new>

namespace velmora {
namespace {

/// What the server said up to the login.
struct Greeting
{
    QByteArray reply; // the last line
    qint64 bytes = 0;

    [[nodiscard]] bool isRefusal() const { return reply.left(3).toInt() >= kFirstRefusal; }
};

std::size_t onReply(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const greeting = static_cast<Greeting *>(user);
    const std::size_t total = size * count; // in bytes
    greeting->bytes += static_cast<qint64>(total);
    try {
        greeting->reply = QByteArray(bytes, static_cast<qsizetype>(total)).trimmed();
    } catch (const std::bad_alloc &) { // must not pass through libcurl
        return 0;
    }
    return greeting->bytes > kMaxReplyBytes ? 0 : total;
}

void setConnection(CURL *easy, const MailAccount &account, const SmtpOptions &options)
{
    const bool required = account.encryption != MailEncryption::WhenOffered;
    setOption(easy, CURLOPT_URL, account.url.constData());
    setOption(easy, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    setOption(easy, CURLOPT_CONNECT_ONLY, 1L);
    setOption(easy, CURLOPT_USE_SSL, static_cast<long>(required ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    setOption(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connectLimit.count()));
    setOption(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(options.totalLimit.count()));
}

void setLogin(CURL *easy, const MailAccount &account)
{
    if (!account.user.isEmpty()) {
        setOption(easy, CURLOPT_USERNAME, account.user.constData());
        setOption(easy, CURLOPT_PASSWORD, account.password.constData());
    }
}

MailFailure failureOf(CURLcode code, const Greeting &greeting)
{
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return MailFailure::NameNotFound;
    case CURLE_COULDNT_CONNECT:
        return MailFailure::Unreachable;
    case CURLE_OPERATION_TIMEDOUT:
        return MailFailure::TimedOut;
    case CURLE_LOGIN_DENIED:
        return MailFailure::LoginRefused;
    case CURLE_USE_SSL_FAILED:
        return MailFailure::NotEncrypted;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CIPHER:
        return MailFailure::Tls;
    case CURLE_SEND_ERROR:
    case CURLE_RECV_ERROR:
    case CURLE_GOT_NOTHING:
        return MailFailure::Cut;
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_REMOTE_ACCESS_DENIED:
    case CURLE_WRITE_ERROR: // endless replies
        return greeting.isRefusal() ? MailFailure::ServerRefused : MailFailure::Nonsense;
    default:
        return MailFailure::Other;
    }
}

MailProblem problemOf(CURLcode code, const Greeting &greeting, const MailAccount &account)
{
    const MailFailure kind = failureOf(code, greeting);
    const QString detail = kind == MailFailure::ServerRefused
                               ? onOneLine(QString::fromUtf8(greeting.reply)).left(kMaxShownReply)
                               : QString::fromLatin1(curl_easy_strerror(code));
    return {kind, detail, account.serverText};
}

} // namespace

SmtpClient::SmtpClient(SmtpOptions options)
    : options_(std::move(options))
    , authorities_(options_.authorities)
{
}

// Whether a server encrypts shows only in the middle of the greeting, so the certificates are read
// first.
QCoro::Task<std::optional<MailProblem>> SmtpClient::send(MailAccount account, QByteArray text,
                                                         std::stop_token stop)
{
    co_await authorities_.load();
    const QDeadlineTimer limit(options_.totalLimit, Qt::PreciseTimer);
    Greeting greeting;
    const EasyHandle easy = TransferLoop::newTransfer();
    setConnection(easy.get(), account, options_);
    setLogin(easy.get(), account);
    authorities_.applyTo(easy.get());
    setOption(easy.get(), CURLOPT_HEADERFUNCTION, &onReply);
    setOption(easy.get(), CURLOPT_HEADERDATA, &greeting);
    const std::optional<int> code = co_await loop_.connect(easy.get(), stop);
    if (!code) {
        co_return MailProblem{MailFailure::Stopped, {}, account.serverText};
    }
    if (*code != CURLE_OK) {
        co_return problemOf(static_cast<CURLcode>(*code), greeting, account);
    }
    const auto close = qScopeGuard([this, &easy] { loop_.disconnect(easy.get()); });
    ConnectedStream stream(easy.get(), limit, stop);
    SmtpDialogue dialogue(stream, account);
    const std::optional<MailProblem> problem = co_await dialogue.hand(std::move(text));
    co_return problem;
}

} // namespace velmora
