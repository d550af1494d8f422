#include "mail/SmtpDialogue.h"

#include "base/OneLine.h"

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr qsizetype kCodeLetters = 3;
constexpr int kPositive = 2; // first digit of a reply to a command that was carried out
constexpr int kMore = 3;     // … that waits for the text
constexpr int kClass = 100;
constexpr auto kFarewellLimit = 2s;

bool beginsWithCode(QByteArrayView line)
{
    return line.size() >= kCodeLetters && line[0] >= '1' && line[0] <= '5' && line[1] >= '0' &&
           line[1] <= '9' && line[2] >= '0' && line[2] <= '9';
}

MailFailure failureOf(StreamEnd end)
{
    switch (end) {
    case StreamEnd::TimedOut:
        return MailFailure::TimedOut;
    case StreamEnd::Stopped:
        return MailFailure::Stopped;
    default:
        return MailFailure::Cut;
    }
}

} // namespace

std::optional<SmtpReply> takeReply(QByteArray &bytes)
{
    qsizetype from = 0;
    for (qsizetype end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n', from)) {
        const QByteArray line = bytes.sliced(from, end - from).trimmed();
        from = end + 1;
        if (!beginsWithCode(line)) {
            bytes.remove(0, from);
            return SmtpReply{0, line};
        }
        if (line.size() == kCodeLetters || line[kCodeLetters] != '-') {
            bytes.remove(0, from);
            return SmtpReply{line.first(kCodeLetters).toInt(), line};
        }
    }
    return std::nullopt;
}

QByteArray dotStuffed(const QByteArray &text)
{
    QByteArray stuffed = "\r\n" + text;
    stuffed.replace("\r\n.", "\r\n..");
    return stuffed.sliced(2) + ".\r\n";
}

SmtpDialogue::SmtpDialogue(ConnectedStream &stream, const MailAccount &account)
    : stream_(stream)
    , account_(account)
{
}

QCoro::Task<std::optional<MailProblem>> SmtpDialogue::hand(QByteArray text)
{
    Problem problem = co_await envelopeAndText(std::move(text));
    co_await farewell();
    co_return problem;
}

QCoro::Task<std::optional<MailProblem>> SmtpDialogue::envelopeAndText(QByteArray text)
{
    Problem problem = co_await step("MAIL FROM:<" + account_.from.address + ">\r\n",
                                    MailFailure::SenderRefused, kPositive);
    for (qsizetype i = 0; i < account_.to.size() && !problem; ++i) {
        problem = co_await step("RCPT TO:<" + account_.to[i].address + ">\r\n",
                                MailFailure::RecipientRefused, kPositive);
    }
    if (!problem) {
        problem = co_await step("DATA\r\n", MailFailure::TextRefused, kMore);
    }
    if (!problem) {
        problem = co_await step(dotStuffed(text), MailFailure::TextRefused, kPositive);
    }
    co_return problem;
}

QCoro::Task<std::optional<MailProblem>> SmtpDialogue::step(QByteArray line, MailFailure refusal,
                                                           int wanted)
{
    SmtpReply reply;
    const std::optional<StreamEnd> end = co_await exchange(std::move(line), &reply);
    if (end) {
        co_return problem(failureOf(*end));
    }
    if (reply.code >= kFirstRefusal) {
        co_return problem(refusal, shown(reply));
    }
    co_return reply.code / kClass == wanted ? std::nullopt
                                            : Problem(problem(MailFailure::Nonsense));
}

QCoro::Task<std::optional<StreamEnd>> SmtpDialogue::exchange(QByteArray line, SmtpReply *reply)
{
    std::optional<StreamEnd> end = co_await stream_.send(std::move(line));
    std::optional<SmtpReply> found;
    while (!end && !found) {
        const qsizetype before = received_.size();
        end = co_await stream_.receive(&received_);
        receivedBytes_ += received_.size() - before;
        found = receivedBytes_ > kMaxReplyBytes ? SmtpReply{} : takeReply(received_);
    }
    if (found) {
        *reply = *found;
        end.reset();
    }
    co_return end;
}

QCoro::Task<> SmtpDialogue::farewell()
{
    stream_.hurry(kFarewellLimit);
    SmtpReply reply;
    co_await exchange("QUIT\r\n", &reply);
}

MailProblem SmtpDialogue::problem(MailFailure kind, const QString &detail) const
{
    return {kind, detail, account_.serverText};
}

// A server may say anything, even the password that it was sent.
QString SmtpDialogue::shown(const SmtpReply &reply) const
{
    const QByteArray &password = account_.password;
    if (!password.isEmpty() &&
        (reply.lastLine.contains(password) || reply.lastLine.contains(password.toBase64()))) {
        return QString::number(reply.code);
    }
    return onOneLine(QString::fromUtf8(reply.lastLine)).left(kMaxShownReply);
}

} // namespace velmora
