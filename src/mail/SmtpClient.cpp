// libcurl finds the server, connects, encrypts and logs in. The mail itself is handed over by our
// own code: libcurl waits for the server's last answers without letting the event loop run.
#include "mail/SmtpClient.h"

#include "mail/SmtpReply.h"
#include "net/ConnectedStream.h"
#include "net/CurlOption.h"

#include <QHash>
#include <QScopeGuard>

#include <array>
#include <new>

namespace velmora {
namespace {

using Problem = std::optional<MailProblem>;

/// What the server has said up to the login.
struct Greeting
{
    SmtpReply reply; // its last line
    qint64 bytes = 0;
};

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
    };
    return kinds.value(code, MailFailure::Other);
}

std::size_t onReply(char *bytes, std::size_t size, std::size_t count, void *user)
{
    auto *const greeting = static_cast<Greeting *>(user);
    const std::size_t total = size * count; // in bytes
    greeting->bytes += static_cast<qint64>(total);
    try {
        const QByteArray line(bytes, static_cast<qsizetype>(total));
        greeting->reply = {line.left(3).toInt(), line.trimmed()};
    } catch (const std::bad_alloc &) { // must not pass through libcurl
        return 0;
    }
    return greeting->bytes > kMaxReplyBytes ? 0 : total;
}

// code: nothing when stopped.
Problem problemOf(std::optional<int> code, const Greeting &greeting)
{
    if (!code) {
        return MailProblem{MailFailure::Stopped};
    }
    if (*code == CURLE_OK) {
        return std::nullopt;
    }
    const MailFailure kind = failureOf(*code);
    if (kind == MailFailure::Nonsense && greeting.reply.isRefusal()) {
        return MailProblem{MailFailure::ServerRefused, greeting.reply.shown({})};
    }
    const char *const text = curl_easy_strerror(static_cast<CURLcode>(*code));
    return MailProblem{kind, QString::fromLatin1(text)};
}

void setUp(CURL *easy, const MailAccount &account, const SmtpOptions &options, Greeting &greeting)
{
    const bool required = account.encryption != MailEncryption::WhenOffered;
    setOption(easy, CURLOPT_URL, account.url.constData());
    setOption(easy, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    setOption(easy, CURLOPT_CONNECT_ONLY, 1L);
    setOption(easy, CURLOPT_USE_SSL, static_cast<long>(required ? CURLUSESSL_ALL : CURLUSESSL_TRY));
    setOption(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(options.connectLimit.count()));
    setOption(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(options.totalLimit.count()));
    setOption(easy, CURLOPT_HEADERFUNCTION, &onReply);
    setOption(easy, CURLOPT_HEADERDATA, &greeting);
    if (!account.user.isEmpty()) {
        setOption(easy, CURLOPT_USERNAME, account.user.constData());
        setOption(easy, CURLOPT_PASSWORD, account.password.constData());
    }
}

/// The connection to a server that waits for a mail.
struct Session
{
    ConnectedStream stream;
    QByteArray password;
    QByteArray received; // and not yet taken
};

struct Step
{
    QByteArray line; // a command, or the text
    MailFailure refusal = MailFailure::Other;
    int wanted = 2; // first digit of the reply: carried out
};

QList<Step> stepsOf(const MailAccount &account, const QByteArray &text)
{
    constexpr int kMore = 3; // the text is waited for
    QList<Step> steps{{"MAIL FROM:<" + account.from.address + ">\r\n", MailFailure::SenderRefused}};
    for (const MailAddress &to : account.to) {
        steps.append({"RCPT TO:<" + to.address + ">\r\n", MailFailure::RecipientRefused});
    }
    steps.append({"DATA\r\n", MailFailure::TextRefused, kMore});
    steps.append({dotStuffed(text), MailFailure::TextRefused});
    return steps;
}

QCoro::Task<Problem> take(Session *session, Step step)
{
    // In the order of StreamEnd.
    constexpr std::array kEnds{MailFailure::Cut, MailFailure::TimedOut, MailFailure::Stopped};
    std::optional<StreamEnd> end = co_await session->stream.send(std::move(step.line));
    std::optional<SmtpReply> reply;
    while (!end && !reply) {
        end = co_await session->stream.receive(&session->received);
        reply =
            session->received.size() > kMaxReplyBytes ? SmtpReply{} : takeReply(session->received);
    }
    if (!reply) {
        co_return MailProblem{kEnds.at(static_cast<std::size_t>(*end))};
    }
    if (reply->isRefusal()) {
        co_return MailProblem{step.refusal, reply->shown(session->password)};
    }
    co_return reply->code / 100 == step.wanted ? std::nullopt : Problem({MailFailure::Nonsense});
}

// Says QUIT in either case, and waits only briefly for the answer.
QCoro::Task<Problem> handOver(Session *session, QList<Step> steps)
{
    Problem problem;
    while (!steps.isEmpty() && !problem) {
        problem = co_await take(session, steps.takeFirst());
    }
    session->stream.hurry(std::chrono::seconds{2});
    const Step farewell{"QUIT\r\n"};
    co_await take(session, farewell);
    co_return problem;
}

} // namespace

SmtpClient::SmtpClient(SmtpOptions options)
    : options_(std::move(options))
    , authorities_(options_.authorities)
{
}

// Whether a server encrypts shows only in the middle of the greeting, so the certificates are read
// first.
QCoro::Task<Problem> SmtpClient::send(MailAccount account, QByteArray text, std::stop_token stop)
{
    co_await authorities_.load();
    const QDeadlineTimer limit(options_.totalLimit, Qt::PreciseTimer);
    Greeting greeting;
    const EasyHandle easy = TransferLoop::newTransfer();
    setUp(easy.get(), account, options_, greeting);
    authorities_.applyTo(easy.get());
    const std::optional<int> code = co_await loop_.connect(easy.get(), stop);
    Problem problem = problemOf(code, greeting);
    if (!problem) {
        const auto close = qScopeGuard([this, &easy] { loop_.disconnect(easy.get()); });
        Session session{ConnectedStream(easy.get(), limit, stop), account.password, {}};
        problem = co_await handOver(&session, stepsOf(account, text));
    }
    if (problem) {
        problem->server = account.serverText;
    }
    co_return problem;
}

} // namespace velmora
