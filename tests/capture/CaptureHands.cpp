#include "CaptureHands.h"

namespace velmora::test {
namespace {

QByteArray httpDate(WallTime time)
{
    const QDateTime date = QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
    return QLocale::c().toString(date, QStringLiteral("ddd, dd MMM yyyy HH:mm:ss")).toLatin1() +
           " GMT";
}

CameraAnswer ok(const QByteArray &headers, const QByteArray &body)
{
    return response("200 OK", "Content-Type: image/jpeg\r\n" + headers, body);
}

} // namespace

// No two are the same.
QByteArray CaptureHands::anyBody()
{
    static const QList<int> sizes{1000, 1000, 2000, 2000, 2000, 5000, 5000, 20000, 300000};
    const QByteArray begin = oneIn(4) ? "\x89PNG\r\n\x1a\n" : "\xFF\xD8\xFF\xE0";
    return (begin + QByteArray::number(++pictures_)).leftJustified(anyOf(sizes), 'x');
}

void CaptureHands::date(ServerAnswer *answer, QByteArray *headers)
{
    static const QList<int> ahead{0,     -1,       4,          -7,         61,
                                  -3600, 7 * 3600, -30 * 3600, 101 * 3600, -40 * 86400};
    static const QStringList none{QString(),
                                  QString(),
                                  QStringLiteral("  "),
                                  QStringLiteral("yesterday"),
                                  QStringLiteral("Tue, 07 mar 2006 14:05:09 GMT"),
                                  QStringLiteral("Tue, 31 Feb 2006 14:05:09 GMT")};
    const WallTime now = clock_.universalNow();
    if (oneIn(2)) {
        answer->header = anyOf(none);
    } else {
        const auto future = std::chrono::hours{oneIn(12) ? 24 * 9000 : 0};
        answer->date = oneIn(15) ? kZeroDate : now + std::chrono::seconds{anyOf(ahead)} + future;
        answer->header = QString::fromLatin1(httpDate(*answer->date));
    }
    if (!answer->header.isEmpty()) {
        *headers += "Last-Modified: " + answer->header.toLatin1() + "\r\n";
    }
    if (oneIn(3)) {
        answer->clock = now + std::chrono::hours{anyOf(QList<int>{0, 1, -1, 48, -48})};
        *headers += "Date: " + httpDate(*answer->clock) + "\r\n";
    }
}

// What fails, whatever comes with it.
CameraAnswer CaptureHands::refusal(const QString &path, const QByteArray &headers,
                                   const QByteArray &body)
{
    CameraAnswer broken;
    broken.bytes = (oneIn(2) ? "HTTP/1.1 200 OK\r\nContent-Length: 70000000\r\n"
                             : "HTTP/1.1 200 OK\r\nContent-Length: 3000000\r\n") +
                   headers + "\r\n" + body;
    const QList<CameraAnswer> all{response("404 Not Found", headers, body),
                                  response("304 Not Modified", headers, {}),
                                  response("500 Out of order", headers, body),
                                  redirect(path.toLatin1()),
                                  hangUp(),
                                  broken,
                                  broken};
    return anyOf(all);
}

// A good picture in most cases.
void CaptureHands::deliver(const QString &path, const QByteArray &headers, TownAnswer *answer)
{
    ServerAnswer &rule = answer->rule;
    const QByteArray behind = path.toLatin1() + ".there";
    const int kind = below(24);
    if (kind < 6) {
        rule.isGood = false;
        answer->bytes = refusal(path, headers, rule.body);
        return;
    }
    if (kind == 6) {
        rule.body = oneIn(3) ? QByteArray() : rule.body.first(999);
    }
    answer->bytes = ok(headers, rule.body);
    if (kind == 7) {
        answer->bytes = response("206 Partial Content", headers, rule.body);
    } else if (kind == 8) {
        answer->bytes.bytes = "HTTP/1.0 200 OK\r\n" + headers + "\r\n" + rule.body;
    } else if (kind == 9) {
        town_.answerBehind(behind, answer->bytes);
        answer->bytes = redirect(behind, "Last-Modified: Sat, 01 Jan 2000 00:00:00 GMT\r\n");
    } else if (kind < 12) {
        const LockKind lock = oneIn(2) ? LockKind::Basic : LockKind::Digest;
        answer->bytes = locked(answer->bytes, {lock, "user", "secret"});
        rule.isLocked = true;
    }
}

void CaptureHands::answer(const QString &path)
{
    static const QList<int> delays{0, 0, 0, 0, 1, 2, 3, 4, 5, 6, 7, 9};
    TownAnswer answer;
    QByteArray headers;
    answer.rule.body = anyBody();
    answer.rule.delay = anyOf(delays);
    date(&answer.rule, &headers);
    QString asked = path;
    asked.replace(QStringLiteral("<six:seven>"), QStringLiteral("seven"));
    deliver(asked, headers, &answer);
    town_.answer(asked, answer);
    done_.append(QStringLiteral("%1 gives %2 of %3 bytes after %4 s")
                     .arg(asked.left(20), QString::fromLatin1(answer.bytes.bytes.left(12)))
                     .arg(answer.rule.body.size())
                     .arg(answer.rule.delay));
}

} // namespace velmora::test
