#include "support/LoopbackCameraAnswers.h"

#include <QCryptographicHash>
#include <QHash>
#include <QList>

namespace velmora::test {
namespace {

constexpr qsizetype kPageBytes = 4000; // a page that, by its length, could pass for a picture
constexpr qsizetype kRepeatedBytes = 256 * 1024;
const QByteArray kNonce = "0a4f113b";
const QByteArray kRealm = "camera";

QByteArray md5(const QByteArray &text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex();
}

// The parts of `Digest name="value", name=value`.
QHash<QByteArray, QByteArray> digestParts(const QByteArray &authorization)
{
    QHash<QByteArray, QByteArray> parts;
    for (const QByteArray &part : authorization.mid(qsizetype{7}).split(',')) {
        const qsizetype equals = part.indexOf('=');
        parts.insert(part.left(equals).trimmed(), part.mid(equals + 1).trimmed().replace('"', ""));
    }
    return parts;
}

bool opensDigest(const CameraLock &lock, const QByteArray &authorization, const QByteArray &path)
{
    const QHash<QByteArray, QByteArray> parts = digestParts(authorization);
    const QByteArray who = md5(lock.user + ':' + kRealm + ':' + lock.password);
    const QByteArray what = md5("GET:" + path);
    const QByteArray expected = md5(who + ':' + kNonce + ':' + parts.value("nc") + ':' +
                                    parts.value("cnonce") + ":auth:" + what);
    return authorization.startsWith("Digest ") && parts.value("username") == lock.user &&
           parts.value("uri") == path && parts.value("response") == expected;
}

} // namespace

QByteArray jpeg(qsizetype size)
{
    return QByteArray("\xFF\xD8\xFF\xE0").leftJustified(size, 'x', true);
}

CameraAnswer response(const QByteArray &status, const QByteArray &headers, const QByteArray &body)
{
    return {loopback::response(status, headers, body), {}};
}

CameraAnswer picture(qsizetype size, const QByteArray &headers)
{
    return response("200 OK", "Content-Type: image/jpeg\r\n" + headers, jpeg(size));
}

CameraAnswer pictureDeclared(qsizetype size, qint64 declared)
{
    CameraAnswer answer;
    answer.bytes = "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(declared) +
                   "\r\n\r\n" + jpeg(size);
    return answer;
}

CameraAnswer pictureWithoutLength(qsizetype size)
{
    CameraAnswer answer;
    answer.bytes = "HTTP/1.0 200 OK\r\nContent-Type: image/jpeg\r\n\r\n" + jpeg(size);
    return answer;
}

CameraAnswer redirect(const QByteArray &location, const QByteArray &headers)
{
    return response("302 Found", "Location: " + location + "\r\n" + headers,
                    QByteArray(kPageBytes, 'r'));
}

CameraAnswer silence()
{
    return {loopback::silence(), {}};
}

CameraAnswer hangUp()
{
    return {};
}

CameraAnswer endlessHeaders()
{
    CameraAnswer answer;
    answer.bytes = "HTTP/1.1 200 OK\r\n";
    answer.repeated = QByteArray("X-Padding: 0123456789abcdef\r\n").repeated(1000);
    return answer;
}

CameraAnswer endlessHeaderLine()
{
    CameraAnswer answer;
    answer.bytes = "HTTP/1.1 200 OK\r\nX-Padding: ";
    answer.repeated = QByteArray(kRepeatedBytes, 'p');
    return answer;
}

CameraAnswer endlessBody()
{
    CameraAnswer answer = pictureWithoutLength(kPageBytes);
    answer.repeated = QByteArray(kRepeatedBytes, 'e');
    return answer;
}

CameraAnswer delayed(CameraAnswer answer, std::chrono::milliseconds delay)
{
    answer.delay = delay;
    return answer;
}

CameraAnswer afterTurns(CameraAnswer answer, int turns)
{
    answer.turns = turns;
    return answer;
}

CameraAnswer inCompany(CameraAnswer answer, qsizetype requests)
{
    answer.company = requests;
    return answer;
}

CameraAnswer dripping(CameraAnswer answer, std::chrono::milliseconds drip)
{
    answer.pieceBytes = 1;
    answer.pause = drip;
    return answer;
}

CameraAnswer locked(CameraAnswer answer, const CameraLock &lock)
{
    answer.lock = lock;
    return answer;
}

CameraAnswer askForUser(LockKind kind)
{
    const QByteArray challenge =
        kind == LockKind::Basic
            ? "Basic realm=\"" + kRealm + '"'
            : "Digest realm=\"" + kRealm + "\", nonce=\"" + kNonce + "\", qop=\"auth\"";
    return response("401 Unauthorized",
                    "WWW-Authenticate: " + challenge +
                        "\r\nLast-Modified: Sat, 01 Jan 2000 00:00:00 GMT\r\n",
                    QByteArray(kPageBytes, 'u'));
}

bool opens(const CameraLock &lock, const QByteArray &authorization, const QByteArray &path)
{
    switch (lock.kind) {
    case LockKind::None:
        return true;
    case LockKind::Basic:
        return authorization == "Basic " + (lock.user + ':' + lock.password).toBase64();
    case LockKind::Digest:
        return opensDigest(lock, authorization, path);
    }
    return false;
}

} // namespace velmora::test
