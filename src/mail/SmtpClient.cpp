// libcurl finds the server, connects, encrypts and logs in. The mail itself is handed over by our
// own code: libcurl waits for the server's last answers without letting the event loop run.
#include "mail/SmtpClient.h"

#include "mail/SmtpReply.h"
#include "net/ConnectedStream.h"
#include "net/Curl.h"

#include <QHash>
#include <QScopeGuard>

#include <new>

namespace velmora {
namespace {

using Problem = std::optional<MailProblem>;

MailFailure failureOf(int code)
{
    static const QHash<int, MailFailure> kinds{
        {CURLE_COULDNT_RESOLVE_HOST, MailFailure::NameNotFound},
        {CURLE_COULDNT_CONNECT, MailFailure::Unreachable},
        {CURLE_OPERATION_TIMEDOUT, MailFailure::TimedOut},
        {CURLE_LOGIN_DENIED, MailFailure::LoginRefused},
        {CURLE_USE_SSL_FAILED, MailFailure::NotEncrypted},
        {CURLE_SSL_CONNECT_ERROR, MailFailure::Tls},
        {CURLE_PEER_FAILED_VERIFICATION, MailFailure::Tls},
        {CURLE_SSL_CACERT_BADFILE, MailFailure::Tls},
        {CURLE_SSL_CIPHER, MailFailure::Tls},
        {CURLE_SEND_ERROR, MailFailure::Cut},
        {CURLE_RECV_ERROR, MailFailure::Cut},
        {CURLE_GOT_NOTHING, MailFailure::Cut},
        {CURLE_WEIRD_SERVER_REPLY, MailFailure::Nonsense},
        {CURLE_REMOTE_ACCESS_DENIED, MailFailure::Nonsense},
        {CURLE_WRITE_ERROR, MailFailure::Nonsense}, // endless replies
        {CURLE_ABORTED_BY_CALLBACK, MailFailure::Stopped},
    };
    return kinds.value(code, MailFailure::Other);
}

// end: a code of libcurl, or nothing when stopped. heard: what the server has said.
Problem problemOf(std::optional<int> end, const QByteArray &heard = {})
{
    const int code = end.value_or(CURLE_ABORTED_BY_CALLBACK);
    if (code == CURLE_OK) {
        return std::nullopt;
    }
    const MailFailure kind = failureOf(code);
    const QByteArray lastLine = heard.trimmed().split('\n').last();
    const SmtpReply last{lastLine.left(3).toInt(), lastLine};
    if (kind == MailFailure::Nonsense && last.isRefusal()) {
        return MailProblem{MailFailure::ServerRefused, last.shown({})};
    }
    return MailProblem{kind, QString::fromLatin1(curl().easyStrerror(static_cast<CURLcode>(code)))};
}

std::size_t onReply(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const heard = static_cast<QByteArray *>(user);
    const std::size_t total = size * count; // in bytes
    try {
        heard->append(bytes, static_cast<qsizetype>(total));
    } catch (const std::bad_alloc &) { // must not pass through libcurl
        return 0;
    }
    return heard->size() > kMaxReplyBytes ? 0 : total;
}

void setUp(CURL *easy, const MailAccount &account, const SmtpOptions &options, QByteArray &heard)
{
    const bool required = account.encryption != MailEncryption::WhenOffered;
    setOption(easy, CURLOPT_URL, account.url.constData());
    setOption(easy, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    setOption(easy, CURLOPT_CONNECT_ONLY, 1L);
    setOption(easy, CURLOPT_USE_SSL, static_cast<long>(required ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    setOption(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connectLimit.count()));
    setOption(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(options.totalLimit.count()));
    setOption(easy, CURLOPT_HEADERFUNCTION, &onReply);
    setOption(easy, CURLOPT_HEADERDATA, &heard);
    if (!account.user.isEmpty()) {
        setOption(easy, CURLOPT_USERNAME, account.user.constData());
        setOption(easy, CURLOPT_PASSWORD, account.password.constData());
    }
}

/// The connection to a server that waits for a mail.
struct Session
{
    const MailAccount &account;
    ConnectedStream stream;
    QByteArray received; // and not yet taken
};

// wanted: first digit of the reply when the line is accepted.
QCoro::Task<Problem> say(Session *session, QByteArray line, MailFailure refusal, int wanted = 2)
{
    std::optional<int> end = co_await session->stream.send(std::move(line));
    std::optional<SmtpReply> reply;
    while (end == CURLE_OK && !reply) {
        end = co_await session->stream.receive(&session->received);
        reply = takeReply(session->received);
    }
    if (!reply) {
        co_return problemOf(end);
    }
    if (reply->isRefusal()) {
        co_return MailProblem{refusal, reply->shown(session->account.password)};
    }
    co_return reply->code / 100 == wanted ? std::nullopt : Problem({MailFailure::Nonsense});
}

// Says QUIT in either case, and waits only briefly for the answer.
QCoro::Task<Problem> handOver(Session *session, QByteArray text)
{
    constexpr int kMore = 3; // the text is waited for
    const QByteArray from = "MAIL FROM:<" + session->account.from.address + ">\r\n";
    Problem problem = co_await say(session, from, MailFailure::SenderRefused);
    for (qsizetype i = 0; i < session->account.to.size() && !problem; ++i) {
        const QByteArray to = "RCPT TO:<" + session->account.to.at(i).address + ">\r\n";
        problem = co_await say(session, to, MailFailure::RecipientRefused);
    }
    if (!problem) {
        problem = co_await say(session, "DATA\r\n", MailFailure::TextRefused, kMore);
    }
    if (!problem) {
        problem = co_await say(session, dotStuffed(text), MailFailure::TextRefused);
    }
    session->stream.hurry(std::chrono::seconds{2});
    co_await say(session, "QUIT\r\n", MailFailure::Other);
    co_return problem;
}

} // namespace

SmtpClient::SmtpClient(SmtpOptions options)
    : options_(std::move(options))
    , authorities_(options_.authorities)
{
}

QCoro::Task<Problem> SmtpClient::send(MailAccount account, QByteArray text, std::stop_token stop)
{
    Problem problem;
    try {
        problem = co_await trySend(account, std::move(text), std::move(stop));
    } catch (const NoCurl &error) {
        problem = MailProblem{MailFailure::Other, QString::fromUtf8(error.what())};
    }
    if (problem) {
        problem->server = account.serverText;
    }
    co_return problem;
}

// Whether a server encrypts shows only in the middle of the greeting, so the certificates are read
// first.
QCoro::Task<Problem> SmtpClient::trySend(MailAccount account, QByteArray text, std::stop_token stop)
{
    co_await authorities_.load();
    const QDeadlineTimer limit(options_.totalLimit, Qt::PreciseTimer);
    QByteArray heard; // up to the login
    const EasyHandle easy = TransferLoop::newTransfer();
    setUp(easy.get(), account, options_, heard);
    authorities_.applyTo(easy.get());
    const std::optional<int> end = co_await loop_.connect(easy.get(), stop);
    Problem problem = problemOf(end, heard);
    if (!problem) {
        const auto close = qScopeGuard([this, &easy] { loop_.disconnect(easy.get()); });
        Session session{account, ConnectedStream(easy.get(), limit, stop), {}};
        problem = co_await handOver(&session, text);
    }
    co_return problem;
}

} // namespace velmora
